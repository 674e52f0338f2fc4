// Host: how the engine speaks up without knowing the windows above it.
//
// The main window implements it and registers itself in AppState::host; tests register a recording double.
// Each function says which thread may call it.
#pragma once

#include <QString>
#include <cstdint>

namespace pixelgrove {

class Host {
  public:
    virtual ~Host() = default;

    // Queues a command for the main window. Any thread; returns at once.
    virtual void PostCommand(int commandId, intptr_t data) = 0;
    // Drops commands of this id that were posted and not yet handled. Main thread.
    virtual void CancelPostedCommand(int commandId) = 0;
    // Shows a text in place of what the user was told last. Texts come in the order in which they are posted,
    // and in their place among the commands. Any thread; returns at once.
    virtual void PostStatus(const QString& text) = 0;
    // A short sound. Any thread.
    virtual void Beep() = 0;
};

// A host that does nothing, for programs without windows. Lives for the whole process.
Host& SilentHost();

}  // namespace pixelgrove
