#include "ui/MainWindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <utility>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/PlayTime.h"
#include "library/widgets/ShaderChoice.h"
#include "project/ProjectModel.h"
#include "render/OpenGlProbe.h"
#include "render/widgets/OffscreenOutput.h"
#include "ui/BrowserWindowRow.h"
#include "ui/EditForm.h"
#include "ui/KeyCommands.h"
#include "ui/OutputWindowRow.h"
#include "ui/OutsideCommand.h"
#include "ui_EditWindow.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

namespace {

constexpr QSize kBaseSize(760, 870);  // of the form

}  // namespace

MainWindow::MainWindow(AppState& app, Player& player, const WorkbenchSettings& settings)
    : app_(app),
      player_(player),
      settings_(settings),
      probe_(std::make_unique<OpenGlProbe>(CreateOffscreenOutput({1, 1}))),
      form_(MakeEditForm(*Client())),
      pane_(*form_->statusText),
      posted_(*this, pane_),
      playback_(*form_, app_, *Controls(), player, pane_),
      projects_(app_, pane_, MakeUserDialogs(this)),
      drops_(*this, *form_->editor->viewport(), projects_),
      places_(*form_->statusText, pane_, *form_->editor, app_.project, projects_.dialogs),
      reload_(app_, projects_, playback_, pane_),
      recovery_(app_, pane_),
      channelPanel_(*Client(), app_, player, projects_.dialogs, [this](int id) { SendCommand(id); }),
      layouts_(projects_.dialogs, pane_, *windows_, [this] { PostCommand(kCmdOpenWindows, 0); }),
      find_(*form_->editor, projects_.dialogs),
      controls_(*form_->treeView, *form_->controlArea, *form_->controlHint, *Client(), app_, *Controls()) {
    app_.host = this;
    app_.project.observer = this;
    app_.project.includeContext = CreateIncludeContext();
    playback_.prepareRun = [this](RenderRun& run) {
        // A shader can end the process by way of the driver.
        recovery_.Update();
        channelPanel_.Watch(run);
        controls_.Publish();
        run.framePath = settings_.recorder.framePath;
    };
    controls_.restartAsked = [this] { playback_.RestartFailedRun(); };
    // Thumbnails may show what the run drew.
    playback_.runEnded = [this] {
        channelPanel_.Refresh();
        ShowOutputState(*app_.run);
    };
    playback_.refreshed = [this] { ShowOutputState(*app_.run); };
    app_.display.openGlOk = probe_->IsGood();
    probe_.reset();
    ShowProbe(*form_, app_.display.openGlOk);
    playback_.SetUp();
    RefreshCaretStatus();
    ConnectControls();
    ConnectEditor();
    ConnectLoading();
    auto* menuBar = new QMenuBar;
    Windows().SetSnapping(app_.display.snapToEdges != 0);
    RegisterCommands();
    menus_ =
        std::make_unique<Menus>(*menuBar, *this, commands_, app_.recent, [this](int id) { SendCommand(id); });
    SetMenuBar(menuBar);
    windows_->onChange = [this] { menus_->ShowStates(); };
    AddKeys(*this, [this](int id) { SendCommand(id); });
    SetMinimumClientSize(kBaseSize / 2);
    ResizeClient(kBaseSize);
    AttachScaling(*Client(), true);
    RefreshLayoutMenu();
    FillDefaultPalette(*Hold(*app_.palette.table));
    form_->editor->addActions(menus_->EditActions());
    form_->editor->setContextMenuPolicy(Qt::CustomContextMenu);
    form_->editor->setFocus();
}

MainWindow::~MainWindow() {
    StopRenderThread(app_, player_);
    form_->editor->Forget();
    // The children go after the members here, and an edit that loses the focus would still send its command.
    form_->fpsTarget->disconnect(this);
    windows_.reset();
    app_.host = &SilentHost();
    app_.project.observer = nullptr;
}

void MainWindow::ConnectControls() {
    // A click sends the control's own number as the command.
    for (QAbstractButton* button :
         {static_cast<QAbstractButton*>(form_->startButton), static_cast<QAbstractButton*>(form_->playButton),
          static_cast<QAbstractButton*>(form_->stopButton),
          static_cast<QAbstractButton*>(form_->recordButton),
          static_cast<QAbstractButton*>(form_->pauseButton),
          static_cast<QAbstractButton*>(form_->randomizeCheck),
          static_cast<QAbstractButton*>(form_->setStartButton)}) {
        connect(button, &QAbstractButton::clicked, this,
                [this, id = button->property("controlId").toInt()] { SendCommand(id); });
    }
    connect(form_->fpsTarget, &FpsField::editingFinished, this, [this] { SendCommand(kCmdFpsTarget); });
    form_->stageButtons->SetUp(app_.project, [this](int id) { SendCommand(id); });
}

// All that hears of the editor's text.
void MainWindow::ConnectEditor() {
    CodeView* editor = form_->editor;
    // The comparison with what was saved, and by way of the title the recovery copy.
    connect(editor, &CodeView::TextEdited, this,
            [this] { OnStageChanged(app_.project, app_.project.currentStage); });
    connect(editor, &CodeView::PaintedAnew, this,
            [this](bool hasControlWords) { controls_.NoteEdit(hasControlWords); });
    connect(editor, &CodeView::cursorPositionChanged, this, &MainWindow::RefreshCaretStatus);
    connect(editor, &CodeView::blockCountChanged, this, &MainWindow::RefreshCaretStatus);
    connect(editor, &CodeView::LinkActivated, this,
            [this](const QUrl& url) { projects_.dialogs.openUrl(url); });
    connect(editor, &QWidget::customContextMenuRequested, this,
            [this, editor](const QPoint& at) { PopUpEditorMenu(editor->viewport()->mapToGlobal(at)); });
}

