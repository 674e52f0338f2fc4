// ChannelDrop: a file that is dropped on a channel's picture becomes what the channel reads.
//
// Main thread.
#pragma once

#include <QString>

#include "core/Stages.h"

class QMimeData;

namespace pixelgrove {

// The one local file among what is being dropped, when by its name it is a picture or a volume; else empty.
QString DroppedMedium(const QMimeData& data);

// Gives the channel the picture or the volume in the file. A channel that reads a cube map gets the picture
// as one, where it is one. Empty when that was done. Else a clause for the user, as LoadImageFile's, and the
// channel is as it was.
QString UseDroppedMedium(const QString& path, ChannelInput& channel);

}  // namespace pixelgrove
