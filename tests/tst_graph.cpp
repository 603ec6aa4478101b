// The max-flow engine: construction and growth, exact small cases, thousands of random graphs
// against a plain reference solver, tree reuse with the changed list, and the fatal paths.
#include "graph.h"

#include <QtTest>

#include <algorithm>
#include <climits>
#include <queue>
#include <random>
#include <set>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using GraphI = Graph<int, int, int>;

namespace {

// A plain Dinic max-flow over an explicit edge list, independent of the engine under test.
class ReferenceFlow
{
public:
    explicit ReferenceFlow(int n)
        : m_adj(size_t(n))
    {
    }
    void add(int u, int v, long long cap)
    {
        m_adj[size_t(u)].push_back(int(m_edges.size()));
        m_edges.push_back({v, cap});
        m_adj[size_t(v)].push_back(int(m_edges.size()));
        m_edges.push_back({u, 0});
    }
    long long solve(int s, int t)
    {
        long long total = 0;
        for (;;) {
            std::vector<int> level(m_adj.size(), -1);
            std::queue<int> q;
            level[size_t(s)] = 0;
            q.push(s);
            while (!q.empty()) {
                const int u = q.front();
                q.pop();
                for (int e : m_adj[size_t(u)])
                    if (m_edges[size_t(e)].cap > 0 && level[size_t(m_edges[size_t(e)].to)] < 0) {
                        level[size_t(m_edges[size_t(e)].to)] = level[size_t(u)] + 1;
                        q.push(m_edges[size_t(e)].to);
                    }
            }
            if (level[size_t(t)] < 0)
                return total;
            std::vector<size_t> it(m_adj.size(), 0);
            while (long long pushed = push(s, t, LLONG_MAX, level, it))
                total += pushed;
        }
    }

private:
    struct Edge {
        int to;
        long long cap;
    };
    long long push(int u, int t, long long limit, const std::vector<int>& level, std::vector<size_t>& it)
    {
        if (u == t)
            return limit;
        for (; it[size_t(u)] < m_adj[size_t(u)].size(); ++it[size_t(u)]) {
            const int e = m_adj[size_t(u)][it[size_t(u)]];
            Edge& edge = m_edges[size_t(e)];
            if (edge.cap <= 0 || level[size_t(edge.to)] != level[size_t(u)] + 1)
                continue;
            if (long long got = push(edge.to, t, std::min(limit, edge.cap), level, it)) {
                edge.cap -= got;
                m_edges[size_t(e ^ 1)].cap += got;
                return got;
            }
        }
        return 0;
    }
    std::vector<std::vector<int>> m_adj;
    std::vector<Edge> m_edges;
};

// A random problem kept in plain form so it can be solved by both engines and checked.
struct Problem {
    int n = 0;
    std::vector<int> source, sink; // terminal capacities
    struct E {
        int i, j, cap, rev;
    };
    std::vector<E> edges;

