// The tree of live controls, the area below it, and both roads from there into the picture.
#include <QComboBox>
#include <QScrollBar>
#include <QSignalSpy>
#include <functional>

#include "OutputFixture.h"
#include "controls/LiveValues.h"
#include "controls/widgets/ControlTree.h"
#include "controls/widgets/ControlWidget.h"
#include "controls/widgets/SliderWidget.h"
#include "look/widgets/Theme.h"
#include "render/RenderThread.h"

// After Qt, whose names they would turn into macros.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>
#undef Bool
#undef Status
#undef None

namespace pixelgrove {
namespace {

const QString kMain = QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5); }\n");
const QString kText = QStringLiteral(
                          "uniform float Red; // colour: share [0.0..1.0, 0.5]\n"
                          "uniform float Green; // colour: share [0.0..1.0, 0.2]\n"
                          "uniform int Steps; // grey: [1..12, 3]\n"
                          "#define GAIN 0.5 // Gain[0.0..2.0, 0.5]\n"
                          "#define MODE 1 // Mode[0, @1, oops]\n"
                          "float mode = float(MODE);\n") +
                      kMain;

// The left Shift key of the display, as long as it lives.
class LeftShift {
  public:
    LeftShift() : display_(XOpenDisplay(nullptr)) { Press(True); }
    ~LeftShift() {
        Press(False);
        XCloseDisplay(display_);
    }

  private:
    void Press(int down) {
        XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, XK_Shift_L), down, 0);
        XSync(display_, False);
    }
    Display* display_;
};

class LiveControlsTest : public OutputTest {
  protected:
    ControlTree& Tree() const { return *Control<ControlTree>("treeView"); }
    ControlWidget* Open() const {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return Control<QWidget>("controlArea")->findChild<ControlWidget*>();
    }
    // What the open widget is for; "-" when the hint stands in its place.
    QString OpenName() const {
        if (!Open()) return Control<QWidget>("controlHint")->isVisible() ? QStringLiteral("-") : QString();
        return Open()->Range() ? Open()->Range()->name : QStringLiteral("list");
    }
    SliderWidget& Slider() const { return *Open()->findChild<SliderWidget*>(); }

    void SetText(const QString& text) {
        QSignalSpy painted(Editor(), &CodeView::PaintedAnew);
        ReplaceText(text);
        ASSERT_TRUE(PumpUntil([&] { return !painted.isEmpty(); }));
    }
    static QString Outline(const QTreeWidgetItem& item) {
        QStringList below;
        for (int i = 0; i < item.childCount(); ++i)
            below += Outline(*item.child(i));
        return item.text(0) + (below.isEmpty() ? QString() : u'(' + below.join(u' ') + u')');
    }
    QString Outline() const { return Outline(*Tree().topLevelItem(0)); }
    QTreeWidgetItem* Row(const char* text) const {
        return Tree().findItems(QString::fromUtf8(text), Qt::MatchExactly | Qt::MatchRecursive).value(0);
    }
    QString SelectedRow() const {
        const QList<QTreeWidgetItem*> rows = Tree().selectedItems();
        return rows.isEmpty() ? QString() : rows.first()->text(0);
    }
    void ClickRow(const char* text) const {
        Tree().scrollToItem(Row(text));
        QTest::mouseClick(Tree().viewport(), Qt::LeftButton, {}, Tree().visualItemRect(Row(text)).center());
    }
    // By the mouse, from the handle to that part of the track.
    void DragSlider(double to) const {
        SliderWidget& slider = Slider();
        const QPoint from = HandleRect(slider.State(), SliderHandle::Value, slider.size()).center();
        const QPoint at(int(slider.width() * to), from.y());
        QTest::mousePress(&slider, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 4; ++step)
            QTest::mouseMove(&slider, from + (at - from) * step / 4);
        QTest::mouseRelease(&slider, Qt::LeftButton, {}, at);
    }
    // What a frame would get now.
    static float FrameValue(const char* name) {
        UniformTable table;
        UpdateUniformValues(table, 0);
        for (int32_t i = 0; i < table.count; ++i)
            if (table.values[size_t(i)].name == QLatin1String(name))
                return table.values[size_t(i)].floatValue;
        return -1;
    }
};

