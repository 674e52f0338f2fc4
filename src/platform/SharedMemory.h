// A named block of memory that another process of the same user writes and this program reads (shm_open).
//
// Never mapped: whoever else has the block may cut it short at any moment, which only a read survives. Owned
// by one holder, who destroys it; the name stays in the system so that a second process finds the same block.
// Main thread.
#pragma once

#include <cstddef>
#include <memory>

namespace pixelgrove {

class SharedMemory {
  public:
    // Creates the block, or opens it when it is there already; its size becomes at least sizeBytes. A new
    // block is zero. Null when the system refuses the object, and for one that isn't this user's alone
    // (owner, and mode 0600): what stands in it could come from anybody.
    static std::unique_ptr<SharedMemory> CreateOrOpen(const char* name, size_t sizeBytes);
    // A block without a name, which nobody else finds. Null when the system refuses it.
    static std::unique_ptr<SharedMemory> CreatePrivate(size_t sizeBytes);

    ~SharedMemory();
    SharedMemory(const SharedMemory&) = delete;
    SharedMemory& operator=(const SharedMemory&) = delete;

    // The block's first bytes as they are now. False, with `to` undefined, when it has fewer.
    bool Read(void* to, size_t bytes) const;

  private:
    explicit SharedMemory(int descriptor) : descriptor_(descriptor) {}
    static std::unique_ptr<SharedMemory> Adopt(int descriptor, size_t sizeBytes);
    int descriptor_;
};

}  // namespace pixelgrove
