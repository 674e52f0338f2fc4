#include "platform/Files.h"

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "platform/Descriptor.h"

namespace pixelgrove {

namespace {

// The mode word of what stands there, or 0.
mode_t ModeOf(const QString& path) {
    struct stat info {};
    return stat(SystemName(path).constData(), &info) == 0 ? info.st_mode : 0;
}

// Reads to the end. Gives 0 or an errno value, EFBIG when more than maxBytes come.
int ReadToEnd(int descriptor, qint64 maxBytes, qint64 expectedBytes, QByteArray& bytes) {
    // Files of the kernel report no size, and a file may grow while it is read: the size is only a hint.
    constexpr qint64 kStep = 1 << 16;
    bytes.resize(expectedBytes + 1);
    qint64 length = 0;
    for (;;) {
        if (length == bytes.size()) bytes.resize(length + kStep);
        const ssize_t got = read(descriptor, bytes.data() + length, size_t(bytes.size() - length));
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return errno;
        if (got == 0) break;
        length += got;
        if (length > maxBytes) return EFBIG;
    }
    bytes.resize(length);
    return 0;
}

int ReadFile(const QByteArray& name, qint64 maxBytes, QByteArray& bytes) {
    // Without waiting: a pipe is opened only to be refused.
    const Descriptor file(open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat info {};
    if (file.Get() < 0 || fstat(file.Get(), &info) != 0) return errno;
    if (!S_ISREG(info.st_mode)) return S_ISDIR(info.st_mode) ? EISDIR : EINVAL;
    if (info.st_size > maxBytes) return EFBIG;
    try {
        return ReadToEnd(file.Get(), maxBytes, info.st_size, bytes);
    } catch (const std::bad_alloc&) {
        return ENOMEM;
    }
}

}  // namespace

QString NormalizePath(const QString& path) {
    QString result = path;
    return result.replace(u'\\', u'/');
}

bool IsSafeFileName(QStringView name) {
    constexpr qsizetype kMaxNameBytes = 254;
    if (name.isEmpty() || name.startsWith(u'.') || name.toUtf8().size() > kMaxNameBytes) return false;
    return std::none_of(name.begin(), name.end(), [](QChar unit) {
        return unit == u'/' || unit == u'\\' || unit.category() == QChar::Other_Control;
    });
}

bool IsPlainFile(const QString& path) {
    return S_ISREG(ModeOf(path));
}

bool IsFolder(const QString& path) {
    return S_ISDIR(ModeOf(path));
}

std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 maxBytes, ReadFailure* failure) {
    QByteArray bytes;
    const int error = ReadFile(SystemName(path), maxBytes, bytes);
    if (error == 0) return bytes;
    if (failure) *failure = {error == ENOENT || error == ENOTDIR, qt_error_string(error)};
    return std::nullopt;
}

bool MakeFolder(const QString& path) {
    mkdir(SystemName(path).constData(), 0777);
    return IsFolder(path);
}

bool MakeCompressedFolder(const QString& path) {
    if (!MakeFolder(path)) return false;
    const Descriptor folder(open(SystemName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    int flags = 0;
    if (folder.Get() >= 0 && ioctl(folder.Get(), FS_IOC_GETFLAGS, &flags) == 0) {
        flags |= FS_COMPR_FL;
        ioctl(folder.Get(), FS_IOC_SETFLAGS, &flags);
    }
    return true;
}

}  // namespace pixelgrove
