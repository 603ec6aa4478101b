#include "graph.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace graph_detail {

void fatal(void (*error_function)(const char*), const char* message)
{
    if (error_function)
        error_function(message);
    std::exit(1);
}

} // namespace graph_detail

namespace {
// Asks the kernel to back the whole pages inside a record array with huge pages: a million-node
// grid touches tens of megabytes at random, and fewer page faults and TLB misses make both
// construction and the solve faster. Advice only; where it is not granted nothing changes.
void advise_huge_pages(void* block, size_t bytes)
{
#if defined(__linux__) && defined(MADV_HUGEPAGE)
    constexpr size_t huge = size_t(2) << 20;
    if (!block || bytes < huge)
        return;
    const size_t page = size_t(sysconf(_SC_PAGESIZE));
    const std::uintptr_t begin = (reinterpret_cast<std::uintptr_t>(block) + page - 1) / page * page;
    const std::uintptr_t end = (reinterpret_cast<std::uintptr_t>(block) + bytes) / page * page;
    if (end > begin)
        madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
#else
    (void)block;
    (void)bytes;
#endif
}

// Resizes a record array to `count` records. Returns the old address as a number when the
// block moved (the old block must not be touched after realloc, only its address compared and
// subtracted), 0 when it stayed.
template <class T>
std::uintptr_t resize_block(T*& block, ptrdiff_t count, void (*error_function)(const char*))
{
    const std::uintptr_t old = reinterpret_cast<std::uintptr_t>(block);
    auto* moved = static_cast<T*>(std::realloc(block, size_t(count) * sizeof(T)));
    if (!moved)
        graph_detail::fatal(error_function, "Not enough memory!");
    block = moved;
    advise_huge_pages(moved, size_t(count) * sizeof(T));
    return reinterpret_cast<std::uintptr_t>(moved) == old ? 0 : old;
}
} // namespace

template <typename captype, typename tcaptype, typename flowtype>
Graph<captype, tcaptype, flowtype>::Graph(int node_num_max, int edge_num_max, void (*err_function)(const char*))
    : error_function(err_function)
{
    if (node_num_max < 16)
        node_num_max = 16;
    if (edge_num_max < 16)
        edge_num_max = 16;
    nodes = static_cast<node*>(std::malloc(size_t(node_num_max) * sizeof(node)));
    arcs = static_cast<arc*>(std::malloc(2 * size_t(edge_num_max) * sizeof(arc)));
    if (!nodes || !arcs)
        graph_detail::fatal(error_function, "Not enough memory!");
    advise_huge_pages(nodes, size_t(node_num_max) * sizeof(node));
    advise_huge_pages(arcs, 2 * size_t(edge_num_max) * sizeof(arc));
    node_last = nodes;
    node_max = nodes + node_num_max;
    arc_last = arcs;
    arc_max = arcs + 2 * size_t(edge_num_max);
}

template <typename captype, typename tcaptype, typename flowtype>
Graph<captype, tcaptype, flowtype>::~Graph()
{
    std::free(nodes);
    std::free(arcs);
}

