#include "ui/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QMouseEvent>
#include <QScreen>
#include <QTextBlock>
#include <algorithm>

#include "controls/LiveValues.h"
#include "core/Commands.h"
#include "core/ProjectModel.h"
#include "platform/Files.h"
#include "platform/TextEditor.h"
#include "render/GlSetup.h"
#include "render/source/MessageLines.h"
#include "render/widgets/OffscreenOutput.h"
#include "render/widgets/OutputWindow.h"
#include "ui/Icons.h"
#include "ui/Theme.h"
#include "ui_EditWindow.h"

namespace pixelgrove {

namespace {

// Of this window alone: the sound that another thread asked for.
constexpr int kCmdBeep = -1;

constexpr int kWindowGap = 12;

std::unique_ptr<Ui::EditWindow> MakeForm(QMainWindow& window) {
    auto form = std::make_unique<Ui::EditWindow>();
    form->setupUi(&window);
    return form;
}

// Where the name of an include file leads: as it stands, else below the include folder.
QString FindIncludeFile(const QString& name) {
    if (IsPlainFile(name)) return name;
    return App()->includeContext->searchFolder + u'/' + name;
}

}  // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent),
      form_(MakeForm(*this)),
      commands_(this),
      playback_(*form_),
      projects_(MakeUserDialogs(this)) {
    AppState& app = *App();
    app.mainWindow = this;
    app.host = this;
    form_->statusText->setFont(CodeFont());
    form_->statusText->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    form_->editorSplitter->setStretchFactor(0, 4);
    form_->editorSplitter->setStretchFactor(1, 1);
    form_->editorSplitter->setSizes({460, 110});
    form_->lineGutter->Attach(*form_->editor);
    app.includeContext = CreateIncludeContext();
    app.fileName = QStringLiteral("Untitled.json");
    ShowTitle(false);
    ProbeOutput();
    RebuildControlTree();
    playback_.SetUp();
    RefreshCaretStatus();
    menus_ = std::make_unique<Menus>(*this, [this](int id) { SendCommand(id, 0); });
    form_->editor->addActions(menus_->EditActions());
    form_->editor->setContextMenuPolicy(Qt::ActionsContextMenu);
    ConnectControls();
    form_->editor->setFocus();
}

MainWindow::~MainWindow() {
    StopRenderThread();
    form_->editor->Forget();
    // The children go after the members here, and an edit that loses the focus would still send its command.
    form_->fpsTarget->disconnect(this);
    AppState& app = *App();
    if (app.outputWindow) {
        app.outputWindow->disconnect(this);
        delete app.outputWindow;
        app.outputWindow = nullptr;
    }
    app.host = &SilentHost();
    app.mainWindow = nullptr;
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
    }
    form_->pauseButton->setCheckable(true);
    // A click sends the control's own number as the command.
    for (QAbstractButton* button :
         {static_cast<QAbstractButton*>(form_->startButton), static_cast<QAbstractButton*>(form_->playButton),
          static_cast<QAbstractButton*>(form_->stopButton), static_cast<QAbstractButton*>(form_->pauseButton),
          static_cast<QAbstractButton*>(form_->randomizeCheck),
          static_cast<QAbstractButton*>(form_->setStartButton)}) {
        connect(button, &QAbstractButton::clicked, this,
                [this, id = button->property("controlId").toInt()] { SendCommand(id, 0); });
    }
    connect(form_->fpsTarget, &FpsField::Committed, this, [this] { SendCommand(kCmdFpsTarget, 0); });
    form_->stageButtons->runCommand = [this](int id) { SendCommand(id, 0); };
    form_->statusText->viewport()->installEventFilter(this);
}

void MainWindow::ProbeOutput() {
    AppState& app = *App();
    const std::shared_ptr<OutputSurface> probe = CreateOffscreenOutput({1, 1});
    app.openGlOk = probe && ProbeOpenGl(*probe);
    form_->openGlVersionText->setText(QStringLiteral("OpenGL v") +
                                      QString::fromStdString(OpenGlVersionText()));
    form_->openGlFeaturesText->setText(app.openGlOk ? QStringLiteral("All features available")
                                                    : QStringLiteral("Unsupported OpenGL version"));
}

