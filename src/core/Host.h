// Host: how logic reports upward without knowing the windows above it.
//
// The main window implements it and registers itself in AppState::host; tests register a recording double.
// Each function says which thread may call it.
#pragma once

#include <QString>
#include <cstdint>

namespace pixelgrove {

struct StageDocument;

class Host {
  public:
    virtual ~Host() = default;

    // Queues a command for the main window. Any thread; returns at once.
    virtual void PostCommand(int commandId, intptr_t data) = 0;
    // Drops commands of this id that were posted and not yet handled. Main thread.
    virtual void CancelPostedCommand(int commandId) = 0;
    // Runs a command now. Main thread.
    virtual void SendCommand(int commandId, intptr_t data) = 0;
    // A short sound. Any thread.
    virtual void Beep() = 0;

    // The rest: main thread only.
    virtual void SetStatusText(const QString& text) = 0;     // the message pane
    virtual void ShowTitle(bool modified) = 0;               // from AppState::fileName
    virtual void LoadDocument(StageDocument& document) = 0;  // into the editor
    virtual void MarkErrorLines() = 0;                       // from the message pane's text
    virtual void RefreshStageTabs() = 0;                     // lay out and caption the stage buttons
    virtual void RefreshChannelPanel() = 0;
    virtual void RebuildControlTree() = 0;
};

// A host that does nothing, for programs without windows. Lives for the whole process.
Host& SilentHost();

}  // namespace pixelgrove
