#include "VexaMemory.h"

#include <QtGlobal>

#include <new>

VexaMemory* VexaMemory::getInstance()
{
    static VexaMemory pool;
    return &pool;
}

unsigned char* VexaMemory::alloc(int bytes)
{
    if (bytes < 0)
        return nullptr;
    std::unique_ptr<unsigned char[]> data(new (std::nothrow) unsigned char[size_t(bytes) + 1]);
    if (!data)
        return nullptr;
    unsigned char* p = data.get();
    std::lock_guard<std::mutex> lock(m_mutex);
    m_blocks.emplace(p, Block{std::move(data), size_t(bytes)});
    m_bytes += size_t(bytes);
    return p;
}

void VexaMemory::release(unsigned char* block)
{
    if (!block)
        return;
    std::lock_guard<std::mutex> lock(m_mutex);
    auto it = m_blocks.find(block);
    if (it == m_blocks.end()) {
        qWarning("VexaMemory: release of a block that was not allocated here");
        return;
    }
    m_bytes -= it->second.size;
    m_blocks.erase(it);
}

size_t VexaMemory::liveBlocks() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_blocks.size();
}

size_t VexaMemory::liveBytes() const
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_bytes;
}
