#include "ui/MainWindow.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QMenuBar>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QSplitter>
#include <utility>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/PlayTime.h"
#include "library/PageAddress.h"
#include "library/widgets/ShaderChoice.h"
#include "look/widgets/Icons.h"
#include "look/widgets/Theme.h"
#include "project/ProjectModel.h"
#include "render/GlSetup.h"
#include "render/OpenGlProbe.h"
#include "render/widgets/OffscreenOutput.h"
#include "ui/BrowserWindowRow.h"
#include "ui/KeyCommands.h"
#include "ui/OutputWindowRow.h"
#include "ui/OutsideCommand.h"
#include "ui/editor/EditorMenu.h"
#include "ui_EditWindow.h"
#include "windows/widgets/DialogScaler.h"
#include "windows/widgets/DroppedFiles.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {

namespace {

constexpr QSize kBaseSize(760, 870);  // of the form
constexpr qsizetype kMarkedLineLength = 62;

std::unique_ptr<Ui::EditWindow> MakeForm(QWidget* client) {
    auto form = std::make_unique<Ui::EditWindow>();
    client->setFont(FormFont());
    form->setupUi(client);
    return form;
}

// How a splitter's two sides share it, at the base size and at any other.
void Share(QSplitter& splitter, int first, int second) {
    splitter.setStretchFactor(0, first);
    splitter.setStretchFactor(1, second);
    splitter.setSizes({first, second});
}

bool IsStageName(const QString& name) {
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        if (name == StageName(id)) return true;
    return false;
}

// The stage's name stands anywhere in the beginning of the line: a message about another stage that speaks of
// this one marks a line here too.
bool Names(const CompileMessage& message, uint32_t stage) {
    return message.text.left(kMarkedLineLength).contains(StageName(stage), Qt::CaseInsensitive);
}

// The shader whose page is dropped; empty when it is none.
QString DroppedShader(const QMimeData& data, const ServiceAddress& service) {
    for (const QUrl& url : data.urls())
        if (const QString id = ShaderIdOfPage(service, url); !id.isEmpty()) return id;
    return {};
}

bool IsLoadable(const QMimeData& data, const ServiceAddress& service) {
    return !DroppedFiles(data).isEmpty() || !DroppedShader(data, service).isEmpty();
}

// Text of another program, copied: nothing is to vanish there, and nothing that is dragged in a text of ours
// is a project.
bool IsTextFromOutside(const QDropEvent& drop) {
    return drop.mimeData()->hasText() && !drop.source() && drop.possibleActions().testFlag(Qt::CopyAction);
}

}  // namespace

