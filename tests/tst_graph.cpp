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
struct ReferenceFlow {
    struct Edge {
        int to;
        long long cap;
    };
    std::vector<std::vector<int>> adj;
    std::vector<Edge> edges;
    std::vector<int> level;
    std::vector<size_t> it;
    explicit ReferenceFlow(int n) : adj(size_t(n)) {}
    void add(int u, int v, long long cap)
    {
        adj[size_t(u)].push_back(int(edges.size()));
        edges.push_back({v, cap});
        adj[size_t(v)].push_back(int(edges.size()));
        edges.push_back({u, 0});
    }
    long long push(int u, int t, long long limit)
    {
        if (u == t)
            return limit;
        for (; it[size_t(u)] < adj[size_t(u)].size(); ++it[size_t(u)]) {
            const int e = adj[size_t(u)][it[size_t(u)]];
            Edge& edge = edges[size_t(e)];
            if (edge.cap <= 0 || level[size_t(edge.to)] != level[size_t(u)] + 1)
                continue;
            if (long long got = push(edge.to, t, std::min(limit, edge.cap))) {
                edge.cap -= got;
                edges[size_t(e ^ 1)].cap += got;
                return got;
            }
        }
        return 0;
    }
    long long solve(int s, int t)
    {
        for (long long total = 0;;) {
            level.assign(adj.size(), -1);
            level[size_t(s)] = 0;
            for (std::queue<int> q({s}); !q.empty(); q.pop())
                for (int e : adj[size_t(q.front())])
                    if (edges[size_t(e)].cap > 0 && level[size_t(edges[size_t(e)].to)] < 0) {
                        level[size_t(edges[size_t(e)].to)] = level[size_t(q.front())] + 1;
                        q.push(edges[size_t(e)].to);
                    }
            if (level[size_t(t)] < 0)
                return total;
            it.assign(adj.size(), 0);
            while (long long pushed = push(s, t, LLONG_MAX))
                total += pushed;
        }
    }
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
    void build(G& g, bool withEdges = true) const
    {
        g.add_node(n);
        for (int i = 0; i < n; ++i)
            g.add_tweights(i, source[size_t(i)], sink[size_t(i)]);
        for (size_t e = 0; withEdges && e < edges.size(); ++e)
            g.add_edge(edges[e].i, edges[e].j, edges[e].cap, edges[e].rev);
    }
    // The capacity of the cut the labels describe, from the original capacities.
    long long cutCapacity(const GraphI& g) const
    {
        long long cut = 0;
        for (int i = 0; i < n; ++i)
            cut += g.what_segment(i) == GraphI::SOURCE ? sink[size_t(i)] : source[size_t(i)];
        for (const E& e : edges) {
            const bool si = g.what_segment(e.i) == GraphI::SOURCE, sj = g.what_segment(e.j) == GraphI::SOURCE;
            cut += si && !sj ? e.cap : sj && !si ? e.rev : 0;
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
                const int c = coin(rng) < 0.15 ? 0 : cap(rng), r = coin(rng) < 0.5 ? 0 : cap(rng);
                p.edges.push_back(flip ? Problem::E{j, i, c, r} : Problem::E{i, j, c, r});
            }
    return p;
}

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
    for (ssize_t got; (got = read(fds[0], buf, sizeof buf)) > 0;)
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
    void smallCases();
    void randomGraphsMatchReference_data();
    void randomGraphsMatchReference();
    void edgeBatchLeavesWhatAddEdgeLeaves();
    void treeReuseMatchesFreshSolve();
    void blocksKeepInsertionOrder();
    void fatalPaths_data();
    void fatalPaths();
    void residualsFollowTheOrderOfWork();
    void hardWeightsPileUp();
    void changedListFlagIsCleared();
    void cancelStopsTheSearch();
};

