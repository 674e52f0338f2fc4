#include "platform/FolderReader.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

namespace pixelgrove {

FolderReader::FolderReader(const QString& folder)
    : folder_(open(SystemName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {}

// By the end of the file, not by the size that the system has of it, which would be a call more for each.
bool FolderReader::Fill(int file, size_t maxBytes, size_t& length) {
    constexpr size_t kFirstBytes = 1 << 16;
    for (length = 0; length <= maxBytes;) {
        if (length == buffer_.size()) {
            const size_t wanted = std::max(kFirstBytes, 2 * length);
            buffer_.resize(std::min(wanted, maxBytes + 1));
        }
        const ssize_t got = read(file, buffer_.data() + length, buffer_.size() - length);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return got == 0;
        length += size_t(got);
    }
    return false;
}

std::optional<QByteArrayView> FolderReader::Read(const char* name, size_t maxBytes) {
    // Without waiting, should a pipe have taken the file's place.
    const Descriptor file(openat(folder_.Get(), name, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (file.Get() < 0) return std::nullopt;
    try {
        size_t length = 0;
        if (!Fill(file.Get(), maxBytes, length)) return std::nullopt;
        return QByteArrayView(buffer_.data(), qsizetype(length));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

}  // namespace pixelgrove
