#pragma once

// Maximum flow / minimum s-t cut by augmenting paths over two search trees (one grown from the
// source, one from the sink) that are repaired, not rebuilt, after each augmentation, and that
// can be reused by a later call when only a few capacities changed.
//
// Nodes and arcs are records in two contiguous arrays addressed by pointer; an edge is a pair of
// adjacent arcs. Preconditions are assertions whose expression text is the message; exhausted
// memory and misuse of tree reuse call the optional error function and end the process with
// status 1, since a half-built graph cannot be recovered.

#include <atomic>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <memory>
#include <type_traits>

namespace graph_detail {
// Adds to the total flow. Integral totals wrap instead of overflowing: callers that keep
// adding hard terminal weights run after run (quick select) push an int total past its range,
// and its value is then meaningless but must not be undefined behaviour.
template <class T, class A>
inline void add_flow(T& total, A amount)
{
    if constexpr (std::is_integral_v<T>)
        total = T(std::make_unsigned_t<T>(total) + std::make_unsigned_t<T>(amount));
    else
        total += amount;
}

// Terminal capacities are summed in a type that holds the sum of two and their difference.
template <class T>
using wide_t = std::conditional_t<std::is_integral_v<T>, std::int64_t, T>;

// A net terminal capacity beyond the type's range is kept at the largest magnitude of its
// sign: the node stays tied to its terminal, as good as forever. The range is symmetric so
// that the solver may negate any stored value.
template <class T>
inline T saturate(wide_t<T> v)
{
    if constexpr (std::is_integral_v<T>) {
        static_assert(sizeof(T) < sizeof(std::int64_t), "terminal capacities are summed in 64 bits");
        constexpr wide_t<T> top = std::numeric_limits<T>::max();
        return T(v > top ? top : v < -top ? -top : v);
    } else {
        return v;
    }
}

// Adds pushed flow to a residual capacity. A capacity given as the type's largest value (an
// edge nobody may cut) would pass the range as soon as flow comes back along it; it stays at
// the largest value instead, which no flow of the type can use up either. Below the top the
// sum is the exact one, so no cut that fits in the type changes.
template <class C, class A>
inline C add_residual(C cap, A amount)
{
    if constexpr (std::is_integral_v<C>) {
        constexpr std::int64_t top = std::numeric_limits<C>::max();
        const std::int64_t sum = std::int64_t(cap) + std::int64_t(amount);
        return C(sum > top ? top : sum);
    } else {
        return C(cap + amount);
    }
}

// Reports a fatal error through `error_function` (when set) and exits with status 1.
[[noreturn]] void fatal(void (*error_function)(const char*), const char* message);
} // namespace graph_detail

// Storage handing out consecutive items that are never freed one by one. The changed list of
// the solver is a Block<int> of node ids.
template <class Type>
class Block
{
public:
    Block(int size, void (*err_function)(const char*) = nullptr)
        : block_size(size)
        , error_function(err_function)
    {
    }
    ~Block()
    {
        while (first) {
            block* next = first->next;
            std::free(first);
            first = next;
        }
    }
    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    // `num` consecutive items (num <= block size).
    Type* New(int num = 1)
    {
        if (!last || last->current + num > last->last) {
            if (last && last->next) {
                last = last->next;
            } else {
                auto* next = static_cast<block*>(std::malloc(sizeof(block) + size_t(block_size) * sizeof(Type)));
                if (!next)
                    graph_detail::fatal(error_function, "Not enough memory!");
                if (last)
                    last->next = next;
                else
                    first = next;
                last = next;
                last->current = items(last);
                last->last = last->current + block_size;
                last->next = nullptr;
            }
        }
        Type* t = last->current;
        last->current += num;
        return t;
    }

    // Visits the stored items in the order they were handed out.
    template <class F>
    void for_each(F&& visit) const
    {
        for (block* b = first; b; b = b->next) {
            for (Type* t = items(b); t < b->current; ++t)
                visit(*t);
            if (b == last)
                break;
        }
    }
    bool empty() const { return !first || (first == last && first->current == items(first)); }
    // Empties the storage and keeps its blocks for reuse.
    void reset()
    {
        for (block* b = first; b; b = b->next)
            b->current = items(b);
        last = first;
    }

private:
    struct block {
        Type* current;
        Type* last;
        block* next;
    };
    static Type* items(block* b) { return reinterpret_cast<Type*>(b + 1); }

    int block_size;
    block* first = nullptr;
    block* last = nullptr;
    void (*error_function)(const char*);
};