    long long reference() const
    {
        ReferenceFlow ref(n + 2);
        for (int i = 0; i < n; ++i) {
            ref.add(n, i, source[size_t(i)]);
            ref.add(i, n + 1, sink[size_t(i)]);
        }
        for (const E& e : edges) {
            ref.add(e.i, e.j, e.cap);
            ref.add(e.j, e.i, e.rev);
        }
        return ref.solve(n, n + 1);
    }
    template <class G>
    void build(G& g) const
    {
        g.add_node(n);
        for (int i = 0; i < n; ++i)
            g.add_tweights(i, source[size_t(i)], sink[size_t(i)]);
        for (const E& e : edges)
            g.add_edge(e.i, e.j, e.cap, e.rev);
    }
    // The capacity of the cut the labels describe, from the original capacities.
    template <class G>
    long long cutCapacity(const G& g) const
    {
        long long cut = 0;
        for (int i = 0; i < n; ++i)
            cut += g.what_segment(i) == G::SOURCE ? sink[size_t(i)] : source[size_t(i)];
        for (const E& e : edges) {
            const bool si = g.what_segment(e.i) == G::SOURCE, sj = g.what_segment(e.j) == G::SOURCE;
            if (si && !sj)
                cut += e.cap;
            if (sj && !si)
                cut += e.rev;
        }
        return cut;
    }
};

Problem randomProblem(std::mt19937& rng, int n, double density, int maxCap)
{
    Problem p;
    p.n = n;
    std::uniform_int_distribution<int> cap(0, maxCap);
    std::uniform_real_distribution<double> coin(0.0, 1.0);
    for (int i = 0; i < n; ++i) {
        // About a third of the nodes touch no terminal, some both.
        p.source.push_back(coin(rng) < 0.4 ? cap(rng) : 0);
        p.sink.push_back(coin(rng) < 0.4 ? cap(rng) : 0);
    }
    for (int i = 0; i < n; ++i)
        for (int j = i + 1; j < n; ++j)
            if (coin(rng) < density) {
                const bool flip = coin(rng) < 0.5;
                const int c = coin(rng) < 0.15 ? 0 : cap(rng);
                const int r = coin(rng) < 0.5 ? 0 : cap(rng);
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
    int fds[2];
    if (pipe(fds) != 0)
        return INT_MIN;
    const pid_t pid = fork();
    if (pid == 0) {
        // The test framework's crash handler must not run in the child.
        signal(SIGABRT, SIG_DFL);
        g_inDeathChild = 1;
        close(fds[0]);
        dup2(fds[1], STDERR_FILENO);
        body();
        _exit(0);
    }
    close(fds[1]);
    char buf[512];
    ssize_t got;
    while ((got = read(fds[0], buf, sizeof buf)) > 0)
        err->append(buf, int(got));
    close(fds[0]);
    int status = 0;
    waitpid(pid, &status, 0);
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
    void arcGrowthAndEnds();
    void smallCases();
    void randomGraphsMatchReference_data();
    void randomGraphsMatchReference();
    void otherInstantiations();
    void edgeBatchLeavesWhatAddEdgeLeaves();
    void treeReuseMatchesFreshSolve();
    void growthBetweenReusingCalls();
    void blocksKeepInsertionOrder();
    void fatalErrorsExitWithStatusOne_data();
    void fatalErrorsExitWithStatusOne();
    void failedPreconditionsAbort_data();
    void failedPreconditionsAbort();
    void residualsFollowTheOrderOfWork();
    void hardWeightsPileUp();
    void saturatedEdgesStayInRange();
    void markingRunsOnOneGraph();
    void changedListFlagIsCleared();
    void cancelStopsTheSearch();
};

void TestGraph::arcGrowthAndEnds()
{
    GraphI g(10, 100);
    g.add_node(10);
    for (int e = 0; e < 226; ++e)
        g.add_edge(e % 10, (e + 3) % 10, e, 1000 + e);
    // Arcs stay in creation order across moves, forward arc before its sister, with their ends.
    GraphI::arc_id a = g.get_first_arc();
    for (int e = 0; e < 226; ++e) {
        int i = -1, j = -1;
        g.get_arc_ends(a, i, j);
        QCOMPARE(i, e % 10);
        QCOMPARE(j, (e + 3) % 10);
        QCOMPARE(g.get_rcap(a), e);
        a = g.get_next_arc(a);
        g.get_arc_ends(a, i, j);
        QCOMPARE(i, (e + 3) % 10);
        QCOMPARE(j, e % 10);
        QCOMPARE(g.get_rcap(a), 1000 + e);
        a = g.get_next_arc(a);
    }
    QCOMPARE(g.get_arc_num(), 452);
}

void TestGraph::smallCases()
{
    // Two nodes joined by one saturated edge, in a graph asked for no room at all.
    {
        GraphI g(-5, -1);
        g.add_node(2);
        g.add_tweights(0, 10, 0);
        g.add_tweights(1, 0, 10);
        g.add_edge(0, 1, 4, 0);
        QCOMPARE(g.maxflow(), 4);
        QCOMPARE(g.what_segment(0), GraphI::SOURCE);
        QCOMPARE(g.what_segment(1), GraphI::SINK);
        QCOMPARE(g.get_trcap(1), -6);
        QCOMPARE(g.get_rcap(g.get_first_arc()), 0);
    }
    // No terminal capacities: no tree, every node takes the default.
    {
        GraphI g(3, 2);
        g.add_node(3);
        g.add_edge(0, 1, 3, 3);
        g.add_edge(1, 2, 3, 3);
        QCOMPARE(g.maxflow(), 0);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(g.what_segment(i), GraphI::SOURCE);
            QCOMPARE(g.what_segment(i, GraphI::SINK), GraphI::SINK);
        }
        g.test_consistency();
    }
    // A reusing call with nothing marked changes nothing.
    {
        GraphI g(2, 1);
        g.add_node(2);
        g.add_tweights(0, 10, 0);
        g.add_tweights(1, 0, 10);
        g.add_edge(0, 1, 4, 0);
        QCOMPARE(g.maxflow(), 4);
        Block<int> changed(16);
        QCOMPARE(g.maxflow(true, &changed), 4);
        QVERIFY(changed.empty());
        QCOMPARE(g.what_segment(1), GraphI::SINK);
    }
}

void TestGraph::randomGraphsMatchReference_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("minNodes");
    QTest::addColumn<int>("maxNodes");
    QTest::addColumn<double>("density");
    QTest::addColumn<int>("maxCap");
    QTest::newRow("tiny, dense") << 1500 << 2 << 8 << 0.6 << 10;
    QTest::newRow("small, sparse") << 1000 << 10 << 60 << 0.08 << 100;
    QTest::newRow("small, dense, unit") << 500 << 10 << 40 << 0.5 << 1;
    QTest::newRow("large capacities") << 300 << 20 << 80 << 0.1 << 1000000;
    QTest::newRow("hundreds of nodes") << 40 << 150 << 300 << 0.02 << 1000;
}

