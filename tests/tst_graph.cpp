// The max-flow engine: construction and growth, exact small cases, thousands of random graphs
// checked by the cut they leave, tree reuse with the changed list, and the fatal paths.
#include "graph.h"

#include <QTemporaryFile>
#include <QtTest>

#include <climits>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using GraphI = Graph<int, int, int>;

namespace {

// Every arc's ends and residual, in list order.
QList<int> arcs(GraphI& g)
{
    QList<int> out;
    auto a = g.get_first_arc();
    for (int k = 0; k < g.get_arc_num(); ++k, a = g.get_next_arc(a)) {
        int i, j;
        g.get_arc_ends(a, i, j);
        out << i << j << g.get_rcap(a);
    }
    return out;
}

// A random problem kept in plain form, so that what the engine leaves can be checked.
struct Problem {
    int n = 0;
    std::vector<int> source, sink; // terminal capacities
    struct E {
        int i, j, cap, rev;
    };
    std::vector<E> edges;

    void build(GraphI& g) const
    {
        g.add_node(n);
        for (int i = 0; i < n; ++i)
            g.add_tweights(i, source[size_t(i)], sink[size_t(i)]);
        for (const E& e : edges)
            g.add_edge(e.i, e.j, e.cap, e.rev);
    }
    // A flow is never more than the capacity of any cut, so a flow that keeps every edge within
    // its capacities and equals the capacity of the cut its labels describe is a maximum flow.
    void checkMinimumCut(GraphI& g, long long flow) const
    {
        long long cut = 0;
        for (int i = 0; i < n; ++i)
            cut += g.what_segment(i) == GraphI::SOURCE ? sink[size_t(i)] : source[size_t(i)];
        const QList<int> a = arcs(g);
        for (size_t e = 0; e < edges.size(); ++e) {
            const E& d = edges[e];
            const bool si = g.what_segment(d.i) == GraphI::SOURCE, sj = g.what_segment(d.j) == GraphI::SOURCE;
            cut += si && !sj ? d.cap : sj && !si ? d.rev : 0;
            const int r = a[qsizetype(6 * e + 2)], s = a[qsizetype(6 * e + 5)];
            QVERIFY(r >= 0 && s >= 0 && r + s == d.cap + d.rev);
        }
        QCOMPARE(flow, cut);
        g.test_consistency();
    }
};

Problem randomProblem(std::mt19937& rng, int n, double density, int maxCap)
{
    Problem p;
    p.n = n;
    std::uniform_int_distribution<int> cap(0, maxCap);
    std::uniform_real_distribution<double> coin(0.0, 1.0);
    for (int i = 0; i < n; ++i) { // about a third of the nodes touch no terminal, some both
        p.source.push_back(coin(rng) < 0.4 ? cap(rng) : 0);
        p.sink.push_back(coin(rng) < 0.4 ? cap(rng) : 0);
    }
    for (int i = 0; i < n; ++i)
        for (int j = i + 1; j < n; ++j)
            if (coin(rng) < density) {
                const bool flip = coin(rng) < 0.5;
                const int c = coin(rng) < 0.15 ? 0 : cap(rng), r = coin(rng) < 0.5 ? 0 : cap(rng);
                p.edges.push_back(flip ? Problem::E{j, i, c, r} : Problem::E{i, j, c, r});
            }
    return p;
}

// The children end the process on purpose, leaving their graphs behind: the leak checker of a
// sanitizer build must not judge them (it asks this hook before its exit-time check).
volatile int g_inDeathChild = 0;
} // namespace

extern "C" int __lsan_is_turned_off()
{
    return g_inDeathChild;
}

namespace {

// Runs `body` in a child process; returns its exit status or the negated signal number, and
// what it wrote to standard error.
template <class F>
int inChild(F body, QByteArray* err)
{
    QTemporaryFile file;
    if (!file.open())
        return INT_MIN;
    const pid_t pid = fork();
    if (pid == 0) {
        signal(SIGABRT, SIG_DFL); // the test framework's crash handler must not run in the child
        g_inDeathChild = 1;
        dup2(file.handle(), STDERR_FILENO);
        body();
        _exit(0);
    }
    int status = 0;
    waitpid(pid, &status, 0);
    QFile written(file.fileName()); // read from the start: the child moved the shared offset
    *err = written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

void reportToStderr(const char* message)
{
    std::fputs(message, stderr);
    std::fflush(stderr);
}

} // namespace

class TestGraph : public QObject
{
    Q_OBJECT
private slots:
    void smallCases()
    {
        // Two nodes joined by one saturated edge, in a graph asked for no room at all.
        GraphI g(-5, -1);
        g.add_node(2);
        g.add_tweights(0, 10, 0);
        g.add_tweights(1, 0, 10);
        g.add_edge(0, 1, 4, 0);
        QCOMPARE(g.maxflow(), 4);
        QCOMPARE(QList<int>({g.what_segment(0), g.what_segment(1), g.get_trcap(1), g.get_rcap(g.get_first_arc())}),
                 QList<int>({GraphI::SOURCE, GraphI::SINK, -6, 0}));
        // No terminal capacities: no tree, every node takes the default.
        GraphI free(3, 2);
        free.add_node(3);
        free.add_edge(0, 1, 3, 3);
        QCOMPARE(free.maxflow(), 0);
        QVERIFY(free.what_segment(1) == GraphI::SOURCE && free.what_segment(1, GraphI::SINK) == GraphI::SINK);
        // An edge nobody may cut (the largest capacity both ways, as the region graph clamps long
        // borders to) gets flow back along its sister: the sister stays at the top instead of
        // wrapping to a negative residual.
        GraphI top(2, 1);
        top.add_node(2);
        top.add_edge(0, 1, INT_MAX, INT_MAX);
        top.add_tweights(0, 5, 0);
        top.add_tweights(1, 0, 5);
        QCOMPARE(top.maxflow(), 5);
        QCOMPARE(arcs(top), QList<int>({0, 1, INT_MAX - 5, 1, 0, INT_MAX}));
    }

