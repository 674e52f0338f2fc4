// Files and folders. Paths come from templates and project files in either slash form; every function
// here turns backslashes into '/' before it touches the disk.
//
// Any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>
#include <optional>

namespace pixelgrove {

// '\' becomes '/'. Nothing else changes.
QString NormalizePath(const QString& path);

// True when a name from outside can be that of a file and can't lead out of the folder that it is put behind:
// it is neither empty nor begins with a dot, holds no '/', backslash or control character, and is shorter
// than 255 bytes.
bool IsSafeFileName(QStringView name);

// True for an existing regular file (links followed); false for folders, devices, and empty paths.
bool IsPlainFile(const QString& path);
bool IsFolder(const QString& path);

struct ReadFailure {
    bool isMissing = false;  // nothing of that name is there, as against something that can't be read
    QString reason;          // the system's own words
};

// The whole file, or nothing when it is no plain file, can't be read, or is larger than maxBytes; failure
// then says why. The default bound keeps a mistaken choice of file from filling memory.
std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 maxBytes = qint64(1) << 30,
                                        ReadFailure* failure = nullptr);

// How far a written file has got when the call returns: onto the disk, so that it outlives a loss of power,
// or to the system, which is quick and enough for files that can be made again.
enum class Durability { Disk, System };

// The one way in which this program writes a file. The bytes go into a new file beside the target, which then
// takes the target's name: whoever reads sees the old file or the new one, and a failure, a full disk or a
// kill at any moment leaves the old one. The mode is kept, links stay links and the file that they lead to is
// replaced.
//
// A file that may be written in a folder that may not is written in place. What it held is put back when that
// fails; a kill at that moment is the one thing that can leave it half written.
//
// False on any failure; reason is then the system's own words for it, such as "No space left on device".
bool WriteWholeFile(const QString& path, QByteArrayView bytes, QString* reason = nullptr,
                    Durability durability = Durability::Disk);

// Makes the folder when it doesn't exist (one level; parents must exist). False when it isn't there after.
bool MakeFolder(const QString& path);

// MakeFolder, then asks the file system to compress what will be stored in it (FS_IOC_SETFLAGS with
// FS_COMPR_FL). File systems without compression refuse, which is ignored.
bool MakeCompressedFolder(const QString& path);

}  // namespace pixelgrove