void TestGraph::randomGraphsMatchReference()
{
    QFETCH(int, count);
    QFETCH(int, minNodes);
    QFETCH(int, maxNodes);
    QFETCH(double, density);
    QFETCH(int, maxCap);
    std::mt19937 rng(uint32_t(count * 7919 + maxNodes));
    std::uniform_int_distribution<int> size(minNodes, maxNodes);
    for (int k = 0; k < count; ++k) {
        const Problem p = randomProblem(rng, size(rng), density, maxCap);
        // Small initial room, so that growth happens while building.
        GraphI g(p.n / 3, int(p.edges.size()) / 3);
        p.build(g);
        const long long flow = g.maxflow();
        const long long expected = p.reference();
        QVERIFY2(flow == expected, qPrintable(QString("graph %1: %2 != %3").arg(k).arg(flow).arg(expected)));
        QCOMPARE(p.cutCapacity(g), expected);
        g.test_consistency();
    }
}

void TestGraph::otherInstantiations()
{
    std::mt19937 rng(99);
    for (int k = 0; k < 200; ++k) {
        const Problem p = randomProblem(rng, 2 + k % 30, 0.2, 100);
        const long long expected = p.reference();
        Graph<short, int, int> gs(p.n, int(p.edges.size()));
        Graph<float, float, float> gf(p.n, int(p.edges.size()));
        Graph<double, double, double> gd(p.n, int(p.edges.size()));
        p.build(gs);
        p.build(gf);
        p.build(gd);
        QCOMPARE((long long)gs.maxflow(), expected);
        QCOMPARE((long long)std::lround(gf.maxflow()), expected); // small integers are exact in float
        QCOMPARE((long long)std::lround(gd.maxflow()), expected);
        QCOMPARE(p.cutCapacity(gd), expected);
    }
}