    void randomGraphsLeaveMinimumCuts_data()
    {
        QTest::addColumn<int>("count"); QTest::addColumn<int>("minNodes"); QTest::addColumn<int>("maxNodes");
        QTest::addColumn<double>("density"); QTest::addColumn<int>("maxCap");
        QTest::newRow("tiny, dense") << 1500 << 2 << 8 << 0.6 << 10;
        QTest::newRow("small, sparse") << 1000 << 10 << 60 << 0.08 << 100;
        QTest::newRow("small, dense, unit") << 500 << 10 << 40 << 0.5 << 1;
        QTest::newRow("large capacities") << 300 << 20 << 80 << 0.1 << 1000000;
        QTest::newRow("hundreds of nodes") << 40 << 150 << 300 << 0.02 << 1000;
    }

    void randomGraphsLeaveMinimumCuts()
    {
        QFETCH(int, count); QFETCH(int, minNodes); QFETCH(int, maxNodes); QFETCH(double, density); QFETCH(int, maxCap);
        std::mt19937 rng(uint32_t(count * 7919 + maxNodes));
        std::uniform_int_distribution<int> size(minNodes, maxNodes);
        for (int k = 0; k < count; ++k) {
            const Problem p = randomProblem(rng, size(rng), density, maxCap);
            GraphI g(p.n / 3, int(p.edges.size()) / 3); // small room: growth happens while building
            p.build(g);
            p.checkMinimumCut(g, g.maxflow());
            if (QTest::currentTestFailed())
                QFAIL(qPrintable(QString("graph %1").arg(k)));
        }
    }