MainWindow::MainWindow(AppState& app, Player& player, const WorkbenchSettings& settings)
    : app_(app),
      player_(player),
      settings_(settings),
      form_(MakeForm(Client())),
      posted_(this),
      pane_(*form_->statusText),
      playback_(*form_, app_, *Controls(), player, pane_),
      projects_(app_, pane_, MakeUserDialogs(this)),
      reload_(app_, projects_, playback_, pane_),
      recovery_(app_, pane_),
      channelPanel_(*Client(), app_, player, projects_.dialogs, [this](int id) { SendCommand(id); }),
      layouts_(projects_.dialogs, pane_, *windows_, [this] { PostCommand(kCmdOpenWindows, 0); }),
      find_(*form_->editor, projects_.dialogs),
      controls_(*form_->treeView, *form_->controlArea, *form_->controlHint, *Client(), app_, *Controls()) {
    app_.host = this;
    app_.project.observer = this;
    form_->statusText->setFont(CodeFont());
    form_->statusText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    Share(*form_->editorSplitter, 370, 188);
    Share(*form_->lowerSplitter, 368, 370);
    Share(*form_->controlSplitter, 82, 100);
    form_->lineGutter->Attach(*form_->editor);
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
    pane_.sayWaiting = [this] { SayWaitingStatus(); };
    setAcceptDrops(true);
    ProbeOutput();
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
    const std::pair<QPushButton*, PlaybackIcon> buttons[] = {
        {form_->startButton, PlaybackIcon::Start}, {form_->playButton, PlaybackIcon::Play},
        {form_->stopButton, PlaybackIcon::Stop},   {form_->recordButton, PlaybackIcon::Record},
        {form_->pauseButton, PlaybackIcon::Pause},
    };
    for (const auto& [button, icon] : buttons) {
        button->setIcon(MakePlaybackIcon(icon));
        button->setIconSize({16, 16});
        button->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
        button->setFocusPolicy(Qt::TabFocus);  // a click leaves the focus where the user works
    }
    form_->pauseButton->setCheckable(true);
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
    form_->statusText->viewport()->installEventFilter(this);
    // Files are for the window, also where a text would take their names.
    form_->editor->viewport()->installEventFilter(this);
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

void MainWindow::ProbeOutput() {
    const std::shared_ptr<OutputSurface> probe = CreateOffscreenOutput({1, 1});
    app_.display.openGlOk = probe && ProbeOpenGl(probe);
    const QString version = QStringLiteral("OpenGL v") + QString::fromStdString(OpenGlVersionText());
    form_->openGlVersionText->setText(version);
    form_->openGlVersionText->setToolTip(version);  // a driver's text may be longer than the field
    form_->openGlFeaturesText->setText(app_.display.openGlOk ? QStringLiteral("All features available")
                                                             : QStringLiteral("Unsupported OpenGL version"));
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

void MainWindow::JumpToMessage(const CompileMessage& message) {
    if (message.place.isEmpty()) return;
    if (!IsStageName(message.place)) {
        projects_.dialogs.openTextEditor(IncludePathOf(message.place), message.line);
        return;
    }
    // The stage on screen stays, whichever stage the message names; line 1 moves nothing.
    if (message.line > 1) form_->editor->GoToLine(message.line);
}

void MainWindow::PostCommand(int commandId, intptr_t word) {
    posted_.PostCommand(commandId, word);
}

void MainWindow::CancelPostedCommand(int commandId) {
    posted_.CancelPostedCommand(commandId);
}

void MainWindow::PostStatus(const QString& text) {
    Hold(postedStatus_)->push_back(text);
    PostCommand(kCmdStatus, 0);
}

void MainWindow::SayOldestStatus() {
    QString text;
    {
        const Hold waiting(postedStatus_);
        if (waiting->empty()) return;
        text = waiting->front();
        waiting->pop_front();
    }
    pane_.Say(text);
}

// What is said now is newer than all that waits, and what runs a posted command as old as its post.
void MainWindow::SayWaitingStatus() {
    if (runsPosted_) return;
    const QScopedValueRollback isPosted(runsPosted_, true);
    posted_.CancelPostedCommand(kCmdStatus);
    const std::deque<QString> waiting = postedStatus_.Exchange({});
    if (!waiting.empty()) pane_.Say(waiting.back());
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
    pane_.Show(messages, end);
    const EditingForm& project = app_.project;
    if (!project.currentDocument) return;
    std::vector<int32_t>& marks = project.currentDocument->errorLines.lines;
    marks.clear();
    for (const CompileMessage& message : messages)
        if (!message.place.isEmpty() && Names(message, project.currentStage)) marks.push_back(message.line);
    form_->editor->RefreshErrorMarks();
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
    const std::optional<PostedCommand> command = posted_.Take();
    if (!command) return true;
    const QScopedValueRollback isPosted(runsPosted_, true);
    if (command->id == kCmdStatus)
        SayOldestStatus();
    else
        SendCommand(command->id);
    return true;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::MouseButtonDblClick: {
            const auto* click = static_cast<QMouseEvent*>(event);
            if (watched != form_->statusText->viewport() || click->button() != Qt::LeftButton) break;
            if (const CompileMessage* message = pane_.MessageAt(click->pos())) JumpToMessage(*message);
            return true;
        }
        case QEvent::DragEnter:
        case QEvent::DragMove:
        case QEvent::Drop: {
            auto* drop = static_cast<QDropEvent*>(event);
            if (watched != form_->editor->viewport() || !IsLoadable(*drop->mimeData(), projects_.service))
                break;
            if (event->type() == QEvent::Drop)
                dropEvent(drop);
            else
                AcceptAsCopy(*drop);
            return true;
        }
        default:
            break;
    }
    return FrameWindow::eventFilter(watched, event);
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (IsLoadable(*event->mimeData(), projects_.service) || IsTextFromOutside(*event)) AcceptAsCopy(*event);
}

void MainWindow::dropEvent(QDropEvent* event) {
    const bool isText = !IsLoadable(*event->mimeData(), projects_.service);
    if (isText && !IsTextFromOutside(*event)) return;
    AcceptAsCopy(*event);
    // The program that it comes from waits for this event to end; a question may take long.
    const QStringList paths = DroppedFiles(*event->mimeData());
    const QString shader = DroppedShader(*event->mimeData(), projects_.service);
    const QString text = isText ? event->mimeData()->text() : QString();
    QMetaObject::invokeMethod(
        this,
        [this, paths, shader, text, isText] {
            if (isText)
                projects_.TakeText(text, QStringLiteral("dropped text"));
            else if (paths.isEmpty())
                projects_.DropShader(shader);
            else
                projects_.DropFiles(paths);
        },
        Qt::QueuedConnection);
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