// Storage of single items with a free list, so items can be given back and reused.
template <class Type>
class DBlock
{
public:
    DBlock(int size, void (*err_function)(const char*) = nullptr)
        : block_size(size)
        , error_function(err_function)
    {
    }
    ~DBlock()
    {
        while (first) {
            block* next = first->next;
            std::free(first);
            first = next;
        }
    }
    DBlock(const DBlock&) = delete;
    DBlock& operator=(const DBlock&) = delete;

    Type* New()
    {
        if (!first_free) {
            auto* next = static_cast<block*>(std::malloc(sizeof(block) + size_t(block_size) * sizeof(item)));
            if (!next)
                graph_detail::fatal(error_function, "Not enough memory!");
            item* data = items(next);
            first_free = data;
            for (item* i = data; i < data + block_size - 1; ++i)
                i->next_free = i + 1;
            data[block_size - 1].next_free = nullptr;
            next->next = first;
            first = next;
        }
        item* taken = first_free;
        first_free = taken->next_free;
        return reinterpret_cast<Type*>(taken);
    }
    void Delete(Type* t)
    {
        auto* i = reinterpret_cast<item*>(t);
        i->next_free = first_free;
        first_free = i;
    }

private:
    union item {
        Type t;
        item* next_free;
    };
    struct block {
        block* next;
    };
    static item* items(block* b) { return reinterpret_cast<item*>(b + 1); }

    int block_size;
    block* first = nullptr;
    item* first_free = nullptr;
    void (*error_function)(const char*);
};

template <typename captype, typename tcaptype, typename flowtype>
class Graph
{
public:
    typedef enum { SOURCE = 0, SINK = 1 } termtype;
    typedef int node_id;

    struct node;
    struct arc;
    typedef arc* arc_id;

    // Room for max(node_num_max, 16) nodes and max(edge_num_max, 16) edges; both grow on demand.
    Graph(int node_num_max, int edge_num_max, void (*err_function)(const char*) = nullptr);
    ~Graph();
    Graph(const Graph&) = delete;
    Graph& operator=(const Graph&) = delete;

    // Adds `num` nodes and returns the id of the first.
    node_id add_node(int num = 1);
    // Adds an edge i -> j of capacity `cap` and its reverse j -> i of capacity `rev_cap`.
    void add_edge(node_id _i, node_id _j, captype cap, captype rev_cap);
    // Adds terminal capacities; only their difference is stored, the common part counts as flow.
    void add_tweights(node_id i, tcaptype cap_source, tcaptype cap_sink);

    // Many edges at once, ending in exactly the records that add_edge(i[k], j[k], ...) for
    // k = 0 .. count-1 in turn would leave, but written by several threads. begin_edges
    // reserves the records. fill writes every new arc that leaves a node of [first_node,
    // last_node), in edge order, with caps(k) giving edge k's pair {cap, rev_cap}; ranges that do
    // not overlap may be filled at the same time, since an arc and its tail's list belong to
    // the tail's range alone. Once fill has covered every node exactly once, finish ends the
    // batch. In between nothing else may use the graph.
    class edge_batch
    {
    public:
        template <class Caps>
        void fill(node_id first_node, node_id last_node, Caps&& caps) const;
        void finish();

    private:
        friend class Graph;
        Graph* g = nullptr;
        arc* base = nullptr;
        const node_id* tails = nullptr;
        const node_id* heads = nullptr;
        int count = 0;
    };
    edge_batch begin_edges(const node_id* i, const node_id* j, int count);

    // With `cancel`, the search looks at the flag every few thousand growth steps and returns
    // once it is set. The flow found until then is a valid flow but not a maximum one, and the
    // trees are left half-grown: the graph must be rebuilt before it is cut again (a later call
    // with tree reuse is then wrong). Unset, the flag changes nothing: the same flow, the same cut.
    flowtype maxflow(bool reuse_trees = false, Block<node_id>* _changed_list = nullptr,
                     const std::atomic<bool>* cancel = nullptr);
    // The side of the cut node i lies on; a node in neither tree gets `default_segm`.
    termtype what_segment(node_id i, termtype default_segm = SOURCE) const;

    void reset();

    // Pages of memory that fresh records will occupy. prefault() asks the kernel to back them
    // now (the contents are not touched), so that filling them does not stop at every fresh
    // page; it may run on another thread while the records are written. Only a hint, and
    // nothing where unsupported.
    struct page_range {
        std::uintptr_t begin = 0, end = 0;
        void prefault() const;
    };
    // The arc records of the next `edge_num` edges (taken on the thread that adds them).
    page_range arc_pages(int edge_num) const;

