// The main window among other windows: layouts from the menu, dropped files, commands from outside.
#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>
#include <xcb/xcb.h>

#include <QCoreApplication>
#include <QDir>
#include <QMenu>
#include <cstdlib>
#include <functional>
#include <string>

#include "WindowFixture.h"
#include "core/BaseFolders.h"
#include "platform/Files.h"
#include "platform/SharedMemory.h"
#include "render/widgets/OutputWindow.h"
#include "support/Drops.h"
#include "windows/LayoutRules.h"

namespace pixelgrove {
namespace {

class WindowsTest : public WindowTest {
  protected:
    void SetUp() override {
        Windows().RegisterDefaultWindows();
        WindowTest::SetUp();
    }
    // Shows the windows as the program does at its start.
    void ShowLayout() {
        window->ShowWithLayout();
        ASSERT_TRUE(PumpUntil([this] { return OutputFrame() && OutputFrame()->isVisible(); }));
        PumpFor(50);
    }
    bool Ticked(int commandId) const { return window->MenuEntries().Action(commandId)->isChecked(); }
    FrameWindow& Output() const { return static_cast<FrameWindow&>(*OutputFrame()); }
};

TEST_F(WindowsTest, TheFirstStartSharesTheScreen) {
    ShowLayout();
    const EdgeRect area = CurrentWorkArea();
    const int middle = RoundToInt(double(area.Width()) / 2);
    EXPECT_EQ(window->FrameRect(), (EdgeRect{middle, 0, area.right, area.bottom - kDragRoom}));
    EXPECT_EQ(Output().FrameRect(), (EdgeRect{0, 0, middle, RoundToInt(double(area.Height()) / 2)}));
    EXPECT_TRUE(Ticked(kCmdAnimationWindow));
    Output().close();
    PumpFor(30);
    EXPECT_FALSE(Ticked(kCmdAnimationWindow));
    EXPECT_FALSE(Windows().Layout().windows[1].open);
    // At the end of the program what is open stays so in the settings.
    Run(kCmdAnimationWindow);
    Run(kCmdCancel);
    PumpFor(30);
    EXPECT_TRUE(Windows().Layout().windows[1].open);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(WindowsTest, APressOnTheFormLetGoOverThePictureJumpsInTime) {
    Run(kCmdAnimationWindow);
    App()->run->hasContext = 1;
    const QWidget& picture = *OutputFrame()->Client();
    const QPoint over = picture.mapToGlobal(picture.rect().center());
    for (const auto& [from, jumps] : {std::pair(QPoint(40, 12), false), {QPoint(40, 200), true}}) {
        QTest::mousePress(window.get(), Qt::LeftButton, {}, from);
        QTest::mouseRelease(window.get(), Qt::LeftButton, {}, window->mapFromGlobal(over));
        EXPECT_EQ(App()->run->timeRequest.Take().has_value(), jumps)
            << from.y() << ": the caption is no form";
    }
}

TEST_F(WindowsTest, LayoutsAreSavedListedAndLoaded) {
    ShowLayout();
    const EdgeRect before = window->FrameRect(), outputBefore = Output().FrameRect();
    const QString layouts = NormalizePath(PathOf(PathId::Layouts));
    ASSERT_TRUE(QDir().mkpath(layouts));
    chosenPath = layouts + QStringLiteral("/ZZ test.STL");
    Run(kCmdSaveLayout);
    EXPECT_EQ(Status(), QStringLiteral("File saved."));

    QAction* entry = nullptr;
    for (int id = kCmdLayoutFirst; id <= kCmdLayoutLast; ++id)
        if (QAction* action = window->MenuEntries().Action(id))
            if (action->text() == QStringLiteral("ZZ test")) entry = action;
    ASSERT_NE(entry, nullptr);
    window->SetFrameRect({10, 20, 700, 600});
    Output().SetFrameRect({800, 100, 1200, 400});
    PumpFor(30);
    entry->trigger();
    PumpFor(30);
    EXPECT_EQ(window->FrameRect(), before);
    EXPECT_EQ(Output().FrameRect(), outputBefore);

    Output().close();
    PumpFor(30);
    Run(kCmdLoadLayout);
    EXPECT_TRUE(PumpUntil([this] { return OutputFrame() != nullptr; })) << "opened by its command";
    ASSERT_TRUE(QFile::remove(chosenPath));
    entry->trigger();
    EXPECT_EQ(Status(), QStringLiteral("Error loading file."));
    chosenPath = QStringLiteral("/proc/no/such.STL");
    Run(kCmdSaveLayout);
    EXPECT_EQ(Status(), QStringLiteral("Error saving file."));
}

TEST_F(WindowsTest, TicksFollowTheSettings) {
    const std::pair<int, std::function<bool()>> rows[] = {
        {kCmdLockWindows, [] { return Windows().LockWindows(); }},
        {kCmdSnapToEdges, [] { return App()->display.snapToEdges && Windows().IsSnapping(); }},
        {kCmdUseGdiDisplay, [] { return App()->run->useGdiDisplay != 0; }},
        {kCmdShowChannelBuffers, [] { return App()->run->showChannelBuffers != 0; }},
    };
    for (const auto& [id, setting] : rows) {
        for (const bool expected : {true, false, true}) {
            Run(id);
            EXPECT_EQ(setting(), expected) << id;
            EXPECT_EQ(Ticked(id), expected) << id;
        }
    }
    MakeWindow({});
    EXPECT_TRUE(Ticked(kCmdSnapToEdges) && Ticked(kCmdLockWindows) && Windows().IsSnapping());
}

// The width that the control needs for its text.
int TextWidth(const QWidget& control) {
    int around = 0;
    if (const auto* button = qobject_cast<const QAbstractButton*>(&control))
        around = button->icon().isNull() ? 0 : button->iconSize().width();
    // A label draws a tab as a blank.
    const QString text = control.property("text").toString().replace(u'\t', u' ');
    return around + control.fontMetrics().horizontalAdvance(text);
}

TEST_F(WindowsTest, TheFormScalesAndCutsNothing) {
    const QSize base(760, 870);
    for (const double scale : {1.0, 1.5, 0.5, 2.0, 1.0}) {
        window->ResizeClient(base * scale);
        PumpFor(30);
        const QRect form = window->Client()->rect();
        ASSERT_EQ(form.size(), base * scale);
        for (const QWidget* control :
             window->Client()->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            const std::string name = control->objectName().toStdString() + " at " + std::to_string(scale);
            EXPECT_TRUE(form.contains(control->geometry())) << name;
            // That one is the driver's text, as long as the driver likes.
            if (control->objectName() != QStringLiteral("openGlVersionText")) {
                EXPECT_LE(TextWidth(*control), control->width()) << name;
            }
            EXPECT_LE(control->fontMetrics().height(), control->height()) << name;
        }
    }
}

TEST_F(WindowsTest, ARightPressBesideTheControlsGivesTheEditorMenu) {
    const auto menus = [this] { return Editor()->findChildren<QMenu*>(QStringLiteral("editorMenu")).size(); };
    QTest::mousePress(Editor()->viewport(), Qt::RightButton);
    EXPECT_EQ(menus(), 0) << "the editor's own event makes it there";
    QTest::mousePress(window->Client(), Qt::RightButton, {}, QPoint(3, 3));
    ASSERT_EQ(menus(), 1);
    Editor()->findChild<QMenu*>(QStringLiteral("editorMenu"))->close();
}

TEST_F(WindowsTest, FilesDroppedOnTheEditorAreLoaded) {
    const QString source = FileWith("// dropped\n", QStringLiteral("glsl"));
    EXPECT_EQ(test::DropFiles(Editor()->viewport(), {source, QStringLiteral("/second.glsl")}),
              Qt::CopyAction);
    EXPECT_EQ(Editor()->toPlainText(), QStringLiteral("// dropped\n"));
    EXPECT_EQ(Status(), QStringLiteral("First file loaded (drag-n-drop of multiple files not allowed)."));
}

TEST_F(WindowsTest, OnlyThePaletteCommandIsTakenFromOutside) {
    const std::string name = "/pixelgrove-test-" + std::to_string(getpid());
    App()->palette.shared = SharedMemory::CreateOrOpen(name.c_str(), sizeof(PaletteBlock));
    ASSERT_TRUE(App()->palette.shared);
    PaletteBlock block{};
    block.count = 2;
    const int tool = shm_open(name.c_str(), O_RDWR, 0);
    ASSERT_EQ(pwrite(tool, &block, sizeof block, 0), ssize_t(sizeof block));

    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    constexpr char kType[] = "PIXELGROVE_COMMAND";
    xcb_intern_atom_reply_t* type =
        xcb_intern_atom_reply(connection, xcb_intern_atom(connection, 0, sizeof kType - 1, kType), nullptr);
    ASSERT_NE(type, nullptr);
    const auto send = [&](int commandId) {
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = xcb_window_t(window->winId());
        message.type = type->atom;
        message.data.data32[0] = uint32_t(commandId);
        xcb_send_event(connection, 0, message.window, 0, reinterpret_cast<const char*>(&message));
        xcb_flush(connection);
    };
    send(kCmdCancel);
    send(kCmdUseGdiDisplay);
    send(kCmdPaletteChanged);
    EXPECT_TRUE(PumpUntil([] { return Hold(*App()->palette.table)->count == 2; }));
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(App()->run->useGdiDisplay, 0u);
    std::free(type);
    xcb_disconnect(connection);
    // A tool that cuts its block short leaves the colours as they are.
    ASSERT_EQ(ftruncate(tool, 0), 0);
    window->SendCommand(kCmdPaletteChanged);
    EXPECT_EQ(Hold(*App()->palette.table)->count, 2u);
    close(tool);
    App()->palette.shared.reset();
    shm_unlink(name.c_str());
}

}  // namespace
}  // namespace pixelgrove
