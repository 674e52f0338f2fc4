// What the functions on files share: a descriptor that closes itself, and names as the system wants them.
//
// Any thread. For this folder alone.
#pragma once

#include <unistd.h>

#include <QByteArray>
#include <QFile>
#include <QString>

#include "platform/Files.h"

namespace pixelgrove {

class Descriptor {
  public:
    explicit Descriptor(int value) : value_(value) {}
    ~Descriptor() {
        if (value_ >= 0) close(value_);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Get() const { return value_; }

    // Closes before the end, for writers: some file systems tell of a failed write only here. False with
    // errno.
    bool Close() {
        const int value = value_;
        value_ = -1;
        return close(value) == 0;
    }

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
