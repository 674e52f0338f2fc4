// How much memory this process has in use, for tests of what must not grow.
#pragma once

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <utility>

namespace pixelgrove::test {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kMemoryIsMeasurable = false;  // sanitizers keep freed memory back
#else
constexpr bool kMemoryIsMeasurable = true;
#endif

// The first two numbers that the system has of this process, in pages: address space and resident memory.
inline std::pair<long, long> MemoryPages() {
    long pages = 0;
    long resident = 0;
    if (std::FILE* file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%ld %ld", &pages, &resident) != 2) resident = 0;
        std::fclose(file);
    }
    return {pages, resident};
}

inline size_t AddressSpaceBytes() {
    return size_t(MemoryPages().first) * size_t(sysconf(_SC_PAGESIZE));
}

// Resident memory in MiB, after freed memory was handed back.
inline double ResidentMiB() {
    malloc_trim(0);
    return double(MemoryPages().second) * double(sysconf(_SC_PAGESIZE)) / (1 << 20);
}

}  // namespace pixelgrove::test