// Arc lists decide the order of the solver's work and so its residuals: two graphs whose every
// arc and residual agree after a cut were built with the same lists.
void TestGraph::edgeBatchLeavesWhatAddEdgeLeaves()
{
    std::mt19937 rng(4711);
    for (int k = 0; k < 300; ++k) {
        const Problem p = randomProblem(rng, 3 + k % 70, k % 2 ? 0.3 : 0.08, 100);
        const int m = int(p.edges.size());
        // Small room, so that both ways grow the arc array, the batch with arcs already in it.
        GraphI one(p.n / 3, m / 4), batched(p.n / 3, m / 4);
        p.build(one);
        batched.add_node(p.n);
        for (int i = 0; i < p.n; ++i)
            batched.add_tweights(i, p.source[size_t(i)], p.sink[size_t(i)]);
        const int single = m / 3;
        for (int e = 0; e < single; ++e)
            batched.add_edge(p.edges[size_t(e)].i, p.edges[size_t(e)].j, p.edges[size_t(e)].cap, p.edges[size_t(e)].rev);
        std::vector<int> tails, heads;
        for (int e = single; e < m; ++e) {
            tails.push_back(p.edges[size_t(e)].i);
            heads.push_back(p.edges[size_t(e)].j);
        }
        auto batch = batched.begin_edges(tails.data(), heads.data(), int(tails.size()));
        // Uneven node ranges, the last first.
        const int cut1 = p.n / 3, cut2 = cut1 + 1 + k % (p.n - cut1);
        for (const auto& [first, last] : {std::pair{cut2, p.n}, std::pair{0, cut1}, std::pair{cut1, cut2}})
            batch.fill(first, last, [&](int e) {
                const Problem::E& edge = p.edges[size_t(single + e)];
                return std::pair<int, int>(edge.cap, edge.rev);
            });
        batch.finish();

        QCOMPARE(batched.get_arc_num(), one.get_arc_num());
        QCOMPARE(batched.get_arc_capacity(), one.get_arc_capacity());
        auto sameArcs = [&] {
            auto a = one.get_first_arc();
            auto b = batched.get_first_arc();
            for (int n = 0; n < one.get_arc_num(); ++n, a = one.get_next_arc(a), b = batched.get_next_arc(b)) {
                int i1, j1, i2, j2;
                one.get_arc_ends(a, i1, j1);
                batched.get_arc_ends(b, i2, j2);
                if (i1 != i2 || j1 != j2 || one.get_rcap(a) != batched.get_rcap(b))
                    return false;
            }
            return true;
        };
        QVERIFY2(sameArcs(), qPrintable(QString("graph %1 as built").arg(k)));
        QCOMPARE(batched.maxflow(), one.maxflow());
        QVERIFY2(sameArcs(), qPrintable(QString("graph %1 after the cut").arg(k)));
        for (int i = 0; i < p.n; ++i)
            QCOMPARE(batched.what_segment(i, GraphI::SINK), one.what_segment(i, GraphI::SINK));
        batched.test_consistency();
    }
}

