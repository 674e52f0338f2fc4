// A named block of memory that other processes may open too (shm_open, mmap).
//
// Owned by one holder, who destroys it; the name stays in the system so that a second process finds the
// same block. Main thread.
#pragma once

#include <cstddef>
#include <memory>

namespace pixelgrove {

class SharedMemory {
  public:
    // Creates the block, or opens it when it is there already; its size becomes at least sizeBytes. A new
    // block is zero. Null when the system refuses the object; a failed mapping gives an object whose
    // Data() is null.
    static std::unique_ptr<SharedMemory> CreateOrOpen(const char* name, size_t sizeBytes);

    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    void* Data() const { return data_; }
    size_t SizeBytes() const { return sizeBytes_; }

  private:
    SharedMemory(void* data, size_t sizeBytes) : data_(data), sizeBytes_(sizeBytes) {}
    void* data_;
    size_t sizeBytes_;
};

}  // namespace pixelgrove