template <typename captype, typename tcaptype, typename flowtype>
typename Graph<captype, tcaptype, flowtype>::page_range Graph<captype, tcaptype, flowtype>::arc_pages(int edge_num) const
{
    arc* end = arc_last + 2 * std::ptrdiff_t(std::max(edge_num, 0));
    if (end > arc_max)
        end = arc_max;
    return {reinterpret_cast<std::uintptr_t>(arc_last), reinterpret_cast<std::uintptr_t>(end)};
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::page_range::prefault() const
{
#if defined(__linux__) && defined(MADV_POPULATE_WRITE)
    const std::uintptr_t page = std::uintptr_t(sysconf(_SC_PAGESIZE));
    const std::uintptr_t first = begin / page * page;
    if (end > first)
        madvise(reinterpret_cast<void*>(first), end - first, MADV_POPULATE_WRITE);
#endif
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::reset()
{
    node_last = nodes;
    arc_last = arcs;
    node_num = 0;
    nodeptr_block.reset();
    maxflow_iteration = 0;
    flow = 0;
    queue_first[0] = queue_last[0] = queue_first[1] = queue_last[1] = nullptr;
    orphan_first = orphan_last = nullptr;
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::reallocate_nodes(int num)
{
    const ptrdiff_t capacity = node_max - nodes;
    ptrdiff_t wanted = capacity + capacity / 2;
    if (wanted < ptrdiff_t(node_num) + num)
        wanted = ptrdiff_t(node_num) + num;
    const std::uintptr_t old = resize_block(nodes, wanted, error_function);
    node_last = nodes + node_num;
    node_max = nodes + wanted;
    if (!old)
        return;
    // Every link into the node array follows it: arc heads, and the queue links that a
    // tree-reusing call still relies on (marked nodes wait in the second queue).
    auto rebase = [&](node*& p) {
        if (p)
            p = nodes + (reinterpret_cast<std::uintptr_t>(p) - old) / sizeof(node);
    };
    for (arc* a = arcs; a < arc_last; ++a)
        rebase(a->head);
    for (node* i = nodes; i < node_last; ++i)
        rebase(i->next);
    for (int r = 0; r < 2; ++r) {
        rebase(queue_first[r]);
        rebase(queue_last[r]);
    }
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::reallocate_arcs()
{
    const ptrdiff_t capacity = arc_max - arcs;
    const ptrdiff_t used = arc_last - arcs;
    ptrdiff_t wanted = capacity + capacity / 2;
    if (wanted & 1)
        ++wanted;
    const std::uintptr_t old = resize_block(arcs, wanted, error_function);
    arc_last = arcs + used;
    arc_max = arcs + wanted;
    if (!old)
        return;
    // Tree parents are arcs too: rebasing them keeps trees valid for a later tree-reusing call.
    auto rebase = [&](arc*& p) {
        if (is_arc(p))
            p = arcs + (reinterpret_cast<std::uintptr_t>(p) - old) / sizeof(arc);
    };
    for (node* i = nodes; i < node_last; ++i) {
        rebase(i->first);
        rebase(i->parent);
    }
    for (arc* a = arcs; a < arc_last; ++a) {
        rebase(a->next);
        rebase(a->sister);
    }
}

// Active queues: nodes are taken from the first and appended to the second; a node that is
// last in its list points to itself, one in no list has next == nullptr.

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::set_active(node* i)
{
    if (!i->next) {
        if (queue_last[1])
            queue_last[1]->next = i;
        else
            queue_first[1] = i;
        queue_last[1] = i;
        i->next = i;
    }
}

template <typename captype, typename tcaptype, typename flowtype>
inline typename Graph<captype, tcaptype, flowtype>::node* Graph<captype, tcaptype, flowtype>::next_active()
{
    for (;;) {
        node* i = queue_first[0];
        if (!i) {
            queue_first[0] = i = queue_first[1];
            queue_last[0] = queue_last[1];
            queue_first[1] = nullptr;
            queue_last[1] = nullptr;
            if (!i)
                return nullptr;
        }
        if (i->next == i)
            queue_first[0] = queue_last[0] = nullptr;
        else
            queue_first[0] = i->next;
        i->next = nullptr;
        if (i->parent)
            return i;
    }
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::add_to_changed_list(node* i)
{
    if (changed_list && !i->is_in_changed_list) {
        node_id* id = changed_list->New(1);
        *id = node_id(i - nodes);
        i->is_in_changed_list = 1;
    }
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::set_orphan_front(node* i)
{
    i->parent = orphan();
    nodeptr* np = nodeptr_block->New();
    np->ptr = i;
    np->next = orphan_first;
    orphan_first = np;
}

template <typename captype, typename tcaptype, typename flowtype>
inline void Graph<captype, tcaptype, flowtype>::set_orphan_rear(node* i)
{
    i->parent = orphan();
    nodeptr* np = nodeptr_block->New();
    np->ptr = i;
    if (orphan_last)
        orphan_last->next = np;
    else
        orphan_first = np;
    orphan_last = np;
    np->next = nullptr;
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::maxflow_init()
{
    queue_first[0] = queue_last[0] = nullptr;
    queue_first[1] = queue_last[1] = nullptr;
    orphan_first = nullptr;
    TIME = 0;
    for (node* i = nodes; i < node_last; ++i) {
        i->next = nullptr;
        i->is_marked = 0;
        i->is_in_changed_list = 0;
        i->TS = TIME;
        if (i->tr_cap > 0) {
            i->is_sink = 0;
            i->parent = terminal();
            set_active(i);
            i->DIST = 1;
        } else if (i->tr_cap < 0) {
            i->is_sink = 1;
            i->parent = terminal();
            set_active(i);
            i->DIST = 1;
        } else {
            i->parent = nullptr;
        }
    }
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::maxflow_reuse_trees_init()
{
    node* queue = queue_first[1];
    queue_first[0] = queue_last[0] = nullptr;
    queue_first[1] = queue_last[1] = nullptr;
    orphan_first = orphan_last = nullptr;
    ++TIME;

    while (node* i = queue) {
        queue = i->next;
        if (queue == i)
            queue = nullptr;
        i->next = nullptr;
        i->is_marked = 0;
        set_active(i);

        if (i->tr_cap == 0) {
            if (i->parent)
                set_orphan_rear(i);
            continue;
        }
        if (i->tr_cap > 0) {
            if (!i->parent || i->is_sink) {
                i->is_sink = 0;
                for (arc* a = i->first; a; a = a->next) {
                    node* j = a->head;
                    if (!j->is_marked) {
                        if (j->parent == a->sister)
                            set_orphan_rear(j);
                        if (j->parent && j->is_sink && a->r_cap > 0)
                            set_active(j);
                    }
                }
                add_to_changed_list(i);
            }
        } else {
            if (!i->parent || !i->is_sink) {
                i->is_sink = 1;
                for (arc* a = i->first; a; a = a->next) {
                    node* j = a->head;
                    if (!j->is_marked) {
                        if (j->parent == a->sister)
                            set_orphan_rear(j);
                        if (j->parent && !j->is_sink && a->sister->r_cap > 0)
                            set_active(j);
                    }
                }
                add_to_changed_list(i);
            }
        }
        i->parent = terminal();
        i->TS = TIME;
        i->DIST = 1;
    }

    while (nodeptr* np = orphan_first) {
        orphan_first = np->next;
        node* i = np->ptr;
        nodeptr_block->Delete(np);
        if (!orphan_first)
            orphan_last = nullptr;
        if (i->is_sink)
            process_sink_orphan(i);
        else
            process_source_orphan(i);
    }
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::augment(arc* middle_arc)
{
    node* i;
    arc* a;

    // Bottleneck along source tree, middle arc and sink tree.
    tcaptype bottleneck = middle_arc->r_cap;
    for (i = middle_arc->sister->head;; i = a->head) {
        a = i->parent;
        if (a == terminal())
            break;
        if (bottleneck > a->sister->r_cap)
            bottleneck = a->sister->r_cap;
    }
    if (bottleneck > i->tr_cap)
        bottleneck = i->tr_cap;
    for (i = middle_arc->head;; i = a->head) {
        a = i->parent;
        if (a == terminal())
            break;
        if (bottleneck > a->r_cap)
            bottleneck = a->r_cap;
    }
    if (bottleneck > -i->tr_cap)
        bottleneck = -i->tr_cap;

    // Push it; nodes whose link to their tree saturates become orphans.
    middle_arc->sister->r_cap = graph_detail::add_residual(middle_arc->sister->r_cap, bottleneck);
    middle_arc->r_cap -= bottleneck;
    for (i = middle_arc->sister->head;; i = a->head) {
        a = i->parent;
        if (a == terminal())
            break;
        a->r_cap = graph_detail::add_residual(a->r_cap, bottleneck);
        a->sister->r_cap -= bottleneck;
        if (!a->sister->r_cap)
            set_orphan_front(i);
    }
    i->tr_cap -= bottleneck;
    if (!i->tr_cap)
        set_orphan_front(i);
    for (i = middle_arc->head;; i = a->head) {
        a = i->parent;
        if (a == terminal())
            break;
        a->sister->r_cap = graph_detail::add_residual(a->sister->r_cap, bottleneck);
        a->r_cap -= bottleneck;
        if (!a->r_cap)
            set_orphan_front(i);
    }
    i->tr_cap += bottleneck;
    if (!i->tr_cap)
        set_orphan_front(i);

    graph_detail::add_flow<flowtype>(flow, bottleneck);
}

// An orphan of the source tree (sink = false) or of the sink tree (sink = true): the two are
// mirror images, the source side looking at the residual of each arc's sister, the sink side
// at the arc's own.
template <typename captype, typename tcaptype, typename flowtype>
template <bool sink>
inline void Graph<captype, tcaptype, flowtype>::process_orphan(node* i)
{
    auto residual = [](const arc* a0) {
        if constexpr (sink)
            return a0->r_cap;
        else
            return a0->sister->r_cap;
    };
    arc* a0_min = nullptr;
    int d_min = INFINITE_D;

    // A new parent: the neighbour in the same tree closest to its terminal, found by walking
    // up with distances cached per TIME stamp.
    for (arc* a0 = i->first; a0; a0 = a0->next) {
        if (!residual(a0))
            continue;
        node* j = a0->head;
        if (bool(j->is_sink) != sink || !j->parent)
            continue;
        int d = 0;
        for (;;) {
            if (j->TS == TIME) {
                d += j->DIST;
                break;
            }
            arc* a = j->parent;
            ++d;
            if (a == terminal()) {
                j->TS = TIME;
                j->DIST = 1;
                break;
            }
            if (a == orphan()) {
                d = INFINITE_D;
                break;
            }
            j = a->head;
        }
        if (d < INFINITE_D) {
            if (d < d_min) {
                a0_min = a0;
                d_min = d;
            }
            for (j = a0->head; j->TS != TIME; j = j->parent->head) {
                j->TS = TIME;
                j->DIST = d--;
            }
        }
    }

    if ((i->parent = a0_min)) {
        i->TS = TIME;
        i->DIST = d_min + 1;
        return;
    }
    // None: i leaves the tree; its neighbours may grow into it again, its children are orphans.
    add_to_changed_list(i);
    for (arc* a0 = i->first; a0; a0 = a0->next) {
        node* j = a0->head;
        arc* a = j->parent;
        if (bool(j->is_sink) == sink && a) {
            if (residual(a0))
                set_active(j);
            if (is_arc(a) && a->head == i)
                set_orphan_rear(j);
        }
    }
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::process_source_orphan(node* i)
{
    process_orphan<false>(i);
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::process_sink_orphan(node* i)
{
    process_orphan<true>(i);
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::adopt_orphans()
{
    // Orphans of one augmentation are taken newest first, one at a time; those that processing
    // one of them creates (appended at the rear) are all handled before the next is taken.
    while (nodeptr* np = orphan_first) {
        nodeptr* rest = np->next;
        np->next = nullptr;
        while ((np = orphan_first)) {
            orphan_first = np->next;
            node* i = np->ptr;
            nodeptr_block->Delete(np);
            if (!orphan_first)
                orphan_last = nullptr;
            if (i->is_sink)
                process_sink_orphan(i);
            else
                process_source_orphan(i);
        }
        orphan_first = rest;
    }
}

template <typename captype, typename tcaptype, typename flowtype>
flowtype Graph<captype, tcaptype, flowtype>::maxflow(bool reuse_trees, Block<node_id>* _changed_list,
                                                     const std::atomic<bool>* cancel)
{
    if (!nodeptr_block)
        nodeptr_block = std::make_unique<DBlock<nodeptr>>(NODEPTR_BLOCK_SIZE, error_function);
    changed_list = _changed_list;
    if (maxflow_iteration == 0 && reuse_trees)
        graph_detail::fatal(error_function, "reuse_trees cannot be used in the first call to maxflow()!");
    if (changed_list && !reuse_trees)
        graph_detail::fatal(error_function, "changed_list cannot be used without reuse_trees!");

    if (reuse_trees)
        maxflow_reuse_trees_init();
    else
        maxflow_init();

    node* current_node = nullptr;
    // Looked at once per 4096 growth steps (each with the augmentation and adoption it may
    // lead to), not at every one: the loop is the engine's hot path.
    constexpr int cancel_interval = 4096;
    int until_cancel_check = cancel_interval;
    for (;;) {
        if (cancel && --until_cancel_check == 0) {
            until_cancel_check = cancel_interval;
            if (cancel->load(std::memory_order_relaxed))
                break;
        }
        node* i = current_node;
        if (i) {
            i->next = nullptr;
            if (!i->parent)
                i = nullptr;
        }
        if (!i && !(i = next_active()))
            break;

        // Growth: extend i's tree over its non-saturated arcs until it touches the other tree.
        arc* a = nullptr;
        if (!i->is_sink) {
            for (a = i->first; a; a = a->next) {
                if (!a->r_cap)
                    continue;
                node* j = a->head;
                if (!j->parent) {
                    j->is_sink = 0;
                    j->parent = a->sister;
                    j->TS = i->TS;
                    j->DIST = i->DIST + 1;
                    set_active(j);
                    add_to_changed_list(j);
                } else if (j->is_sink) {
                    break;
                } else if (j->TS <= i->TS && j->DIST > i->DIST) {
                    j->parent = a->sister;
                    j->TS = i->TS;
                    j->DIST = i->DIST + 1;
                }
            }
        } else {
            for (a = i->first; a; a = a->next) {
                if (!a->sister->r_cap)
                    continue;
                node* j = a->head;
                if (!j->parent) {
                    j->is_sink = 1;
                    j->parent = a->sister;
                    j->TS = i->TS;
                    j->DIST = i->DIST + 1;
                    set_active(j);
                    add_to_changed_list(j);
                } else if (!j->is_sink) {
                    a = a->sister;
                    break;
                } else if (j->TS <= i->TS && j->DIST > i->DIST) {
                    j->parent = a->sister;
                    j->TS = i->TS;
                    j->DIST = i->DIST + 1;
                }
            }
        }

        ++TIME;

        if (a) {
            i->next = i; // keeps adoption from queueing the node being scanned
            current_node = i;
            augment(a);
            adopt_orphans();
        } else {
            current_node = nullptr;
        }
    }

    if (!reuse_trees || (maxflow_iteration % 64) == 0) {
        nodeptr_block.reset();
    }
    ++maxflow_iteration;
    return flow;
}

template <typename captype, typename tcaptype, typename flowtype>
void Graph<captype, tcaptype, flowtype>::test_consistency(node* current_node)
{
    int num1 = 0, num2 = 0;
    for (node* i = nodes; i < node_last; ++i)
        if (i->next || i == current_node)
            ++num1;
    for (int r = 0; r < 3; ++r) {
        node* i = (r == 2) ? current_node : queue_first[r];
        if (!i)
            continue;
        for (;; i = i->next) {
            ++num2;
            if (i->next == i) {
                if (r < 2)
                    assert(i == queue_last[r]);
                else
                    assert(i == current_node);
                break;
            }
        }
    }
    assert(num1 == num2);

    for (node* i = nodes; i < node_last; ++i) {
        if (!i->parent) {
        } else if (i->parent == orphan()) {
        } else if (i->parent == terminal()) {
            if (!i->is_sink)
                assert(i->tr_cap > 0);
            else
                assert(i->tr_cap < 0);
        } else {
            if (!i->is_sink)
                assert(i->parent->sister->r_cap > 0);
            else
                assert(i->parent->r_cap > 0);
        }
        if (i->parent && !i->next) {
            if (!i->is_sink) {
                assert(i->tr_cap >= 0);
                for (arc* a = i->first; a; a = a->next)
                    if (a->r_cap > 0)
                        assert(a->head->parent && !a->head->is_sink);
            } else {
                assert(i->tr_cap <= 0);
                for (arc* a = i->first; a; a = a->next)
                    if (a->sister->r_cap > 0)
                        assert(a->head->parent && a->head->is_sink);
            }
        }
        if (is_arc(i->parent)) {
            assert(i->TS <= i->parent->head->TS);
            if (i->TS == i->parent->head->TS)
                assert(i->DIST > i->parent->head->DIST);
        }
    }
    (void)num1;
    (void)num2;
}

template class Graph<int, int, int>;
template class Graph<short, int, int>;
template class Graph<float, float, float>;
template class Graph<double, double, double>;