void TestGraph::treeReuseMatchesFreshSolve()
{
    std::mt19937 rng(2024);
    Block<int> changed(64);
    for (int k = 0; k < 150; ++k) {
        Problem p = randomProblem(rng, 5 + k % 120, k % 3 == 0 ? 0.3 : 0.05, 50);
        GraphI g(p.n, int(p.edges.size()));
        p.build(g);
        g.maxflow();
        g.test_consistency();
        // One graph goes through well over 64 reusing calls: the orphan pool kept between
        // them is released every 64th.
        for (int round = 0; round < (k == 100 ? 150 : 6); ++round) {
            // Read with both defaults: a free node reads as either, so a node that joins or
            // leaves a tree shows a change under one of them.
            std::vector<std::pair<GraphI::termtype, GraphI::termtype>> before(size_t(p.n));
            for (int i = 0; i < p.n; ++i)
                before[size_t(i)] = {g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)};
            // Raise a few terminal capacities, marking the nodes touched.
            std::uniform_int_distribution<int> pick(0, p.n - 1), inc(0, 60);
            const int touched = 1 + p.n / 20;
            for (int t = 0; t < touched; ++t) {
                const int i = pick(rng);
                const int s = rng() % 2 ? inc(rng) : 0, e = rng() % 2 ? inc(rng) : 0;
                p.source[size_t(i)] += s;
                p.sink[size_t(i)] += e;
                g.add_tweights(i, s, e);
                g.mark_node(i);
                g.mark_node(i); // twice is the same as once
            }
            changed.reset();
            const long long flow = g.maxflow(true, &changed);
            g.test_consistency();
            QCOMPARE(flow, p.reference());
            QCOMPARE(p.cutCapacity(g), flow);

            std::set<int> listed;
            changed.for_each([&](int id) { listed.insert(id); });
            for (int i = 0; i < p.n; ++i)
                if (std::make_pair(g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)) != before[size_t(i)])
                    QVERIFY2(listed.count(i), qPrintable(QString("graph %1 round %2: node %3 not listed").arg(k).arg(round).arg(i)));
            for (int id : listed)
                g.remove_from_changed_list(id);
        }
    }
}

void TestGraph::blocksKeepInsertionOrder()
{
    Block<int> block(3);
    for (int i = 0; i < 8; ++i)
        *block.New(1) = i;
    int* pair = block.New(2); // does not fit the third block's last slot: starts a fourth
    pair[0] = 8;
    pair[1] = 9;
    QList<int> seen;
    block.for_each([&](int v) { seen << v; });
    QCOMPARE(seen, QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9}));
    block.reset();
    QVERIFY(block.empty());
    *block.New(1) = 42;
    seen.clear();
    block.for_each([&](int v) { seen << v; });
    QCOMPARE(seen, QList<int>({42}));
}

void TestGraph::fatalErrorsExitWithStatusOne_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<bool>("withFunction");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("reuse on the first call") << 0 << true << QByteArray("reuse_trees cannot be used in the first call to maxflow()!");
    QTest::newRow("reuse on the first call, with a list") << 1 << true << QByteArray("reuse_trees cannot be used in the first call to maxflow()!");
    QTest::newRow("changed list without reuse") << 2 << true << QByteArray("changed_list cannot be used without reuse_trees!");
    QTest::newRow("no memory") << 3 << true << QByteArray("Not enough memory!");
    QTest::newRow("no error function: silent") << 2 << false << QByteArray();
}

void TestGraph::fatalErrorsExitWithStatusOne()
{
    QFETCH(int, which);
    QFETCH(bool, withFunction);
    QFETCH(QByteArray, message);
    QByteArray err;
    const int status = inChild(
        [&] {
            void (*fn)(const char*) = withFunction ? reportToStderr : nullptr;
            Block<int> list(8);
            if (which == 3) {
                GraphI huge(INT_MAX, INT_MAX, fn); // far more than any machine gives
                return;
            }
            GraphI g(2, 1, fn);
            g.add_node(2);
            g.add_tweights(0, 1, 0);
            if (which == 0)
                g.maxflow(true);
            else if (which == 1)
                g.maxflow(true, &list);
            else
                g.maxflow(false, &list);
        },
        &err);
    QCOMPARE(status, 1);
    QCOMPARE(err, message);
}