TEST_F(LiveControlsTest, TheTreeShowsWhatImageDeclares) {
    const std::pair<const char*, const char*> rows[] = {
        {"", "GLSL Shader(Defines Uniforms(Speed))"},
        {"uniform float A; // x: [0..1]\nuniform int B; // y: [0..9]\nuniform float C; // x: [0..1]\n",
         "GLSL Shader(Defines Uniforms(Speed x(A C) y(B)))"},
        {"uniform float A; // x: [0..1]\nuniform float a; // X: [0..1]\nuniform float A; // x: [2..3]\n",
         "GLSL Shader(Defines Uniforms(Speed x(A) X(a)))"},
        {"#define M 1 // one!two!!three[0..9]\n#define N 1 // one[0..9]\n",
         "GLSL Shader(Defines(one(two(three))) Uniforms(Speed))"},
    };
    for (const auto& [text, outline] : rows) {
        SetText(QString::fromLatin1(text) + kMain);
        EXPECT_EQ(Outline().toStdString(), outline) << text;
        for (const QModelIndex& index : Tree().selectionModel()->model()->match(
                 Tree().model()->index(0, 0), Qt::DisplayRole, QStringLiteral("*"), -1,
                 Qt::MatchWildcard | Qt::MatchRecursive))
            EXPECT_TRUE(Tree().isExpanded(index) || !Tree().model()->hasChildren(index)) << outline;
    }
    // Of two records with one path the later is the leaf's.
    SetText(QString::fromLatin1(rows[2].first) + kMain);
    EXPECT_EQ(Tree().RecordAt(QStringLiteral("Uniforms!x!A")), &Controls()->uniforms[3]);
    EXPECT_EQ(Tree().RecordAt(QStringLiteral("Uniforms!x")), nullptr);
    EXPECT_FALSE(InsertTreePath(Tree(), QStringLiteral("!!"), nullptr));
    QTreeWidget withoutRoot;
    EXPECT_FALSE(InsertTreePath(withoutRoot, QStringLiteral("a!b"), nullptr));

    // Another stage's text makes no controls, and its tab leaves the tree.
    const QString before = Outline();
    AddStage(App()->project, kStageBufferA);
    SelectStage(App()->project, kStageBufferA);
    SetText(QStringLiteral("uniform float Z; // z: [0..1]\n") + kMain);
    EXPECT_EQ(Outline(), before);
    SelectStage(App()->project, kStageImage);
    EXPECT_EQ(Outline(), before);
    SelectStage(App()->project, kStageBufferA);
    ClearProject(App()->project, true);
    EXPECT_EQ(Outline().toStdString(), rows[0].second);
    RestorePreviousProject(App()->project);
    EXPECT_EQ(App()->project.currentStage, kStageBufferA);
    EXPECT_EQ(Outline(), before) << "with the controls of the stage that isn't shown";
}

TEST_F(LiveControlsTest, RowsHaveTheColoursOfTheirDepth) {
    for (const auto& [depth, slot] : {std::pair(0, UiColour::TreeViewRootText),
                                      {2, UiColour::TreeViewPlaneText},
                                      {6, UiColour::TreeViewControlText},
                                      {9, UiColour::TreeViewControlText}})
        EXPECT_EQ(TreeColours(depth, false).text, FromBgr(Theme().rows[slot])) << depth;
    // 255, 200, 140, brighter and clamped; below it 0.6 of that, turned.
    const TreeRowColours selected = TreeColours(2, true);
    EXPECT_EQ(selected.text, QColor(255, 255, 210));
    EXPECT_EQ(selected.ground, QColor(126, 153, 153));

    SetText(kText);
    ClickRow("Gain");
    const QImage image = Tree().viewport()->grab().toImage();
    const QRect row = Tree().visualItemRect(Row("Gain"));
    EXPECT_EQ(image.pixelColor(row.right() - 2, row.center().y()), selected.ground);
    EXPECT_EQ(image.pixelColor(2, row.center().y()), selected.ground) << "the whole row";
}