// What a load waits for runs in an event loop inside it.
void MainWindow::ConnectLoading() {
    projects_.loading = [this](bool isLoading) {
        posted_.Postpone(isLoading);
        if (!isLoading) ShowFetchProgress(pane_, {});
        if (isLoading || !closesLater_) return;
        closesLater_ = false;
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    };
    projects_.fetchProgress = [this](const QString& text) { ShowFetchProgress(pane_, text); };
    projects_.chooseShader = [this](const FoundShaders& found) { return ChooseShader(this, found); };
}

bool MainWindow::OpenInitialProject(const QString& path) {
    const bool isSource = path.endsWith(QLatin1String(".glsl"), Qt::CaseInsensitive);
    if (!path.isEmpty() && !isSource && projects_.Load(path)) return true;
    QString complaint = StatusText();
    ClearProject(app_.project, true);
    if (path.isEmpty()) return true;
    if (isSource) {
        if (projects_.LoadSource(path)) return true;
        complaint = StatusText() + QStringLiteral("\nThe file \"%1\" can't be read.").arg(path);
    }
    SetStatusText(complaint);
    return false;
}

void MainWindow::ShowWithLayout() {
    Windows().Present(*this, kEditWin);
    layouts_.Apply();
}

bool MainWindow::OfferRecovery() {
    const RecoveryKeeper::Outcome outcome = recovery_.Offer(projects_.dialogs);
    // What stands there may tell of a file that could not be opened.
    if (outcome.isRestored) SetStatusText(QString());
    for (const QString& message : outcome.messages)
        AddStatusLine(message);
    return outcome.isRestored;
}

void MainWindow::SaveBeforeEnd() {
    recovery_.Update();
    Windows().FreezeOpenStates();
}

void MainWindow::RefreshLayoutMenu() {
    menus_->FillLayouts(layouts_.Names());
}

void MainWindow::PostCommand(int commandId, intptr_t word) {
    posted_.PostCommand(commandId, word);
}

void MainWindow::CancelPostedCommand(int commandId) {
    posted_.CancelCommand(commandId);
}

void MainWindow::PostStatus(const QString& text) {
    posted_.PostStatus(text);
}

void MainWindow::Beep() {
    PostCommand(kCmdBeep, 0);
}

void MainWindow::ShowTitle(bool modified) {
    setWindowTitle(
        QStringLiteral("%1%2 - Pixelgrove")
            .arg(modified ? QStringLiteral("*") : QString(), QFileInfo(app_.project.fileName).fileName()));
    recovery_.NoteChange();
}

void MainWindow::LoadDocument(StageDocument& document, StageSwitch how) {
    form_->editor->LoadDocument(document, how);
}

void MainWindow::ShowMessages(const CompileMessages& messages, const QString& end) {
    places_.Show(messages, end);
}

void MainWindow::RefreshStageTabs() {
    form_->stageButtons->Refresh();
}

void MainWindow::RefreshChannelPanel() {
    channelPanel_.Refresh();
}

void MainWindow::RebuildControlTree() {
    controls_.RebuildForFile();
}

void MainWindow::RefreshCaretStatus() {
    form_->caretStatusText->setText(form_->editor->CaretStatus());
}

bool MainWindow::event(QEvent* event) {
    if (event->type() != CommandQueue::EventType()) return FrameWindow::event(event);
    posted_.DoOldest([this](int id) { SendCommand(id); });
    return true;
}

// On the form beside its controls; those that have no use for a press let it through to here.
void MainWindow::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) pressedOnForm_ = Client()->geometry().contains(event->pos());
    if (event->button() == Qt::RightButton && childAt(event->pos()) == Client())
        PopUpEditorMenu(event->globalPosition().toPoint());
    FrameWindow::mousePressEvent(event);
}

// A press on the form that is let go over the picture samples another moment, as a click on it does. The end
// of a drag by the frame doesn't.
void MainWindow::mouseReleaseEvent(QMouseEvent* event) {
    FrameWindow::mouseReleaseEvent(event);
    const FrameWindow* output = Windows().Find(kOutputWin);
    RunControls& run = *app_.run;
    if (event->button() != Qt::LeftButton || !std::exchange(pressedOnForm_, false)) return;
    if (!output || output->isMinimized() || run.hasContext == 0) return;
    const QPoint at = output->Client()->mapFromGlobal(event->globalPosition().toPoint());
    if (output->Client()->rect().contains(at)) run.timeRequest.Ask({RandomStartTime()});
}

bool MainWindow::nativeEvent(const QByteArray& eventType, void* message, qintptr* result) {
    if (const std::optional<int> command = OutsideCommandOf(eventType, message)) {
        if (*command != 0) PostCommand(*command, 0);
        return true;
    }
    return FrameWindow::nativeEvent(eventType, message, result);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (projects_.IsLoading()) {
        closesLater_ = true;
        projects_.StopLoading();
        event->ignore();
        return;
    }
    if (!projects_.ConfirmLoss()) {
        event->ignore();
        return;
    }
    recovery_.Finish();
    // Windows that are open now are to be open at the next start.
    Windows().FreezeOpenStates();
    StopRenderThread(app_, player_);
    form_->editor->Forget();
    windows_->CloseAll();
    ClearProject(app_.project, false);
    event->accept();
}

}  // namespace pixelgrove
