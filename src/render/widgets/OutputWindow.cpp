#include "render/widgets/OutputWindow.h"

#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QVBoxLayout>
#include <QWindow>
#include <cmath>
#include <utility>

#include "commands/Commands.h"
#include "core/AppState.h"
#include "render/Player.h"
#include "render/widgets/OutputView.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {
namespace {

constexpr QSize kFirstClientSize(640, 360);

QIcon MakeIcon() {
    QLinearGradient sky(0, 4, 0, 28);
    sky.setColorAt(0, QColor(24, 40, 96));
    sky.setColorAt(1, QColor(240, 150, 60));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / 32.0, size / 32.0);
        painter.setPen(Qt::NoPen);
        painter.setBrush(sky);
        painter.drawRoundedRect(QRectF(1, 4, 30, 24), 4, 4);
        painter.setBrush(QColor(20, 70, 40));
        painter.drawPie(QRectF(-4, 18, 40, 20), 20 * 16, 140 * 16);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

}  // namespace

OutputWindow::OutputWindow(AppState& app, Player& player, const CommandRegistry& commands,
                           std::function<void(int commandId)> runCommand)
    : app_(app), commands_(commands), runCommand_(std::move(runCommand)) {
    ShowState({});
    setWindowIcon(MakeIcon());
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);
    ResizeClient(kFirstClientSize);

    view_ = OutputView::TakeUp(player.outputSurface.get());
    if (!view_) view_ = OutputView::Create(app);
    surface_ = view_->Surface();
    container_ = QWidget::createWindowContainer(view_, Client());
    container_->setFocusPolicy(Qt::StrongFocus);
    container_->setCursor(Qt::ArrowCursor);
    // The client area changes with the frame's state too, at the same size of the frame.
    auto* fill = new QVBoxLayout(Client());
    fill->setContentsMargins(0, 0, 0, 0);
    fill->addWidget(container_);
    connect(view_, &OutputView::MenuRequested, this, &OutputWindow::ShowMenu);
    view_->takeKey = [this](const QKeyEvent& event) { return TakeKey(event); };
    player.outputSurface = surface_;
}

OutputWindow::~OutputWindow() {
    LetViewGo();
}

void OutputWindow::LetViewGo() {
    if (!view_) return;
    view_->takeKey = nullptr;
    // Before the container goes, which would take the view with it.
    std::exchange(view_, nullptr)->LetGo();
    // It has lost its window, and some versions of Qt look at that without asking when the frame goes.
    delete std::exchange(container_, nullptr);
}

bool OutputWindow::event(QEvent* event) {
    // The keyboard belongs to the view, whichever way the window became active.
    if (event->type() == QEvent::WindowActivate && view_) container_->setFocus(Qt::ActiveWindowFocusReason);
    return FrameWindow::event(event);
}

void OutputWindow::changeEvent(QEvent* event) {
    if (event->type() == QEvent::WindowStateChange) surface_->SetMinimised(isMinimized());
    FrameWindow::changeEvent(event);
}

void OutputWindow::closeEvent(QCloseEvent* event) {
    LetViewGo();
    event->accept();
}

void OutputWindow::showEvent(QShowEvent*) {
    ApplyAlwaysOnTop();
}

// Keys that reach the frame instead of the view, as some window managers have it.
void OutputWindow::keyPressEvent(QKeyEvent* event) {
    if (view_) view_->FeedKey(*event);
    FrameWindow::keyPressEvent(event);
}

void OutputWindow::keyReleaseEvent(QKeyEvent* event) {
    if (view_) view_->FeedKey(*event);
}

bool OutputWindow::TakeKey(const QKeyEvent& event) {
    const int key = event.key();
    if (key == takenKey_) {
        // What it sends while it is held is not for the shader either.
        if (event.type() == QEvent::KeyRelease && !event.isAutoRepeat()) takenKey_ = -1;
        return true;
    }
    const bool isOurs = event.type() == QEvent::KeyPress && event.modifiers() == Qt::NoModifier &&
                        (key == Qt::Key_F11 || (key == Qt::Key_Escape && IsFullScreen()));
    if (!isOurs) return false;
    takenKey_ = key;
    runCommand_(kCmdFullScreen);
    return true;
}

std::unique_ptr<QMenu> OutputWindow::MakeContextMenu() {
    auto menu = std::make_unique<QMenu>(this);
    FillMenu(*menu, OutputMenuRows(), [this](int id) { return commands_.StateOf(id); });
    connect(menu.get(), &QMenu::triggered, this,
            [this](QAction* action) { runCommand_(action->data().toInt()); });
    return menu;
}

void OutputWindow::ShowMenu(const QPoint& globalPosition) {
    QMenu* menu = MakeContextMenu().release();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(globalPosition);
}

void OutputWindow::ResizePicture(const QSize& pixels) {
    SetFullScreen(false);
    SetMaximised(false);
    const qreal ratio = devicePixelRatioF();
    const QSize client(int(std::lround(pixels.width() / ratio)), int(std::lround(pixels.height() / ratio)));
    ResizeClient(client);
}

void OutputWindow::ShowState(const OutputState& state) {
    QString title = QStringLiteral("Shader Output");
    if (state.recordedPercent)
        title += QStringLiteral(" - %1%").arg(*state.recordedPercent);
    else if (state.isPlaying) {
        const SurfaceSize size = surface_->ClientSize();
        title += QStringLiteral(" - %1 x %2, %3 fps").arg(size.width).arg(size.height).arg(state.fps);
    }
    if (title != windowTitle()) setWindowTitle(title);
}

bool OutputWindow::IsAlwaysOnTop() const {
    return app_.display.alwaysOnTop != 0;
}

void OutputWindow::SetAlwaysOnTop(bool onTop) {
    app_.display.alwaysOnTop = onTop;
    ApplyAlwaysOnTop();
}

void OutputWindow::ApplyAlwaysOnTop() {
    // On the QWindow: the widget's own flags would replace the native window and lose the view.
    if (windowHandle()) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, IsAlwaysOnTop());
}

}  // namespace pixelgrove