    int get_node_num() const { return node_num; }
    int get_arc_num() const { return int(arc_last - arcs); }
    // Allocated room, in node and arc records.
    int get_node_capacity() const { return int(node_max - nodes); }
    int get_arc_capacity() const { return int(arc_max - arcs); }
    arc_id get_first_arc() { return arcs; }
    arc_id get_next_arc(arc_id a) { return a + 1; }
    void get_arc_ends(arc_id a, node_id& i, node_id& j);
    tcaptype get_trcap(node_id i);
    captype get_rcap(arc_id a);
    void set_trcap(node_id i, tcaptype trcap);
    void set_rcap(arc_id a, captype rcap);

    // Tree reuse: nodes whose terminal capacity or arcs changed must be marked before the next
    // maxflow(true, ...) call.
    void mark_node(node_id i);
    void remove_from_changed_list(node_id i);

    // Checks the search-tree invariants by assertion (a debugging aid).
    void test_consistency(node* current_node = nullptr);

    struct node {
        arc* first;
        arc* parent;
        node* next;
        int TS;
        int DIST;
        unsigned is_sink : 1;
        unsigned is_marked : 1;
        unsigned is_in_changed_list : 1;
        tcaptype tr_cap;
    };
    struct arc {
        node* head;
        arc* next;
        arc* sister;
        captype r_cap;
    };

private:
    struct nodeptr {
        node* ptr;
        nodeptr* next;
    };
    static constexpr int NODEPTR_BLOCK_SIZE = 128;
    static constexpr int INFINITE_D = 0x7fffffff;
    // The two reserved parent values.
    static arc* terminal() { return reinterpret_cast<arc*>(std::uintptr_t(1)); }
    static arc* orphan() { return reinterpret_cast<arc*>(std::uintptr_t(2)); }
    static bool is_arc(const arc* a) { return reinterpret_cast<std::uintptr_t>(a) > 2; }

    node* nodes;
    node* node_last;
    node* node_max;
    arc* arcs;
    arc* arc_last;
    arc* arc_max;
    int node_num = 0;
    std::unique_ptr<DBlock<nodeptr>> nodeptr_block; // orphan-list entries, kept between tree-reusing calls
    void (*error_function)(const char*);
    flowtype flow = 0;
    int maxflow_iteration = 0;
    Block<node_id>* changed_list = nullptr;
    node* queue_first[2] = {nullptr, nullptr};
    node* queue_last[2] = {nullptr, nullptr};
    nodeptr* orphan_first = nullptr;
    nodeptr* orphan_last = nullptr;
    int TIME = 0;

    void reallocate_nodes(int num);
    void reallocate_arcs();

    void set_active(node* i);
    node* next_active();
    void add_to_changed_list(node* i);
    void set_orphan_front(node* i);
    void set_orphan_rear(node* i);
    void maxflow_init();
    void maxflow_reuse_trees_init();
    void augment(arc* middle_arc);
    void process_source_orphan(node* i);
    void process_sink_orphan(node* i);
    template <bool sink>
    void process_orphan(node* i);
    void adopt_orphans();
};

// Inline operations: construction and accessors, with their preconditions.