void TestGraph::failedPreconditionsAbort_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("add_node(0)") << 0 << QByteArray("num > 0");
    QTest::newRow("edge from a missing node") << 1 << QByteArray("_i >= 0 && _i < node_num");
    QTest::newRow("edge to a missing node") << 2 << QByteArray("_j >= 0 && _j < node_num");
    QTest::newRow("loop") << 3 << QByteArray("_i != _j");
    QTest::newRow("negative capacity") << 4 << QByteArray("cap >= 0");
    QTest::newRow("negative reverse capacity") << 5 << QByteArray("rev_cap >= 0");
    QTest::newRow("weights of a missing node") << 6 << QByteArray("i >= 0 && i < node_num");
    QTest::newRow("trcap of a missing node") << 7 << QByteArray("i>=0 && i<node_num");
    QTest::newRow("not in the changed list") << 8 << QByteArray("i>=0 && i<node_num && nodes[i].is_in_changed_list");
    QTest::newRow("arc beyond the last") << 9 << QByteArray("a >= arcs && a < arc_last");
}

void TestGraph::failedPreconditionsAbort()
{
    QFETCH(int, which);
    QFETCH(QByteArray, text);
    QByteArray err;
    const int status = inChild(
        [&] {
            GraphI g(2, 1);
            g.add_node(2);
            g.add_edge(0, 1, 1, 1);
            int i = 0, j = 0;
            switch (which) {
            case 0: g.add_node(0); break;
            case 1: g.add_edge(2, 0, 1, 1); break;
            case 2: g.add_edge(0, -1, 1, 1); break;
            case 3: g.add_edge(1, 1, 1, 1); break;
            case 4: g.add_edge(0, 1, -1, 1); break;
            case 5: g.add_edge(0, 1, 1, -1); break;
            case 6: g.add_tweights(5, 1, 1); break;
            case 7: g.get_trcap(2); break;
            case 8: g.remove_from_changed_list(0); break;
            case 9: g.get_arc_ends(g.get_next_arc(g.get_next_arc(g.get_first_arc())), i, j); break;
            }
        },
        &err);
    QCOMPARE(status, -SIGABRT);
    QVERIFY2(err.contains("`" + text + "'"), err.constData());
}

void TestGraph::residualsFollowTheOrderOfWork()
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
    QList<int> trcaps, rcaps;
    for (int i = 0; i < 4; ++i)
        trcaps << g.get_trcap(i);
    GraphI::arc_id a = g.get_first_arc();
    for (int k = 0; k < g.get_arc_num(); ++k, a = g.get_next_arc(a))
        rcaps << g.get_rcap(a);
    QCOMPARE(trcaps, QList<int>({0, 1, -2, 3}));
    QCOMPARE(rcaps, QList<int>({4, 0, 5, 0, 1, 1, 0, 0, 2, 2}));
    QCOMPARE(g.what_segment(0, GraphI::SINK), GraphI::SOURCE);
    QCOMPARE(g.what_segment(2), GraphI::SINK);
    g.test_consistency();
}

void TestGraph::hardWeightsPileUp()
{
    // Hard weights of 10^8 added run after run on the same nodes pass 2^31 after about
    // twenty runs: the nodes must stay tied to their terminals, not wrap to the other side.
    GraphI g(3, 2);
    g.add_node(3);
    g.add_edge(0, 1, 5, 5);
    g.add_edge(1, 2, 3, 3);
    for (int run = 0; run < 300; ++run) {
        g.add_tweights(0, 100000000, 0);
        g.add_tweights(2, 0, 100000000);
        g.add_tweights(1, run % 2 ? 7 : 0, run % 2 ? 0 : 2);
        g.maxflow();
        QVERIFY2(g.get_trcap(0) > 0 && g.get_trcap(2) < 0, qPrintable(QString("run %1").arg(run)));
        QCOMPARE(g.what_segment(0), GraphI::SOURCE);
        QCOMPARE(g.what_segment(2), GraphI::SINK);
        g.test_consistency();
    }
    QCOMPARE(g.get_trcap(0), INT_MAX);
    QCOMPARE(g.get_trcap(2), -INT_MAX); // symmetric, so the solver may negate it
    // Both at once: the common part is flow, the rest stays.
    GraphI h(1, 0);
    h.add_node();
    h.add_tweights(0, INT_MAX, 5);
    h.add_tweights(0, INT_MAX, 0);
    QCOMPARE(h.get_trcap(0), INT_MAX);
    h.add_tweights(0, 0, INT_MAX);
    h.add_tweights(0, 0, INT_MAX);
    QCOMPARE(h.get_trcap(0), -INT_MAX);
}

