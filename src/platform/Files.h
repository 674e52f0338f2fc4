// Files and folders. Paths come from templates and project files in either slash form; every function
// here turns backslashes into '/' before it touches the disk.
//
// Any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

namespace pixelgrove {

// '\' becomes '/'. Nothing else changes.
QString NormalizePath(const QString& path);

// True for an existing regular file (links followed); false for folders, devices, and empty paths.
bool IsPlainFile(const QString& path);
bool IsFolder(const QString& path);

// The whole file, or nothing when it is no plain file, can't be read, or is larger than maxBytes.
// The default bound keeps a mistaken choice of file from filling memory.
std::optional<QByteArray> ReadWholeFile(const QString& path, qint64 maxBytes = qint64(1) << 30);

// Writes beside the target and renames, so that readers see the old or the new file and a full disk
// leaves the old one. False on any failure.
bool WriteWholeFile(const QString& path, QByteArrayView bytes);

// Makes the folder when it doesn't exist (one level; parents must exist). False when it isn't there after.
bool MakeFolder(const QString& path);

// MakeFolder, then asks the file system to compress what will be stored in it (FS_IOC_SETFLAGS with
// FS_COMPR_FL). File systems without compression refuse, which is ignored.
bool MakeCompressedFolder(const QString& path);

}  // namespace pixelgrove