template <typename captype, typename tcaptype, typename flowtype>
inline typename Graph<captype, tcaptype, flowtype>::node_id Graph<captype, tcaptype, flowtype>::add_node(int num)
{
    assert(num > 0);
    if (node_last + num > node_max)
        reallocate_nodes(num);
    node* added = node_last;
    // New records start fully cleared, so nodes added between tree-reusing calls carry no
    // stale tree links.
    for (node* i = added; i < added + num; ++i)
        *i = node{};
    const node_id first_id = node_num;
    node_num += num;
    node_last += num;
    return first_id;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::add_edge(node_id _i, node_id _j, captype cap, captype rev_cap)
{
    assert(_i >= 0 && _i < node_num);
    assert(_j >= 0 && _j < node_num);
    assert(_i != _j);
    assert(cap >= 0);
    assert(rev_cap >= 0);

    if (arc_last == arc_max)
        reallocate_arcs();

    arc* a = arc_last++;
    arc* a_rev = arc_last++;
    node* i = nodes + _i;
    node* j = nodes + _j;

    a->sister = a_rev;
    a_rev->sister = a;
    a->next = i->first;
    i->first = a;
    a_rev->next = j->first;
    j->first = a_rev;
    a->head = j;
    a_rev->head = i;
    a->r_cap = cap;
    a_rev->r_cap = rev_cap;
}

template <typename captype, typename tcaptype, typename flowtype>
typename Graph<captype, tcaptype, flowtype>::edge_batch
Graph<captype, tcaptype, flowtype>::begin_edges(const node_id* i, const node_id* j, int count)
{
    edge_batch batch;
    batch.g = this;
    batch.tails = i;
    batch.heads = j;
    batch.count = count > 0 ? count : 0;
    for (int k = 0; k < batch.count; ++k) {
        assert(i[k] >= 0 && i[k] < node_num);
        assert(j[k] >= 0 && j[k] < node_num);
        assert(i[k] != j[k]);
    }
    // The same growth steps as one edge at a time: the array grows by half until it has room.
    while (arc_max - arc_last < 2 * std::ptrdiff_t(batch.count))
        reallocate_arcs();
    batch.base = arc_last;
    return batch;
}

template <typename captype, typename tcaptype, typename flowtype>
template <class Caps>
inline void Graph<captype, tcaptype, flowtype>::edge_batch::fill(node_id first_node, node_id last_node, Caps&& caps) const
{
    // Edge k's forward arc leaves i[k] and its sister leaves j[k]. Pushing each at the front of
    // its tail's list in edge order leaves every list as add_edge would.
    node* const nodes = g->nodes;
    auto push = [nodes](arc* a, node_id tail, node_id head, arc* sister, captype cap) {
        node* t = nodes + tail;
        a->head = nodes + head;
        a->next = t->first;
        a->sister = sister;
        a->r_cap = cap;
        t->first = a;
    };
    for (int k = 0; k < count; ++k) {
        const node_id i = tails[k], j = heads[k];
        const bool forward = i >= first_node && i < last_node, back = j >= first_node && j < last_node;
        if (!forward && !back)
            continue;
        const auto [cap, rev_cap] = caps(k);
        assert(cap >= 0);
        assert(rev_cap >= 0);
        arc* a = base + 2 * std::ptrdiff_t(k);
        if (forward)
            push(a, i, j, a + 1, cap);
        if (back)
            push(a + 1, j, i, a, rev_cap);
    }
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::edge_batch::finish()
{
    g->arc_last = base + 2 * std::ptrdiff_t(count);
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::add_tweights(node_id i, tcaptype cap_source, tcaptype cap_sink)
{
    assert(i >= 0 && i < node_num);
    // Callers add hard weights run after run (quick select's 10^8 per marked region), so the
    // sums may pass the type's range: they are formed wide, the common part wraps into the
    // total flow like every other addition to it, and the net capacity saturates.
    using wide = graph_detail::wide_t<tcaptype>;
    wide source = cap_source, sink = cap_sink;
    const tcaptype delta = nodes[i].tr_cap;
    if (delta > 0)
        source += delta;
    else
        sink -= delta;
    graph_detail::add_flow(flow, (source < sink) ? source : sink);
    nodes[i].tr_cap = graph_detail::saturate<tcaptype>(source - sink);
}

template <typename captype, typename tcaptype, typename flowtype>
inline typename Graph<captype, tcaptype, flowtype>::termtype
Graph<captype, tcaptype, flowtype>::what_segment(node_id i, termtype default_segm) const
{
    if (nodes[i].parent)
        return nodes[i].is_sink ? SINK : SOURCE;
    return default_segm;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::mark_node(node_id _i)
{
    node* i = nodes + _i;
    if (!i->next) {
        // The second active queue holds exactly the marked nodes between calls.
        if (queue_last[1])
            queue_last[1]->next = i;
        else
            queue_first[1] = i;
        queue_last[1] = i;
        i->next = i;
    }
    i->is_marked = 1;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::remove_from_changed_list(node_id i)
{
    // The expression is the message: it keeps its exact spelling.
    assert(i>=0 && i<node_num && nodes[i].is_in_changed_list);
    nodes[i].is_in_changed_list = 0;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::get_arc_ends(arc_id a, node_id& i, node_id& j)
{
    assert(a >= arcs && a < arc_last);
    i = node_id(a->sister->head - nodes);
    j = node_id(a->head - nodes);
}

template <typename captype, typename tcaptype, typename flowtype>
inline tcaptype Graph<captype, tcaptype, flowtype>::get_trcap(node_id i)
{
    assert(i>=0 && i<node_num);
    return nodes[i].tr_cap;
}

template <typename captype, typename tcaptype, typename flowtype>
inline captype Graph<captype, tcaptype, flowtype>::get_rcap(arc_id a)
{
    assert(a >= arcs && a < arc_last);
    return a->r_cap;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::set_trcap(node_id i, tcaptype trcap)
{
    assert(i>=0 && i<node_num);
    nodes[i].tr_cap = trcap;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::set_rcap(arc_id a, captype rcap)
{
    assert(a >= arcs && a < arc_last);
    a->r_cap = rcap;
}

extern template class Graph<int, int, int>;
extern template class Graph<short, int, int>;
extern template class Graph<float, float, float>;
extern template class Graph<double, double, double>;