// An edge given the type's largest capacity both ways (an edge nobody may cut) gets flow back
// along its sister: the sister stays at the top instead of wrapping to a negative residual.
template <class G>
static void pushThroughSaturatedEdge(int top)
{
    G g(2, 1);
    g.add_node(2);
    g.add_edge(0, 1, top, top);
    g.add_tweights(0, 5, 0);
    g.add_tweights(1, 0, 5);
    QCOMPARE(g.maxflow(), 5);
    typename G::arc_id a = g.get_first_arc();
    QCOMPARE(int(g.get_rcap(a)), int(top) - 5);
    QCOMPARE(int(g.get_rcap(g.get_next_arc(a))), int(top));
    g.test_consistency();
}

void TestGraph::saturatedEdgesStayInRange()
{
    pushThroughSaturatedEdge<GraphI>(INT_MAX);
    pushThroughSaturatedEdge<Graph<short, int, int>>(SHRT_MAX);
}

void TestGraph::markingRunsOnOneGraph()
{
    // The quick select scheme: every run sets each node's net terminal capacity to a new value
    // v with add_tweights(i, v, previous v), hard weights of +-10^8 for marked nodes, and cuts
    // again on the graph kept from the earlier runs. After hundreds of runs the cut is still a
    // minimum cut of the capacities of the last run.
    std::mt19937 rng(5);
    Problem p = randomProblem(rng, 40, 0.12, 500);
    GraphI g(p.n, int(p.edges.size()));
    g.add_node(p.n);
    for (const Problem::E& e : p.edges)
        g.add_edge(e.i, e.j, e.cap, e.rev);
    std::vector<int> applied(size_t(p.n), 0);
    std::uniform_int_distribution<int> soft(-3000, 3000), kind(0, 9);
    for (int run = 0; run < 300; ++run) {
        for (int i = 0; i < p.n; ++i) {
            const int k = kind(rng);
            const int v = k == 0 ? 100000000 : k == 1 ? -100000000 : soft(rng);
            g.add_tweights(i, v, applied[size_t(i)]);
            applied[size_t(i)] = v;
            p.source[size_t(i)] = std::max(v, 0);
            p.sink[size_t(i)] = std::max(-v, 0);
        }
        g.maxflow();
        const long long best = p.reference();
        QVERIFY2(p.cutCapacity(g) == best, qPrintable(QString("run %1").arg(run)));
        for (int i = 0; i < p.n; ++i)
            if (std::abs(applied[size_t(i)]) == 100000000)
                QCOMPARE(g.what_segment(i), applied[size_t(i)] > 0 ? GraphI::SOURCE : GraphI::SINK);
    }
}

void TestGraph::growthBetweenReusingCalls()
{
    // Nodes and edges added between reusing calls move the arrays. Marked nodes wait in the
    // active queue, linked by address: marks made before the node array moves must still count.
    std::mt19937 rng(11);
    for (int k = 0; k < 60; ++k) {
        Problem p = randomProblem(rng, 16, 0.2, 30);
        GraphI g(16, 16); // full from the start
        p.build(g);
        g.maxflow();
        for (int round = 0; round < 4; ++round) {
            std::uniform_int_distribution<int> pick(0, p.n - 1);
            for (int t = 0; t < 3; ++t) {
                const int i = pick(rng), s = int(rng() % 40), e = int(rng() % 40);
                p.source[size_t(i)] += s;
                p.sink[size_t(i)] += e;
                g.add_tweights(i, s, e);
                g.mark_node(i);
            }
            const int capacity = g.get_node_capacity();
            const int added = capacity - p.n + 1 + int(rng() % 20); // past the room: the array moves
            QCOMPARE(g.add_node(added), p.n);
            QVERIFY(g.get_node_capacity() > capacity);
            for (int i = 0; i < added; ++i) {
                const int s = int(rng() % 40), t = int(rng() % 40);
                p.source.push_back(s);
                p.sink.push_back(t);
                g.add_tweights(p.n + i, s, t);
                g.mark_node(p.n + i);
            }
            p.n += added;
            for (int e = 0; e < 3 * added; ++e) {
                const int i = int(rng() % uint32_t(p.n)), j = int(rng() % uint32_t(p.n));
                if (i == j)
                    continue;
                const int c = int(rng() % 30), r = int(rng() % 30);
                p.edges.push_back({i, j, c, r});
                g.add_edge(i, j, c, r);
                g.mark_node(i);
                g.mark_node(j);
            }
            const long long flow = g.maxflow(true, nullptr);
            g.test_consistency();
            QCOMPARE(flow, p.reference());
            QCOMPARE(p.cutCapacity(g), flow);
        }
    }
}

