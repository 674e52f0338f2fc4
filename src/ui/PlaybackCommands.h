// The commands of playback and of the picture: play, pause and stop, what the run reports, the picture's
// format and samples, the display, the palette. Main thread.
#pragma once

namespace pixelgrove {

class ChannelPanel;
class CommandRegistry;
class Playback;
struct AppState;

// All of them outlive the registry.
void RegisterPlaybackCommands(CommandRegistry& commands, Playback& playback);
void RegisterPictureCommands(CommandRegistry& commands, AppState& app, ChannelPanel& channels);

}  // namespace pixelgrove