TEST_F(LiveControlsTest, TheSelectedControlIsOpenBelowTheTree) {
    SetText(kText);
    EXPECT_EQ(OpenName(), QStringLiteral("-"));
    ClickRow("Green");
    EXPECT_EQ(OpenName(), QStringLiteral("Green"));
    EXPECT_TRUE(Control<QWidget>("controlArea")->rect().contains(Open()->geometry()));
    ClickRow("colour");
    EXPECT_EQ(OpenName(), QStringLiteral("-"));
    // By keys as by the mouse.
    for (const auto& [key, name] :
         {std::pair(Qt::Key_Down, "Red"), {Qt::Key_Down, "Green"}, {Qt::Key_Up, "Red"}}) {
        QTest::keyClick(&Tree(), key);
        EXPECT_EQ(OpenName().toStdString(), name);
    }
    ClickRow("Mode");
    EXPECT_EQ(OpenName(), QStringLiteral("list"));
    ClickRow("Red");
    {
        const LeftShift shift;
        ClickRow("Steps");
        EXPECT_EQ(OpenName(), QStringLiteral("Red")) << "left Shift keeps the widget";
        DragSlider(0.9);
    }
    ClickRow("Speed");
    EXPECT_EQ(OpenName(), QStringLiteral("Speed"));
    EXPECT_NEAR(Controls()->uniforms[1].range.value, 0.9f, 0.01f);
    EXPECT_EQ(Controls()->uniforms[3].range.value, 3.0f) << "the row in between has its own";
    // Tab leads into it and on.
    Tree().setFocus();
    QTest::keyClick(&Tree(), Qt::Key_Tab);
    EXPECT_TRUE(Open()->isAncestorOf(window->focusWidget()));
}

TEST_F(LiveControlsTest, ARebuildKeepsWhatTheUserSees) {
    SetText(kText);
    ClickRow("Steps");
    DragSlider(0.5);
    const ControlWidget* widget = Open();
    const QTreeWidgetItem* row = Row("Steps");
    // What is typed leaves the value and, where the controls are the same, all rows. A scan counts a whole
    // number up by one.
    const float value = Controls()->uniforms[3].range.value;
    ASSERT_GT(value, 5.0f);
    SetText(QStringLiteral("// typed\n") + kText);
    EXPECT_EQ(Row("Steps"), row);
    EXPECT_NEAR(Controls()->uniforms[3].range.value, value, 1.0f);
    // A key that moves the caret leaves even that.
    const float typed = Controls()->uniforms[3].range.value;
    ASSERT_LT(typed, 12.0f);
    QSignalSpy painted(Editor(), &CodeView::PaintedAnew);
    QTest::keyClick(Editor(), Qt::Key_Right);
    Editor()->viewport()->update();
    ASSERT_TRUE(PumpUntil([&] { return !painted.isEmpty(); }));
    EXPECT_EQ(Controls()->uniforms[3].range.value, typed);
    // One control more, then one less in front: the row and its widget follow the control to another record.
    Tree().scrollToItem(Row("Speed"), QAbstractItemView::PositionAtTop);
    const int scroll = Tree().verticalScrollBar()->value();
    ASSERT_GT(scroll, 0);
    QString text = kText + QStringLiteral("uniform float Z; // z: [0..1]\n");
    SetText(text);
    EXPECT_NE(Row("Z"), nullptr);
    EXPECT_EQ(Tree().verticalScrollBar()->value(), scroll);
    EXPECT_EQ(SelectedRow(), QStringLiteral("Steps"));
    SetText(text.remove(0, text.indexOf(u'\n') + 1));
    EXPECT_EQ(SelectedRow(), QStringLiteral("Steps"));
    // At another place of the tree it still is the widget's.
    SetText(text.replace(QStringLiteral("grey:"), QStringLiteral("white:")));
    EXPECT_EQ(Open(), widget);
    DragSlider(1.0);
    EXPECT_EQ(Controls()->uniforms[2].range.value, 12.0f);
    // Without the control no row is selected, and the widget stays.
    SetText(QStringLiteral("uniform float Y; // y: [0..1]\nuniform float Z; // z: [0..1]\n") + kMain);
    EXPECT_EQ(SelectedRow(), QString());
    EXPECT_EQ(Open(), widget);
    DragSlider(0.0);
    EXPECT_EQ(Controls()->uniforms[2].range.name, QStringLiteral("Z")) << "not the widget's own any more";
    window->RebuildControlTree();
    EXPECT_EQ(Open(), nullptr) << "a loaded text without the control";
    EXPECT_EQ(window->focusWidget(), &Tree());
    ClickRow("Speed");
    EXPECT_EQ(OpenName(), QStringLiteral("Speed"));
    EXPECT_EQ(Controls()->uniforms[0].range.name, QStringLiteral("Speed"));
}

