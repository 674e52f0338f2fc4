#include <fcntl.h>
#include <linux/falloc.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <optional>

#include "platform/Descriptor.h"
#include "platform/Files.h"
#include "platform/Random.h"

namespace pixelgrove {

namespace {

// Errors are errno values here, 0 where all went well.

QByteArray FolderOf(const QByteArray& name) {
    return name.left(name.lastIndexOf('/') + 1);
}

// What a write to this name has to replace: links in its last part followed, also to a file that isn't there
// yet. Empty for links that go round in circles.
QByteArray FollowLinks(QByteArray name) {
    constexpr int kMaxLinks = 40;
    std::array<char, PATH_MAX> text{};
    for (int i = 0; i < kMaxLinks; ++i) {
        const ssize_t length = readlink(name.constData(), text.data(), text.size());
        if (length < 0) return name;
        const QByteArray target(text.data(), qsizetype(length));
        name = target.startsWith('/') ? target : FolderOf(name) + target;
    }
    return QByteArray();
}

int WriteAll(int file, QByteArrayView bytes) {
    while (!bytes.isEmpty()) {
        const ssize_t written = write(file, bytes.data(), size_t(bytes.size()));
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return errno;
        if (written == 0) return ENOSPC;
        bytes = bytes.sliced(qsizetype(written));
    }
    return 0;
}

int Flush(int file, Durability durability) {
    if (durability == Durability::System || fsync(file) == 0) return 0;
    // Some file systems know no such thing.
    return errno == EINVAL || errno == ENOSYS || errno == EOPNOTSUPP ? 0 : errno;
}

// The new file takes after the old one. Where the system doesn't allow it the new file stays this user's.
void TakeAfter(int file, const struct stat& old) {
    if (fchown(file, old.st_uid, old.st_gid) != 0 && fchown(file, uid_t(-1), old.st_gid) != 0) errno = 0;
    fchmod(file, old.st_mode & 07777);
}

int FillNewFile(int descriptor, QByteArrayView bytes, const struct stat* old, Durability durability) {
    Descriptor file(descriptor);
    if (old) TakeAfter(file.Get(), *old);
    if (const int error = WriteAll(file.Get(), bytes)) return error;
    if (const int error = Flush(file.Get(), durability)) return error;
    // After an interruption the descriptor is closed all the same.
    return file.Close() || errno == EINTR ? 0 : errno;
}

int WriteBeside(const QByteArray& target, QByteArrayView bytes, const struct stat* old,
                Durability durability) {
    const mode_t mode = old ? old->st_mode & 0777 : 0666;
    QByteArray name;
    int file = -1;
    for (int tries = 0; tries < 100 && file < 0; ++tries) {
        std::array<char, 32> last{};
        std::snprintf(last.data(), last.size(), ".pixelgrove-%08x", SystemRandom32());
        name = FolderOf(target) + last.data();
        file = open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (file < 0 && errno != EEXIST) break;
    }
    if (file < 0) return errno;
    int error = FillNewFile(file, bytes, old, durability);
    if (error == 0 && rename(name.constData(), target.constData()) != 0) error = errno;
    if (error != 0) unlink(name.constData());
    return error;
}

// Overwrites from the start, and cuts off what is left of a longer content only then.
int Overwrite(int file, QByteArrayView bytes, Durability durability) {
    if (lseek(file, 0, SEEK_SET) != 0) return errno;
    if (const int error = WriteAll(file, bytes)) return error;
    if (ftruncate(file, off_t(bytes.size())) != 0) return errno;
    return Flush(file, durability);
}

std::optional<QByteArray> ContentOf(const QByteArray& name) {
    QFile file(QFile::decodeName(name));
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    QByteArray bytes = file.readAll();
    if (bytes.size() != file.size()) return std::nullopt;
    return bytes;
}

int WriteInPlace(const QByteArray& target, QByteArrayView bytes, Durability durability) {
    const std::optional<QByteArray> old = ContentOf(target);
    Descriptor file(open(target.constData(), O_WRONLY | O_CLOEXEC));
    if (file.Get() < 0) return errno;
    // The room is taken first, so that a full disk shows while the file is still as it was.
    if (fallocate(file.Get(), FALLOC_FL_KEEP_SIZE, 0, off_t(bytes.size())) != 0 && errno != EOPNOTSUPP &&
        errno != ENOSYS && errno != EINVAL && errno != EINTR)
        return errno;
    int error = Overwrite(file.Get(), bytes, durability);
    // Without a look at the result: the first failure is the one to tell, and nothing more can be done.
    if (error != 0 && old) Overwrite(file.Get(), *old, durability);
    if (error == 0 && !file.Close() && errno != EINTR) error = errno;
    return error;
}

// True for failures by which a folder, or what stands between a file and its folder, refuses a new file
// there, as against a failure of the disk.
bool IsRefusalOfFolder(int error) {
    return error == EACCES || error == EPERM || error == EROFS || error == EBUSY || error == EXDEV;
}

int ReplaceFile(const QString& path, QByteArrayView bytes, Durability durability) {
    const QByteArray target = FollowLinks(SystemName(path));
    if (target.isEmpty()) return path.isEmpty() || path.contains(QChar(0)) ? EINVAL : ELOOP;
    struct stat old {};
    if (stat(target.constData(), &old) != 0)
        return errno == ENOENT ? WriteBeside(target, bytes, nullptr, durability) : errno;
    if (!S_ISREG(old.st_mode)) return S_ISDIR(old.st_mode) ? EISDIR : EINVAL;
    // A write protection holds, though the folder would let the file be replaced.
    if (faccessat(AT_FDCWD, target.constData(), W_OK, AT_EACCESS) != 0) return errno;
    const int error = WriteBeside(target, bytes, &old, durability);
    return IsRefusalOfFolder(error) ? WriteInPlace(target, bytes, durability) : error;
}

}  // namespace

bool WriteWholeFile(const QString& path, QByteArrayView bytes, QString* reason, Durability durability) {
    const int error = ReplaceFile(path, bytes, durability);
    if (error != 0 && reason) *reason = qt_error_string(error);
    return error == 0;
}

}  // namespace pixelgrove
