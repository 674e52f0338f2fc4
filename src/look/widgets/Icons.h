// The pictures on the playback buttons, drawn at whatever size and scale is asked for. Main thread.
#pragma once

#include <QIcon>

namespace pixelgrove {

enum class PlaybackIcon { Start, Play, Stop, Record, Pause };

QIcon MakePlaybackIcon(PlaybackIcon kind);

}  // namespace pixelgrove
