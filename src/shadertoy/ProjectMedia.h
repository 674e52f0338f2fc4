// The media that a project's channels name: where a name leads on this machine, and loading what is there.
//
// Names come from project files and the service and are not trusted. Main thread, or any single thread that
// owns the project; nothing here is global but the cache folder.
#pragma once

#include <QString>

#include "core/ShaderProject.h"

namespace pixelgrove {

// Larger volume files are not read.
constexpr qint64 kMaxVolumeFileBytes = qint64(1) << 30;

// Where the cache keeps the medium of this name: the Assets folder and what follows the last '/' of name.
// Empty without a cache folder and when that part is empty, begins with a dot, or holds a backslash or a
// control character, so that no name leads out of the folder. The file need not exist.
QString MediumCachePath(const QString& name);

// The local file that a channel's name means: name itself if it is a plain file (backslashes read as '/');
// else the file at that place below projectFolder, for a relative name and a folder that isn't empty; else
// MediumCachePath. Empty when none of them is a plain file.
QString ResolveMedium(const QString& name, const QString& projectFolder);

// A volume file's bytes, header included. Null when it is no plain file, can't be read, exceeds
// kMaxVolumeFileBytes, is shorter than its header, does not begin with "BIN", or memory is short.
// That its samples are all there is not checked: see IsVolumeComplete.
VolumeRef LoadVolumeFile(const QString& path);

// Opens the media of all Texture, Cubemap and Volume channels of a project that was just read: faces or
// volumeData, sourceStage, channelResolution (x, y, z in pixels; 1 for the depth of pictures), and fileName
// becomes the local path where it fits. A medium that isn't found or can't be read leaves its channel with
// its kind and no data. Channels with the same medium share its pixels.
void PrepareProjectChannels(ShaderProject& project, const QString& projectFolder);

}  // namespace pixelgrove