    // Reusing calls, with a plain call now and then, nodes and edges added in between (the arrays
    // move while marked nodes wait in the active queue, linked by address), and the hard weights of
    // the quick select scheme: the cut is always a minimum cut and every change of side is listed.
    // Listed nodes are left on the list before each plain call: the flag that keeps a node from
    // being listed twice must then be cleared by that call.
    void treeReuseListsEveryChange()
    {
        std::mt19937 rng(2024);
        Block<int> changed(64);
        for (int k = 0; k < 150; ++k) {
            Problem p = randomProblem(rng, 5 + k % 120, k % 3 == 0 ? 0.3 : 0.05, 50);
            GraphI g(p.n, int(p.edges.size())); // full from the start
            p.build(g);
            g.maxflow();
            // One graph goes through well over 64 reusing calls: the orphan pool kept between
            // them is released every 64th.
            for (int round = 0; round < (k == 100 ? 150 : 6); ++round) {
                // Read with both defaults: a free node reads as either, so a node that joins or
                // leaves a tree shows a change under one of them.
                std::vector<std::pair<GraphI::termtype, GraphI::termtype>> before(size_t(p.n));
                for (int i = 0; i < p.n; ++i)
                    before[size_t(i)] = {g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)};
                std::uniform_int_distribution<int> pick(0, p.n - 1), inc(0, 60);
                for (int t = 0; t < 1 + p.n / 20; ++t) {
                    const int i = pick(rng), hard = k % 5 == 0 && t == 0 && round < 5 ? 100000000 : 0;
                    const int s = rng() % 2 ? inc(rng) + hard : 0, e = rng() % 2 ? inc(rng) : 0;
                    p.source[size_t(i)] += s;
                    p.sink[size_t(i)] += e;
                    g.add_tweights(i, s, e);
                    g.mark_node(i);
                    g.mark_node(i); // twice is the same as once
                }
                const int old = p.n;
                if (k % 4 == 1 && round % 2) {
                    const int added = g.get_node_capacity() - p.n + 1 + int(rng() % 20); // past the room
                    QCOMPARE(g.add_node(added), p.n);
                    for (int i = 0; i < added; ++i) {
                        p.source.push_back(int(rng() % 40));
                        p.sink.push_back(int(rng() % 40));
                        g.add_tweights(p.n + i, p.source.back(), p.sink.back());
                        g.mark_node(p.n + i);
                    }
                    p.n += added;
                    for (int e = 0; e < 3 * added; ++e) {
                        const int i = int(rng() % uint32_t(p.n)), j = int(rng() % uint32_t(p.n)), c = int(rng() % 30);
                        if (i == j)
                            continue;
                        p.edges.push_back({i, j, c, c / 2});
                        g.add_edge(i, j, c, c / 2);
                        g.mark_node(i);
                        g.mark_node(j);
                    }
                }
                changed.reset();
                const bool plain = round % 3 == 2 && k % 2;
                p.checkMinimumCut(g, plain ? g.maxflow() : g.maxflow(true, &changed));
                if (plain)
                    continue;
                std::set<int> listed;
                changed.for_each([&](int id) { listed.insert(id); });
                for (int i = 0; i < old; ++i)
                    if (std::make_pair(g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)) != before[size_t(i)])
                        QVERIFY2(listed.count(i), qPrintable(QString("graph %1 round %2: node %3").arg(k).arg(round).arg(i)));
                if (!(k % 2 && round % 3 == 1)) // left set before a plain call, for it to clear
                    for (int id : listed)
                        g.remove_from_changed_list(id);
            }
        }
    }

    // Fatal errors exit with status 1 and the error function's message; failed preconditions abort
    // with the condition.
    void fatalPaths_data()
    {
        QTest::addColumn<int>("which"); QTest::addColumn<int>("status"); QTest::addColumn<QByteArray>("text");
        QTest::newRow("reuse on the first call") << 0 << 1
                                                 << QByteArray("reuse_trees cannot be used in the first call to maxflow()!");
        QTest::newRow("not in the changed list") << 5 << -SIGABRT
                                                 << QByteArray("`i>=0 && i<node_num && nodes[i].is_in_changed_list'");
        QTest::newRow("arc beyond the last") << 6 << -SIGABRT << QByteArray("`a >= arcs && a < arc_last'");
    }

    void fatalPaths()
    {
        QFETCH(int, which); QFETCH(int, status); QFETCH(QByteArray, text);
        QByteArray err;
        const int got = inChild(
            [&] {
                GraphI g(2, 1, reportToStderr);
                g.add_node(2);
                g.add_edge(0, 1, 1, 1);
                g.add_tweights(0, 1, 0);
                int i = 0, j = 0;
                switch (which) {
                case 0: g.maxflow(true); break;
                case 5: g.remove_from_changed_list(0); break;
                case 6: g.get_arc_ends(g.get_next_arc(g.get_next_arc(g.get_first_arc())), i, j); break;
                }
            },
            &err);
        QCOMPARE(got, status);
        QVERIFY2(status == 1 ? err == text : err.contains(text), err.constData());
    }

    void residualsFollowTheOrderOfWork()
    {
        // Four nodes, five edges; node 0 has two neighbours in the source tree at the same
        // distance, and there are several maximum flows. Worked out by hand in the solver's order:
        //  - init queues 1, 2, 3 (terminal nodes in id order);
        //  - 1 grows: over a9 node 0 joins (DIST 2), then over a1 node 0 is re-hung (its DIST 2 is
        //    greater than 1's), so 0 hangs on a0;
        //  - 2 (sink) finds 0 over a2's sister a3: path 1 -a0- 0 -a3- 2, bottleneck min(2, r(a1) 1,
        //    tr 3, 4) = 1; a1 saturates, 0 is an orphan;
        //  - adoption of 0: a8 (sister a9 = 3) reaches 1 at distance 1, a4 (sister a5 = 1) reaches
        //    3 at distance 1 too: the first, a8, wins (strictly nearer only replaces it);
        //  - 2 is scanned again at once: path 1 -a8- 0 -a3- 2, bottleneck r(a3) = 1; a3 saturates;
        //  - 3 and then 0 grow without finding anything: flow 2.
        // Taking the later of two equal parents, a last-in first-out queue, or going on with the
        // next active node instead of the current one each push the flow along other arcs.
        GraphI g(4, 5);
        g.add_node(4);
        g.add_tweights(1, 3, 0);
        g.add_tweights(2, 0, 4);
        g.add_tweights(3, 3, 0);
        g.add_edge(0, 1, 3, 1); // a0, a1
        g.add_edge(2, 0, 3, 2); // a2, a3
        g.add_edge(0, 3, 1, 1); // a4, a5
        g.add_edge(0, 1, 0, 0); // a6, a7
        g.add_edge(0, 1, 1, 3); // a8, a9
        QCOMPARE(g.maxflow(), 2);
        QCOMPARE(QList<int>({g.get_trcap(0), g.get_trcap(1), g.get_trcap(2), g.get_trcap(3)}), QList<int>({0, 1, -2, 3}));
        QCOMPARE(arcs(g), QList<int>({0, 1, 4, 1, 0, 0, 2, 0, 5, 0, 2, 0, 0, 3, 1, 3, 0, 1, 0, 1, 0, 1, 0, 0, 0, 1, 2, 1, 0, 2}));
        QCOMPARE(g.what_segment(0, GraphI::SINK), GraphI::SOURCE);
        QCOMPARE(g.what_segment(2), GraphI::SINK);
    }
};

QTEST_MAIN(TestGraph)
#include "tst_graph.moc"