void TestGraph::smallCases()
{
    // Arcs stay in creation order across moves, forward arc before its sister, with their ends.
    GraphI grown(10, 100);
    grown.add_node(10);
    QList<int> expected;
    for (int e = 0; e < 226; ++e) {
        grown.add_edge(e % 10, (e + 3) % 10, e, 1000 + e);
        expected << e % 10 << (e + 3) % 10 << e << (e + 3) % 10 << e % 10 << 1000 + e;
    }
    QCOMPARE(arcs(grown), expected);
    // Two nodes joined by one saturated edge, in a graph asked for no room at all.
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
    // A reusing call with nothing marked changes nothing.
    Block<int> changed(16);
    QCOMPARE(g.maxflow(true, &changed), 4);
    QVERIFY(changed.empty());
    QCOMPARE(g.what_segment(1), GraphI::SINK);
    // No terminal capacities: no tree, every node takes the default.
    GraphI free(3, 2);
    free.add_node(3);
    free.add_edge(0, 1, 3, 3);
    free.add_edge(1, 2, 3, 3);
    QCOMPARE(free.maxflow(), 0);
    for (int i = 0; i < 3; ++i)
        QVERIFY(free.what_segment(i) == GraphI::SOURCE && free.what_segment(i, GraphI::SINK) == GraphI::SINK);
    // An edge nobody may cut (the type's largest capacity both ways) gets flow back along its
    // sister: the sister stays at the top instead of wrapping to a negative residual.
    auto saturated = [](auto* type, int top) {
        std::remove_pointer_t<decltype(type)> s(2, 1);
        s.add_node(2);
        s.add_edge(0, 1, top, top);
        s.add_tweights(0, 5, 0);
        s.add_tweights(1, 0, 5);
        QCOMPARE(int(s.maxflow()), 5);
        QCOMPARE(int(s.get_rcap(s.get_first_arc())), top - 5);
        QCOMPARE(int(s.get_rcap(s.get_next_arc(s.get_first_arc()))), top);
    };
    saturated(static_cast<GraphI*>(nullptr), INT_MAX);
    saturated(static_cast<Graph<short, int, int>*>(nullptr), SHRT_MAX);
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
        GraphI g(p.n / 3, int(p.edges.size()) / 3); // small room: growth happens while building
        p.build(g);
        const long long flow = g.maxflow(), expected = p.reference();
        QVERIFY2(flow == expected, qPrintable(QString("graph %1: %2 != %3").arg(k).arg(flow).arg(expected)));
        QCOMPARE(p.cutCapacity(g), expected);
        g.test_consistency();
    }
}

// Arc lists decide the order of the solver's work and so its residuals: two graphs whose every
// arc and residual agree after a cut were built with the same lists.
void TestGraph::edgeBatchLeavesWhatAddEdgeLeaves()
{
    std::mt19937 rng(4711);
    for (int k = 0; k < 300; ++k) {
        const Problem p = randomProblem(rng, 3 + k % 70, k % 2 ? 0.3 : 0.08, 100);
        const int m = int(p.edges.size()), single = m / 3;
        // Small room, so that both ways grow the arc array, the batch with arcs already in it.
        GraphI one(p.n / 3, m / 4), batched(p.n / 3, m / 4);
        p.build(one);
        p.build(batched, false);
        std::vector<int> tails, heads;
        for (int e = 0; e < m; ++e)
            if (e < single)
                batched.add_edge(p.edges[size_t(e)].i, p.edges[size_t(e)].j, p.edges[size_t(e)].cap, p.edges[size_t(e)].rev);
            else {
                tails.push_back(p.edges[size_t(e)].i);
                heads.push_back(p.edges[size_t(e)].j);
            }
        auto batch = batched.begin_edges(tails.data(), heads.data(), int(tails.size()));
        // Uneven node ranges, the last first.
        const int cut1 = p.n / 3, cut2 = cut1 + 1 + k % (p.n - cut1);
        for (const auto& [first, last] : {std::pair{cut2, p.n}, std::pair{0, cut1}, std::pair{cut1, cut2}})
            batch.fill(first, last, [&](int e) {
                return std::pair<int, int>(p.edges[size_t(single + e)].cap, p.edges[size_t(single + e)].rev);
            });
        batch.finish();
        QCOMPARE(batched.get_arc_capacity(), one.get_arc_capacity());
        QVERIFY2(arcs(batched) == arcs(one), qPrintable(QString("graph %1 as built").arg(k)));
        QCOMPARE(batched.maxflow(), one.maxflow());
        QVERIFY2(arcs(batched) == arcs(one), qPrintable(QString("graph %1 after the cut").arg(k)));
        for (int i = 0; i < p.n; ++i)
            QCOMPARE(batched.what_segment(i, GraphI::SINK), one.what_segment(i, GraphI::SINK));
        batched.test_consistency();
    }
}

// Reusing calls, with a plain call now and then, nodes and edges added in between (the arrays
// move while marked nodes wait in the active queue, linked by address), and the hard weights of
// the quick select scheme: the cut is always a minimum cut and every change of side is listed.
void TestGraph::treeReuseMatchesFreshSolve()
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
            const long long flow = plain ? g.maxflow() : g.maxflow(true, &changed);
            g.test_consistency();
            QCOMPARE(flow, p.reference());
            QCOMPARE(p.cutCapacity(g), flow);
            if (plain)
                continue;
            std::set<int> listed;
            changed.for_each([&](int id) { listed.insert(id); });
            for (int i = 0; i < old; ++i)
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
    block.reset();
    QVERIFY(block.empty());
    *block.New(1) = 42;
    block.for_each([&](int v) { seen << v; });
    QCOMPARE(seen, QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 42}));
}