TEST_F(LiveControlsTest, AUniformsValueIsInTheNextFrame) {
    SetText(kText);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 0.5f);
    EXPECT_FLOAT_EQ(FrameValue("Steps"), 3.0f);
    App()->run->restartRequested = 1;
    ClickRow("Red");
    DragSlider(1.0);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 1.0f);
    EXPECT_FLOAT_EQ(FrameValue("Green"), 0.2f);
    EXPECT_EQ(App()->run->restartRequested, 0u);
    // A text that is read anew makes the frame follow the text; leaving the widget, and a new run, the
    // widget.
    SetText(QStringLiteral("uniform float New; // new: [0..1]\n") + kText);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 0.5f);
    ClickRow("Green");
    EXPECT_FLOAT_EQ(FrameValue("Red"), 1.0f);
    ClickRow("Red");
    SetText(kText);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 0.5f);
    Editor()->selectAll();
    Run(kCmdLoadDefines);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 1.0f) << "the control on screen gives its own value first";
    SetText(QStringLiteral("uniform float New; // new: [0..1]\n") + kText);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 0.5f);
    if (!App()->display.openGlOk) return;
    Run(kCmdPlay);
    EXPECT_FLOAT_EQ(FrameValue("Red"), 1.0f);
    ASSERT_TRUE(WaitRunning());
    Run(kCmdStop);
}

TEST_F(LiveControlsTest, ASliderAndAWaveMoveThePicture) {
    if (!App()->display.openGlOk) GTEST_SKIP() << "no usable OpenGL on this display";
    OpenOutput();
    SetText(
        QStringLiteral("uniform float Red; // colour: share [0.0..1.0, 0.0]\n"
                       "void mainImage(out vec4 c, in vec2 p) { c = vec4(Red, 0.0, 1.0, 1.0); }\n"));
    ASSERT_TRUE(PlayUntilRunning());
    const auto colour = [this] { return Screenshot().pixelColor(9, 9); };
    ASSERT_TRUE(PumpUntil([&] { return colour() == Qt::blue; }));
    ClickRow("Red");
    DragSlider(1.0);
    EXPECT_TRUE(PumpUntil([&] { return colour() == Qt::magenta; }));
    QTest::keyClick(Open()->findChild<QComboBox*>(), Qt::Key_End);
    for (int step = 0; step < 3; ++step) {
        const QColor last = colour();
        EXPECT_TRUE(PumpUntil([&] { return colour() != last; })) << step;
    }
}

TEST_F(LiveControlsTest, ADefinesLastValueAlwaysArrives) {
    if (!App()->display.openGlOk) GTEST_SKIP() << "no usable OpenGL on this display";
    const auto sourceHas = [this](const char* line) {
        return player.currentRun &&
               player.currentRun->request.project.stages[kStageImage].source.contains(line);
    };
    SetText(kText);
    ClickRow("Gain");
    DragSlider(1.0);
    EXPECT_EQ(App()->run->restartRequested, 1u) << "waits while nothing runs";
    Run(kCmdPlay);
    EXPECT_TRUE(sourceHas("#define GAIN 2.00000 //"));
    EXPECT_TRUE(PumpUntil([] { return App()->run->restartRequested == 0; }));
    ASSERT_TRUE(WaitRunning());
    for (const double share : {0.5, 0.25}) {
        DragSlider(share);  // the second also while the restart compiles
        EXPECT_TRUE(PumpUntil([] { return App()->run->restartRequested == 0; }));
    }
    ASSERT_TRUE(PumpUntil([&] {
        return Enabled() == QStringLiteral("RpSs") && sourceHas("#define GAIN 0.5");
    })) << player.currentRun->request.project.stages[kStageImage].source.toStdString();

    // A value that doesn't compile; the next one does.
    ClickRow("Mode");
    auto* list = Open()->findChild<QComboBox*>();
    QTest::keyClick(list, Qt::Key_End);
    ASSERT_TRUE(PumpUntil([this] { return Status().contains(QStringLiteral("oops")); }));
    QTest::keyClick(list, Qt::Key_Home);
    EXPECT_TRUE(WaitRunning());
    EXPECT_TRUE(sourceHas("#define MODE 0 //"));
}

}  // namespace
}  // namespace pixelgrove