bool MainWindow::OpenInitialProject(const QString& path) {
    const bool loaded = !path.isEmpty() && projects_.Load(path);
    if (loaded) return true;
    const QString complaint = form_->statusText->toPlainText();
    AddStage(kStageImage);
    App()->currentDocument = nullptr;
    SelectStage(kStageImage);
    RebuildControlTree();
    if (path.isEmpty()) return true;
    SetStatusText(complaint);
    return false;
}

void MainWindow::SendCommand(int id, intptr_t) {
    switch (id) {
        case kCmdOk:
        case kCmdCancel:
            close();
            return;
        case kCmdPlay:
            playback_.Play();
            return;
        case kCmdPause:
            playback_.Pause();
            return;
        case kCmdStop:
            playback_.Stop();
            return;
        case kCmdStart:
            playback_.Start();
            return;
        case kCmdCompileResult:
            playback_.OnCompileResult();
            return;
        case kCmdRestart:
            playback_.Restart();
            return;
        case kCmdRandomize:
            playback_.OnRandomize();
            return;
        case kCmdSetStartToCurrent:
            playback_.SetStartToCurrent();
            return;
        case kCmdFpsTarget:
            playback_.CommitFpsTarget();
            return;
        case kCmdUseGdiDisplay:
            App()->useGdiDisplay = App()->useGdiDisplay ? 0 : 1;
            menus_->SetTick(id, App()->useGdiDisplay != 0);
            return;
        case kCmdEditUndo:
            form_->editor->undo();
            return;
        case kCmdEditPaste:
            form_->editor->paste();
            return;
        case kCmdEditCopy:
            form_->editor->copy();
            return;
        case kCmdEditCut:
            form_->editor->cut();
            return;
        case kCmdEditDelete:
            form_->editor->textCursor().removeSelectedText();
            return;
        case kCmdEditSelectAll:
            form_->editor->selectAll();
            return;
        case kCmdNew:
            projects_.New();
            return;
        case kCmdOpenProject:
            projects_.OpenProject();
            return;
        case kCmdSaveProjectAs:
            projects_.SaveProjectAs();
            return;
        case kCmdAnimationWindow:
            ToggleOutputWindow();
            return;
        case kCmdStageImage:
            SelectStage(kStageImage);
            return;
        case kCmdStageAdd:
            form_->stageButtons->PopUpAddMenu();
            return;
        case kCmdBeep:
            QApplication::beep();
            return;
        default:
            break;
    }
    if (id >= kCmdStageCommon && id <= kCmdStageCubeA) SelectStage(uint32_t(id - kCmdStageAdd));
    if (id >= kCmdFrameBufferFormatFirst && id <= kCmdFrameBufferFormatLast) ChooseFrameBufferFormat(id);
    if (id >= kCmdMultisampleFirst && id <= kCmdMultisampleLast) ChooseMultisample(id);
}

void MainWindow::ChooseFrameBufferFormat(int id) {
    AppState& app = *App();
    if (const FrameBufferFormatRow* old = FindFrameBufferFormatOf(app.frameBufferFormat))
        menus_->SetTick(old->commandId, false);
    const FrameBufferFormatRow* chosen = FindFrameBufferFormat(id);
    if (chosen && chosen->isAccepted) app.frameBufferFormat = chosen->format;
    menus_->SetTick(id, true);
}

void MainWindow::ChooseMultisample(int id) {
    App()->multisampleIndex = uint32_t(id - kCmdMultisampleFirst);
    for (int other = kCmdMultisampleFirst; other <= kCmdMultisampleLast; ++other)
        menus_->SetTick(other, other == id);
}

void MainWindow::ToggleOutputWindow() {
    if (App()->outputWindow) {
        App()->outputWindow->close();
    } else {
        OpenOutputWindow();
    }
}