// Fatal errors exit with status 1 and the error function's message; failed preconditions abort
// with the condition.
void TestGraph::fatalPaths_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("text");
    const QByteArray first("reuse_trees cannot be used in the first call to maxflow()!");
    QTest::newRow("reuse on the first call") << 10 << 1 << first;
    QTest::newRow("reuse on the first call, with a list") << 11 << 1 << first;
    QTest::newRow("changed list without reuse") << 12 << 1 << QByteArray("changed_list cannot be used without reuse_trees!");
    QTest::newRow("no memory") << 13 << 1 << QByteArray("Not enough memory!");
    QTest::newRow("no error function: silent") << 32 << 1 << QByteArray();
    QTest::newRow("add_node(0)") << 0 << -SIGABRT << QByteArray("`num > 0'");
    QTest::newRow("edge from a missing node") << 1 << -SIGABRT << QByteArray("`_i >= 0 && _i < node_num'");
    QTest::newRow("edge to a missing node") << 2 << -SIGABRT << QByteArray("`_j >= 0 && _j < node_num'");
    QTest::newRow("loop") << 3 << -SIGABRT << QByteArray("`_i != _j'");
    QTest::newRow("negative capacity") << 4 << -SIGABRT << QByteArray("`cap >= 0'");
    QTest::newRow("negative reverse capacity") << 5 << -SIGABRT << QByteArray("`rev_cap >= 0'");
    QTest::newRow("weights of a missing node") << 6 << -SIGABRT << QByteArray("`i >= 0 && i < node_num'");
    QTest::newRow("trcap of a missing node") << 7 << -SIGABRT << QByteArray("`i>=0 && i<node_num'");
    QTest::newRow("not in the changed list") << 8 << -SIGABRT << QByteArray("`i>=0 && i<node_num && nodes[i].is_in_changed_list'");
    QTest::newRow("arc beyond the last") << 9 << -SIGABRT << QByteArray("`a >= arcs && a < arc_last'");
}

void TestGraph::fatalPaths()
{
    QFETCH(int, which);
    QFETCH(int, status);
    QFETCH(QByteArray, text);
    QByteArray err;
    QCOMPARE(inChild(
                 [&] {
                     Block<int> list(8);
                     if (which == 13) {
                         GraphI huge(INT_MAX, INT_MAX, reportToStderr); // far more than any machine gives
                         return;
                     }
                     GraphI g(2, 1, which < 20 ? reportToStderr : nullptr);
                     g.add_node(2);
                     g.add_edge(0, 1, 1, 1);
                     g.add_tweights(0, 1, 0);
                     int i = 0, j = 0;
                     switch (which % 20) {
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
                     case 10: g.maxflow(true); break;
                     case 11: g.maxflow(true, &list); break;
                     case 12: g.maxflow(false, &list); break;
                     }
                 },
                 &err),
             status);
    if (status == 1)
        QCOMPARE(err, text);
    else
        QVERIFY2(err.contains(text), err.constData());
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
    QCOMPARE(QList<int>({g.get_trcap(0), g.get_trcap(1), g.get_trcap(2), g.get_trcap(3)}), QList<int>({0, 1, -2, 3}));
    QCOMPARE(arcs(g), QList<int>({0, 1, 4, 1, 0, 0, 2, 0, 5, 0, 2, 0, 0, 3, 1, 3, 0, 1, 0, 1, 0, 1, 0, 0, 0, 1, 2, 1, 0, 2}));
    QCOMPARE(g.what_segment(0, GraphI::SINK), GraphI::SOURCE);
    QCOMPARE(g.what_segment(2), GraphI::SINK);
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
        QVERIFY2(g.what_segment(0) == GraphI::SOURCE && g.what_segment(2) == GraphI::SINK, qPrintable(QString("run %1").arg(run)));
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
    for (int run = 0, net = -4; run < 12; ++run) {
        const int target = run % 2 ? -4 : 4;
        g.add_tweights(1, std::max(target - net, 0), std::max(net - target, 0));
        net = target;
        g.mark_node(1);
        changed.reset();
        if (run % 4 == 3) { // a plain call in between: flags left set by the caller are cleared by it
            g.maxflow();
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
    GraphI plain(40000, 80000), unset(40000, 80000), set(40000, 80000);
    for (GraphI* g : {&plain, &unset, &set}) {
        std::mt19937 rng(11);
        std::uniform_int_distribution<int> cap(1, 50), weight(-40, 40);
        g->add_node(40000);
        for (int i = 0; i < 40000; ++i) {
            if (i % 200 < 199)
                g->add_edge(i, i + 1, cap(rng), cap(rng));
            if (i < 39800)
                g->add_edge(i, i + 200, cap(rng), cap(rng));
            const int w = weight(rng);
            g->add_tweights(i, std::max(w, 0), std::max(-w, 0));
        }
    }
    const std::atomic<bool> no{false}, yes{true};
    const int full = plain.maxflow();
    // An unset flag changes nothing: the same flow and the same side for every node.
    QCOMPARE(unset.maxflow(false, nullptr, &no), full);
    for (int i = 0; i < 40000; ++i)
        QCOMPARE(unset.what_segment(i), plain.what_segment(i));
    QVERIFY(set.maxflow(false, nullptr, &yes) < full); // a set one ends the search early
}

QTEST_MAIN(TestGraph)
#include "tst_graph.moc"
