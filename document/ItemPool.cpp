#include "document/ItemPool.h"

#include <windows.h>

#include <cstdlib>
#include <new>

namespace {
// Block sizes are multiples of 16 up to 4 KB (an item's cells for 50 fields
// take 3,400 bytes); anything larger goes to the heap.
const size_t kGranule = 16;
const size_t kLargestPooled = 4096;
const size_t kClassCount = kLargestPooled / kGranule;
const size_t kChunkBytes = 64 * 1024;

struct FreeBlock {
    FreeBlock* next;
};

struct ItemPoolState {
    SRWLOCK lock = SRWLOCK_INIT;
    FreeBlock* freeLists[kClassCount + 1] = {};
} g_pool;

size_t ClassOf(size_t bytes) { return (bytes + kGranule - 1) / kGranule; }

// Carves a fresh chunk into blocks of one class; false when memory runs out.
bool Refill(size_t cls) {
    size_t blockBytes = cls * kGranule;
    char* chunk = static_cast<char*>(std::malloc(kChunkBytes));
    if (!chunk) return false;
    size_t count = kChunkBytes / blockBytes;
    for (size_t i = 0; i < count; ++i) {
        FreeBlock* block = reinterpret_cast<FreeBlock*>(chunk + i * blockBytes);
        block->next = g_pool.freeLists[cls];
        g_pool.freeLists[cls] = block;
    }
    return true;
}
}  // namespace

void* ItemPoolAllocate(size_t bytes) {
    if (bytes == 0) bytes = 1;
    if (bytes > kLargestPooled) {
        void* p = std::malloc(bytes);
        if (!p) throw std::bad_alloc();
        return p;
    }
    size_t cls = ClassOf(bytes);
    AcquireSRWLockExclusive(&g_pool.lock);
    if (!g_pool.freeLists[cls] && !Refill(cls)) {
        ReleaseSRWLockExclusive(&g_pool.lock);
        throw std::bad_alloc();
    }
    FreeBlock* block = g_pool.freeLists[cls];
    g_pool.freeLists[cls] = block->next;
    ReleaseSRWLockExclusive(&g_pool.lock);
    return block;
}

void ItemPoolFree(void* p, size_t bytes) noexcept {
    if (!p) return;
    if (bytes == 0) bytes = 1;
    if (bytes > kLargestPooled) {
        std::free(p);
        return;
    }
    size_t cls = ClassOf(bytes);
    FreeBlock* block = static_cast<FreeBlock*>(p);
    AcquireSRWLockExclusive(&g_pool.lock);
    block->next = g_pool.freeLists[cls];
    g_pool.freeLists[cls] = block;
    ReleaseSRWLockExclusive(&g_pool.lock);
}
