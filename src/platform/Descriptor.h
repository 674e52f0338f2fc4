// What the functions on files share: a descriptor that closes itself, and names as the system wants them.
//
// Any thread, one object by one thread at a time. For this folder alone.
#pragma once

#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QString>
#include <utility>

#include "platform/Files.h"

namespace pixelgrove {

class Descriptor {
  public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) close(value_);
    }
    Descriptor(Descriptor&& other) noexcept : value_(std::exchange(other.value_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(value_, other.value_);
        return *this;
    }
    int Get() const { return value_; }

    // Closes before the end, for writers: some file systems tell of a failed write only here. False with
    // errno.
    bool Close() { return close(std::exchange(value_, -1)) == 0; }

  private:
    int value_;
};

// Empty, which no call accepts, for a path that holds a NUL: the system would cut it there and act on another
// file.
inline QByteArray SystemName(const QString& path) {
    if (path.contains(QChar(0))) return QByteArray();
    return QFile::encodeName(NormalizePath(path));
}

}  // namespace pixelgrove
