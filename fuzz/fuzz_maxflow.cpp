// A random flow graph and a sequence of solves on it, most of them reusing the search trees
// of the one before, between which terminal capacities grow, nodes and edges are added (one
// at a time or as a batch filled in two ranges), residuals are raised in place, and nodes are
// marked. Edges nobody may cut carry the type's largest capacity, so that flow pushed back
// along them meets the top of the range. Every flow is checked against a plain solver, every
// cut against its capacity, the trees against their invariants, the changed list against the
// labels, and the double instantiation, built alike, against the same flow.
//
// Input: node count byte (2..33), then records read as bytes until the input ends.
#include "graph.h"

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <queue>
#include <set>
#include <vector>

namespace {

using GraphI = Graph<int, int, int>;

[[noreturn]] void fail(const char* what, long long a = 0, long long b = 0)
{
    std::fprintf(stderr, "fuzz-maxflow: %s (%lld, %lld)\n", what, a, b);
    std::abort();
}

struct Edge {
    int i, j, cap, rev;
};

// Edmonds-Karp over an adjacency matrix: slow, short and obviously right.
long long plainMaxflow(int n, const std::vector<int>& source, const std::vector<int>& sink, const std::vector<Edge>& edges)
{
    const int s = n, t = n + 1, m = n + 2;
    std::vector<long long> cap(size_t(m) * size_t(m), 0);
    auto c = [&](int u, int v) -> long long& { return cap[size_t(u) * size_t(m) + size_t(v)]; };
    for (int i = 0; i < n; ++i) {
        c(s, i) += source[size_t(i)];
        c(i, t) += sink[size_t(i)];
    }
    for (const Edge& e : edges) {
        c(e.i, e.j) += e.cap;
        c(e.j, e.i) += e.rev;
    }
    long long total = 0;
    for (;;) {
        std::vector<int> prev(size_t(m), -1);
        prev[size_t(s)] = s;
        std::queue<int> q;
        q.push(s);
        while (!q.empty() && prev[size_t(t)] < 0) {
            const int u = q.front();
            q.pop();
            for (int v = 0; v < m; ++v)
                if (prev[size_t(v)] < 0 && c(u, v) > 0) {
                    prev[size_t(v)] = u;
                    q.push(v);
                }
        }
        if (prev[size_t(t)] < 0)
            return total;
        long long b = LLONG_MAX;
        for (int v = t; v != s; v = prev[size_t(v)])
            b = std::min(b, c(prev[size_t(v)], v));
        for (int v = t; v != s; v = prev[size_t(v)]) {
            c(prev[size_t(v)], v) -= b;
            c(v, prev[size_t(v)]) += b;
        }
        total += b;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    size_t at = 0;
    auto next = [&]() -> int { return at < size ? data[at++] : -1; };
    int n = next();
    if (n < 0)
        return 0;
    n = 2 + n % 32;
    std::vector<int> source(size_t(n), 0), sink(size_t(n), 0);
    std::vector<Edge> edges;
    GraphI g(n / 2, n / 2); // small room: growth while building
    g.add_node(n);
    Graph<double, double, double> gd(n / 2, n / 2);
    gd.add_node(n);
    Block<int> changed(16);
    bool solved = false;
    int solves = 0;
    // Records: op byte, then its operands; the node ids wrap to the current count.
    for (;;) {
        const int op = next();
        if (op < 0 || solves > 200)
            break;
        switch (op % 8) {
        case 0: { // edge
            const int i = next(), j = next(), c = next(), r = next();
            if (r < 0)
                break;
            const int a = i % n, b = j % n;
            if (a == b)
                break;
            // The low bits of the capacity byte pick an uncuttable direction now and then.
            const int cap = (c & 7) == 7 ? INT_MAX : c * 4, rev = (c & 7) >= 6 ? INT_MAX : r * 4;
            edges.push_back({a, b, cap, rev});
            g.add_edge(a, b, cap, rev);
            gd.add_edge(a, b, cap, rev);
            g.mark_node(a);
            g.mark_node(b);
            gd.mark_node(a);
            gd.mark_node(b);
            break;
        }
        case 1: { // terminal capacities grow
            const int i = next(), s = next(), t = next();
            if (t < 0)
                break;
            source[size_t(i % n)] += s * 8;
            sink[size_t(i % n)] += t * 8;
            g.add_tweights(i % n, s * 8, t * 8);
            gd.add_tweights(i % n, s * 8, t * 8);
            g.mark_node(i % n);
            gd.mark_node(i % n);
            break;
        }
        case 2: { // nodes added
            const int k = next();
            if (k < 0 || n > 200)
                break;
            const int added = 1 + k % 8;
            if (g.add_node(added) != n || gd.add_node(added) != n)
                fail("node ids are not consecutive");
            n += added;
            source.resize(size_t(n), 0);
            sink.resize(size_t(n), 0);
            break;
        }
        case 3:   // a solve, reusing the trees when there was one before
        case 4: { // a solve without reuse
            const bool reuse = op % 5 == 3 && solved;
            std::vector<std::pair<int, int>> before(static_cast<size_t>(n));
            for (int i = 0; i < n; ++i)
                before[size_t(i)] = {g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)};
            changed.reset();
            const long long flow = g.maxflow(reuse, reuse ? &changed : nullptr);
            const double flowd = gd.maxflow(reuse);
            solved = true;
            ++solves;
            g.test_consistency();
            const long long expected = plainMaxflow(n, source, sink, edges);
            if (flow != expected)
                fail("flow differs from the plain solver", flow, expected);
            if (flowd != double(expected))
                fail("the double graph's flow differs", (long long)flowd, expected);
            long long cut = 0;
            for (int i = 0; i < n; ++i)
                cut += g.what_segment(i) == GraphI::SOURCE ? sink[size_t(i)] : source[size_t(i)];
            for (const Edge& e : edges) {
                const bool si = g.what_segment(e.i) == GraphI::SOURCE, sj = g.what_segment(e.j) == GraphI::SOURCE;
                cut += si && !sj ? e.cap : 0;
                cut += sj && !si ? e.rev : 0;
            }
            if (cut != flow)
                fail("the labels do not describe a minimum cut", cut, flow);
            if (reuse) {
                std::set<int> listed;
                changed.for_each([&](int id) { listed.insert(id); });
                for (int i = 0; i < n; ++i) {
                    const std::pair<int, int> now{g.what_segment(i, GraphI::SOURCE), g.what_segment(i, GraphI::SINK)};
                    if (now != before[size_t(i)] && !listed.count(i))
                        fail("a node whose label changed is not listed", i);
                }
                for (int id : listed)
                    g.remove_from_changed_list(id);
            }
            break;
        }
        case 5: { // a batch of edges, filled in two node ranges as init's threads fill them
            const int k = next();
            if (k < 0)
                break;
            const int count = 1 + k % 12;
            std::vector<int> tails, heads;
            std::vector<std::pair<int, int>> caps;
            for (int e = 0; e < count; ++e) {
                const int i = next(), j = next(), c = next();
                if (c < 0)
                    break;
                if (i % n == j % n)
                    continue;
                tails.push_back(i % n);
                heads.push_back(j % n);
                caps.push_back({(c & 15) == 15 ? INT_MAX : c * 4, (c & 15) == 14 ? INT_MAX : (c >> 4) * 9});
            }
            const int m = int(tails.size());
            auto batch = g.begin_edges(tails.data(), heads.data(), m);
            const int split = n / 2;
            batch.fill(split, n, [&](int e) { return caps[size_t(e)]; });
            batch.fill(0, split, [&](int e) { return caps[size_t(e)]; });
            batch.finish();
            for (int e = 0; e < m; ++e) {
                edges.push_back({tails[size_t(e)], heads[size_t(e)], caps[size_t(e)].first, caps[size_t(e)].second});
                gd.add_edge(tails[size_t(e)], heads[size_t(e)], caps[size_t(e)].first, caps[size_t(e)].second);
                for (int v : {tails[size_t(e)], heads[size_t(e)]}) {
                    g.mark_node(v);
                    gd.mark_node(v);
                }
            }
            break;
        }
        case 6: { // a residual terminal capacity raised in place, as adding capacity to its side
            const int i = next(), d = next();
            if (d < 0)
                break;
            const int v = i % n;
            const int tr = g.get_trcap(v);
            if (double(tr) != gd.get_trcap(v))
                fail("the double graph's terminal residual differs", v);
            if (tr >= 0) {
                g.set_trcap(v, tr + d * 8);
                gd.set_trcap(v, gd.get_trcap(v) + d * 8);
                source[size_t(v)] += d * 8;
            } else {
                g.set_trcap(v, tr - d * 8);
                gd.set_trcap(v, gd.get_trcap(v) - d * 8);
                sink[size_t(v)] += d * 8;
            }
            g.mark_node(v);
            gd.mark_node(v);
            break;
        }
        case 7: { // an arc's residual raised in place, as adding capacity to its direction
            const int k = next(), d = next();
            if (d < 0 || edges.empty())
                break;
            const size_t e = size_t(k) % edges.size();
            const bool back = d & 1;
            const int add = (d >> 1) * 4;
            Edge& edge = edges[e];
            int& cap = back ? edge.rev : edge.cap;
            if (cap > INT_MAX - add)
                break;
            GraphI::arc_id a = g.get_first_arc() + 2 * std::ptrdiff_t(e) + back;
            auto ad = gd.get_first_arc() + 2 * std::ptrdiff_t(e) + back;
            if (g.get_rcap(a) > INT_MAX - add)
                break;
            g.set_rcap(a, g.get_rcap(a) + add);
            gd.set_rcap(ad, gd.get_rcap(ad) + add);
            cap += add;
            g.mark_node(edge.i);
            g.mark_node(edge.j);
            gd.mark_node(edge.i);
            gd.mark_node(edge.j);
            break;
        }
        }
    }
    return 0;
}
