// The media that a project's channels name: where a name leads on this machine, and loading what is there.
//
// Names come from project files and the service and are not trusted. Main thread, or any single thread that
// owns the project; nothing here is global but the cache folder.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "core/ShaderProject.h"
#include "media/ImageFiles.h"

namespace pixelgrove {

// Larger volume files are not read.
constexpr qint64 kMaxVolumeFileBytes = qint64(1) << 30;

// Where the cache keeps the medium of this name: the Assets folder and what follows the last '/' of name.
// Empty without a cache folder and when that part is no safe file name (IsSafeFileName), so that no name
// leads out of the folder. The file need not exist.
QString MediumCachePath(const QString& name);

// The local file that a channel's name means, the first of these that is a plain file:
// - name itself, unless it is relative and there is a projectFolder: then name below projectFolder, name
// below
//   its folder "media", and name below the current folder (backslashes read as '/');
// - what follows the last '/' of name, in projectFolder and in its folder "media", under the rules of
//   MediumCachePath;
// - MediumCachePath.
// Empty when there is none; the optional reason then gets a clause for the user that says where it was
// sought.
QString ResolveMedium(const QString& name, const QString& projectFolder, QString* reason = nullptr);

// A volume file's bytes, header included. Null when it is no plain file, can't be read, exceeds
// kMaxVolumeFileBytes or maxBytes, is shorter than its header, does not begin with "BIN", or memory is short.
// The optional reason gets a clause for the user, as LoadImageFile's, when anything is wrong; also when the
// samples are not all there, which is no failure.
VolumeRef LoadVolumeFile(const QString& path, QString* reason = nullptr, qint64 maxBytes = kMaxMediaBytes);

// Brings the medium of this name to MediumCachePath(name) from somewhere else; blocks. Gives an empty text,
// or a clause for the user that says why it isn't there.
using FetchMedium = std::function<QString(const QString& name)>;

// Opens the media of all Texture, Cubemap and Volume channels of a project that was just read: faces or
// volumeData, sourceStage, channelResolution (x, y, z in pixels; 1 for the depth of pictures), and fileName
// becomes the local path where it fits. What no folder holds is asked of fetch, if there is one, once for
// each name. A medium that isn't found, can't be read or would take all of them beyond maxBytes leaves its
// channel with its kind, no data and a mediaProblem. Channels with the same medium share its pixels, however
// they spell its path.
//
// Returns a sentence for each channel whose medium can't be used.
QStringList PrepareProjectChannels(ShaderProject& project, const QString& projectFolder,
                                   const FetchMedium& fetch = {}, qint64 maxBytes = kMaxMediaBytes);

}  // namespace pixelgrove
