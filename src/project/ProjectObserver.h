// ProjectObserver: how the project model tells what is to be shown anew, without knowing the windows.
//
// The main window implements it and registers itself in EditingForm::observer; a program without windows has
// none. Main thread.
#pragma once

#include <QString>

#include "core/CompileMessage.h"

namespace pixelgrove {

struct StageDocument;
enum class StageSwitch;

class ProjectObserver {
  public:
    // Into the editor, in place of what it shows.
    virtual void LoadDocument(StageDocument& document, StageSwitch how) = 0;
    virtual void ShowTitle(bool modified) = 0;            // of EditingForm::fileName
    virtual void SetStatusText(const QString& text) = 0;  // the message pane
    // In the message pane, the last line ended by `end`; those that are about the shown stage become its
    // marks.
    virtual void ShowMessages(const CompileMessages& messages, const QString& end) = 0;
    virtual void RefreshStageTabs() = 0;  // which stages there are, and their colours
    virtual void RefreshChannelPanel() = 0;
    virtual void RebuildControlTree() = 0;

  protected:
    ~ProjectObserver() = default;
};

}  // namespace pixelgrove
