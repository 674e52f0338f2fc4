#include "platform/SharedMemory.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <new>

namespace pixelgrove {

std::unique_ptr<SharedMemory> SharedMemory::CreateOrOpen(const char* name, size_t sizeBytes) {
    const int descriptor = shm_open(name, O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    if (descriptor < 0) return nullptr;
    struct stat info {};
    bool sized = fstat(descriptor, &info) == 0;
    // Only ever grown: another process may have mapped all of a larger block.
    if (sized && info.st_size < off_t(sizeBytes)) sized = ftruncate(descriptor, off_t(sizeBytes)) == 0;
    if (!sized) {
        close(descriptor);
        return nullptr;
    }
    void* data = mmap(nullptr, sizeBytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    close(descriptor);  // the mapping holds the block
    if (data == MAP_FAILED) data = nullptr;
    std::unique_ptr<SharedMemory> memory(new (std::nothrow) SharedMemory(data, sizeBytes));
    if (!memory && data) munmap(data, sizeBytes);
    return memory;
}

SharedMemory::~SharedMemory() {
    if (data_) munmap(data_, sizeBytes_);
}

}  // namespace pixelgrove
