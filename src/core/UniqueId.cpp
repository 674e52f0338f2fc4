#include "core/UniqueId.h"

#include <atomic>

namespace pixelgrove {

uint64_t playTimer = 0;
uint64_t secondTimer = 0;

namespace {

// Relaxed: only the number matters, it orders nothing else.
uint64_t NextOf(std::atomic<uint64_t>& counter) {
    uint64_t id = 0;
    do {
        id = counter.fetch_add(1, std::memory_order_relaxed) + 1;
    } while (id == 0);
    return id;
}

std::atomic<uint64_t> uniqueIds{0};
std::atomic<uint64_t> subclassIds{0};

}  // namespace

uint64_t NextUniqueId() {
    return NextOf(uniqueIds);
}

uint64_t NextSubclassId() {
    return NextOf(subclassIds);
}

}  // namespace pixelgrove