void MainWindow::OpenOutputWindow() {
    AppState& app = *App();
    if (app.outputWindow) return;
    auto* output = new OutputWindow;
    app.outputWindow = output;
    menus_->SetTick(kCmdAnimationWindow, true);
    connect(output, &OutputWindow::Closed, this, [this, output] {
        const QSize pixels = output->size() * output->devicePixelRatioF();
        playback_.NoteOutputSize({pixels.width(), pixels.height()});
        if (App()->outputWindow == output) App()->outputWindow = nullptr;
        menus_->SetTick(kCmdAnimationWindow, false);
    });
    const QRect room = screen()->availableGeometry();
    const QRect own = frameGeometry();
    const int left = std::min(own.right() + 1 + kWindowGap, room.right() - output->width() + 1);
    output->move(std::max(room.left(), left), std::max(room.top(), own.top()));
    // Whoever opens it goes on typing here.
    output->setAttribute(Qt::WA_ShowWithoutActivating);
    output->show();
    output->raise();
}

void MainWindow::JumpToMessage(const QString& line) {
    const std::optional<MessageTarget> target = ParseMessageLine(line);
    if (!target) return;
    if (!target->isStage) {
        OpenInTextEditor(FindIncludeFile(target->name), target->line);
        return;
    }
    // The stage on screen stays, whichever stage the message names; line 1 moves nothing.
    if (target->line > 1) form_->editor->GoToLine(target->line);
}

void MainWindow::PostCommand(int commandId, intptr_t word) {
    commands_.PostCommand(commandId, word);
}

void MainWindow::CancelPostedCommand(int commandId) {
    commands_.CancelPostedCommand(commandId);
}

void MainWindow::Beep() {
    PostCommand(kCmdBeep, 0);
}

void MainWindow::SetStatusText(const QString& text) {
    form_->statusText->setPlainText(text);
}

void MainWindow::ShowTitle(bool modified) {
    setWindowTitle(
        QStringLiteral("%1%2 - Pixelgrove")
            .arg(modified ? QStringLiteral("*") : QString(), QFileInfo(App()->fileName).fileName()));
}

void MainWindow::LoadDocument(StageDocument& document) {
    form_->editor->LoadDocument(document);
    RefreshCaretStatus();
}

void MainWindow::MarkErrorLines() {
    AppState& app = *App();
    const QString text = form_->statusText->toPlainText();
    if (text.isEmpty() || !app.currentDocument) return;
    const std::vector<int> lines = ErrorLinesOf(text, StageName(app.currentStage));
    app.currentDocument->errorLines.lines.assign(lines.begin(), lines.end());
    form_->editor->RefreshErrorMarks();
}

void MainWindow::RefreshStageTabs() {
    form_->stageButtons->Refresh();
}

void MainWindow::RefreshChannelPanel() {}

// No controls are made from annotations in this version: the time step is the only one.
void MainWindow::RebuildControlTree() {
    InitialiseSpeed(*Controls());
    PublishControlValues(*Controls());
}

void MainWindow::RefreshCaretStatus() {
    form_->caretStatusText->setText(form_->editor->CaretStatus());
}

bool MainWindow::event(QEvent* event) {
    if (event->type() != CommandQueue::EventType()) return QMainWindow::event(event);
    if (const std::optional<PostedCommand> command = commands_.Take())
        SendCommand(command->id, command->data);
    return true;
}

bool MainWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonDblClick && watched == form_->statusText->viewport()) {
        const auto* click = static_cast<QMouseEvent*>(event);
        if (click->button() == Qt::LeftButton) {
            JumpToMessage(form_->statusText->cursorForPosition(click->pos()).block().text());
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (!projects_.ConfirmLoss()) {
        event->ignore();
        return;
    }
    StopRenderThread();
    form_->editor->Forget();
    if (App()->outputWindow) App()->outputWindow->close();
    ClearProject(false);
    event->accept();
    Q_EMIT Closed();
}

}  // namespace pixelgrove