void TestGraph::changedListFlagIsCleared()
{
    // Node 1 flips between the terminals run after run. Each flip must be listed: the flag
    // that keeps a node from being listed twice is cleared by remove_from_changed_list and by
    // a call without tree reuse.
    GraphI g(2, 1);
    g.add_node(2);
    g.add_edge(0, 1, 1, 1);
    g.add_tweights(0, 5, 0);
    g.add_tweights(1, 0, 5);
    g.maxflow();
    Block<int> changed(8);
    int net = -4; // node 1's net terminal capacity after the first cut
    for (int run = 0; run < 12; ++run) {
        const int target = run % 2 ? -4 : 4;
        g.add_tweights(1, std::max(target - net, 0), std::max(net - target, 0));
        net = target;
        g.mark_node(1);
        changed.reset();
        if (run % 4 == 3) {
            // A plain call in between: flags left set by the caller are cleared by it.
            g.maxflow();
            g.add_tweights(1, 0, 0);
            continue;
        }
        g.maxflow(true, &changed);
        QList<int> listed;
        changed.for_each([&](int id) { listed << id; });
        QVERIFY2(listed.contains(1), qPrintable(QString("run %1").arg(run)));
        QCOMPARE(g.what_segment(1), target > 0 ? GraphI::SOURCE : GraphI::SINK);
        if (run % 4 != 2) // once left set, for the plain call to clear
            for (int id : listed)
                g.remove_from_changed_list(id);
    }
}

void TestGraph::cancelStopsTheSearch()
{
    // A 200 x 200 grid with seeded weights: a search of far more than the 4096 growth steps
    // between two looks at the flag.
    auto build = [](GraphI& g) {
        const int side = 200;
        std::mt19937 rng(11);
        std::uniform_int_distribution<int> cap(1, 50), weight(-40, 40);
        g.add_node(side * side);
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                const int i = y * side + x;
                if (x + 1 < side)
                    g.add_edge(i, i + 1, cap(rng), cap(rng));
                if (y + 1 < side)
                    g.add_edge(i, i + side, cap(rng), cap(rng));
                const int w = weight(rng);
                g.add_tweights(i, std::max(w, 0), std::max(-w, 0));
            }
    };
    GraphI plain(40000, 80000), unset(40000, 80000), set(40000, 80000);
    build(plain);
    build(unset);
    build(set);
    const std::atomic<bool> no{false}, yes{true};
    const int full = plain.maxflow();
    // An unset flag changes nothing: the same flow and the same side for every node.
    QCOMPARE(unset.maxflow(false, nullptr, &no), full);
    for (int i = 0; i < 40000; ++i)
        QCOMPARE(unset.what_segment(i), plain.what_segment(i));
    // A set one ends the search early, short of the maximum.
    QVERIFY(set.maxflow(false, nullptr, &yes) < full);
}

QTEST_MAIN(TestGraph)
#include "tst_graph.moc"
