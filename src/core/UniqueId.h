// Process-wide unique identifiers. Any thread.
#pragma once

#include <cstdint>

namespace pixelgrove {

// Never 0, never the same twice.
uint64_t NextUniqueId();
// A second counter of the same kind, for stage buttons and channel previews.
uint64_t NextSubclassId();

// Drawn once at start-up (Startup.h): the refresh timer of playback, and the second timer.
extern uint64_t playTimer;
extern uint64_t secondTimer;

}  // namespace pixelgrove
