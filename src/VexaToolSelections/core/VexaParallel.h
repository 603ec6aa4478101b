#pragma once

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

// An allocator whose resize leaves the new elements uninitialised, for buffers that are filled
// on several threads right after (zero-filling first would be one more pass on one core).
template <class T>
struct FilledLater : std::allocator<T> {
    template <class U>
    struct rebind {
        using other = FilledLater<U>;
    };
    FilledLater() = default;
    template <class U>
    FilledLater(const FilledLater<U>&) noexcept
    {
    }
    template <class U>
    void construct(U*) noexcept
    {
    }
    template <class U, class... Args>
    void construct(U* p, Args&&... args)
    {
        ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }
};

// How many contiguous ranges parallelRanges splits `count` items into: one per core, each of
// at least 64 items.
inline int parallelParts(int count)
{
    return std::max(1, std::min<int>(int(std::thread::hardware_concurrency()), count / 64));
}

// Runs body(part) for every part in [0, parts), each on its own thread (part 0 on the caller's).
template <class Body>
void eachPart(int parts, Body&& body)
{
    std::vector<std::thread> threads;
    for (int part = 1; part < parts; ++part)
        threads.emplace_back([&body, part] { body(part); });
    body(0);
    for (std::thread& t : threads)
        t.join();
}

// Runs body(part, first, last) over [0, count) split into parallelParts(count) contiguous
// ranges, part 0 first. Work on separate ranges must be independent, so the result never
// depends on the split.
template <class Body>
void parallelParts(int count, Body&& body)
{
    const int workers = parallelParts(count);
    const int chunk = (count + workers - 1) / workers;
    eachPart(workers, [&](int part) {
        const int first = std::min(count, part * chunk), last = std::min(count, first + chunk);
        if (part == 0 || first < last)
            body(part, first, last);
    });
}

// Runs body(first, last) over [0, count) split into contiguous ranges, one per core.
template <class Body>
void parallelRanges(int count, Body&& body)
{
    parallelParts(count, [&body](int, int first, int last) { body(first, last); });
}

// Runs body(i) for every i in [0, count), handing out chunks of `chunk` items to one thread per
// core as they finish: for work whose cost varies a lot from item to item. Items must be
// independent.
template <class Body>
void parallelItems(int count, int chunk, Body&& body)
{
    const int workers = std::max(1, std::min<int>(int(std::thread::hardware_concurrency()), count / chunk));
    std::atomic<int> next{0};
    auto work = [&] {
        for (;;) {
            const int first = next.fetch_add(chunk);
            if (first >= count)
                return;
            const int last = std::min(count, first + chunk);
            for (int i = first; i < last; ++i)
                body(i);
        }
    };
    std::vector<std::thread> threads;
    for (int w = 1; w < workers; ++w)
        threads.emplace_back(work);
    work();
    for (std::thread& t : threads)
        t.join();
}

// What parts worked out separately, one after another in part order.
template <class T>
std::vector<T> joined(std::vector<std::vector<T>>& parts)
{
    std::vector<T> all = std::move(parts[0]);
    for (size_t k = 1; k < parts.size(); ++k)
        all.insert(all.end(), parts[k].begin(), parts[k].end());
    return all;
}
