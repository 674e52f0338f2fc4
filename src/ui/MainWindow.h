// MainWindow: what the user works in: editor, stage buttons, playback, messages, menus. The hub where every
// gesture becomes a command, the Host that the engine reports to, and the observer of the project.
//
// Registers itself as AppState::host and EditingForm::observer until it is destroyed, which must not be
// before the run has ended. Main thread, but for PostCommand, PostStatus and Beep.
#pragma once

#include <memory>

#include "commands/CommandRegistry.h"
#include "core/Host.h"
#include "project/ProjectObserver.h"
#include "ui/DiskReload.h"
#include "ui/LayoutCommands.h"
#include "ui/LiveControls.h"
#include "ui/Menus.h"
#include "ui/MessagePane.h"
#include "ui/MessagePlaces.h"
#include "ui/Playback.h"
#include "ui/PostedWork.h"
#include "ui/ProjectCommands.h"
#include "ui/ProjectDrops.h"
#include "ui/RecoveryKeeper.h"
#include "ui/WorkbenchSettings.h"
#include "ui/channels/ChannelPanel.h"
#include "ui/editor/FindReplace.h"
#include "windows/widgets/FrameWindow.h"
#include "windows/widgets/WindowTable.h"

namespace Ui {
class EditWindow;
}

namespace pixelgrove {

class OpenGlProbe;
struct AppState;
struct Player;

class MainWindow : public FrameWindow, public Host, public ProjectObserver {
    Q_OBJECT

  public:
    // The records outlive this object.
    MainWindow(AppState& app, Player& player, const WorkbenchSettings& settings);
    // Ends the run if there is one.
    ~MainWindow() override;

    // Loads the project file, the shader of that id, or a source file, by its ending .glsl, into the Image
    // stage of a new project. With an empty path, or when there is nothing to load, shows the default Image
    // stage. The message pane says what was wrong, and the result is false then.
    bool OpenInitialProject(const QString& path);

    // Shows the window where the layout has it, and the other windows that are to be open.
    void ShowWithLayout();

    // Keeps a recovery copy of unsaved changes in this folder from now on.
    void StartRecovery(const QString& folder) { recovery_.Start(folder); }
    // Asks about the copies of processes that died. True when one of them is shown now.
    bool OfferRecovery();
    // The program has to end without the user's wish: brings the recovery copy up to the project, and the
    // windows' rows to what is open.
    void SaveBeforeEnd();

    ProjectCommands& Projects() { return projects_; }
    LayoutCommands& Layouts() { return layouts_; }
    const Menus& MenuEntries() const { return *menus_; }
    // What the message pane says.
    QString StatusText() const { return pane_.Text(); }
    // As a double click on it does.
    void JumpToMessage(const CompileMessage& message) { places_.JumpTo(message); }

    // Below what the message pane says already. Nothing for an empty text.
    void AddStatusLine(const QString& text) { pane_.Add(text); }

    // Host
    void PostCommand(int commandId, intptr_t data) override;
    void CancelPostedCommand(int commandId) override;
    void PostStatus(const QString& text) override;
    void Beep() override;

    // Runs a command now.
    void SendCommand(int commandId);

    // ProjectObserver
    void SetStatusText(const QString& text) override { pane_.Say(text); }
    void ShowTitle(bool modified) override;
    void LoadDocument(StageDocument& document, StageSwitch how) override;
    void ShowMessages(const CompileMessages& messages, const QString& end) override;
    void RefreshStageTabs() override;
    void RefreshChannelPanel() override;
    void RebuildControlTree() override;

  protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool nativeEvent(const QByteArray& eventType, void* message, qintptr* result) override;

  private:
    static constexpr int kCmdBeep = -1;  // of this window alone: the sound that another thread asked for

    void ConnectControls();
    void ConnectEditor();
    void ConnectLoading();
    void RegisterCommands();
    void PopUpEditorMenu(const QPoint& globalPosition);
    void RefreshLayoutMenu();
    void RefreshCaretStatus();

    AppState& app_;
    Player& player_;
    const WorkbenchSettings settings_;
    std::unique_ptr<OpenGlProbe> probe_;  // while the form is made
    std::unique_ptr<Ui::EditWindow> form_;
    CommandRegistry commands_;
    std::unique_ptr<WindowTable> windows_ = std::make_unique<WindowTable>();
    MessagePane pane_;
    PostedWork posted_;
    Playback playback_;
    ProjectCommands projects_;
    ProjectDrops drops_;
    MessagePlaces places_;
    DiskReload reload_;
    RecoveryKeeper recovery_;
    ChannelPanel channelPanel_;
    LayoutCommands layouts_;
    FindReplace find_;
    LiveControls controls_;
    std::unique_ptr<Menus> menus_;
    bool closesLater_ = false;    // asked to while a load was under way
    bool pressedOnForm_ = false;  // the left button, not let go since
};

}  // namespace pixelgrove
