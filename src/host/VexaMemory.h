#pragma once

#include <cstddef>
#include <memory>
#include <mutex>
#include <unordered_map>

// The host's pool for large temporary buffers. Every block is tracked until it is released,
// so leaks show up in liveBlocks().
class VexaMemory
{
public:
    static VexaMemory* getInstance();

    // A block of `bytes` bytes (uninitialised), or null for a negative size or exhausted memory.
    unsigned char* alloc(int bytes);
    // Gives a block back; a pointer that did not come from alloc is ignored with a warning.
    void release(unsigned char* block);

    size_t liveBlocks() const;
    size_t liveBytes() const;

private:
    VexaMemory() = default;
    struct Block {
        std::unique_ptr<unsigned char[]> data;
        size_t size;
    };
    mutable std::mutex m_mutex;
    std::unordered_map<unsigned char*, Block> m_blocks;
    size_t m_bytes = 0;
};
