// How fast the code editor is: the colouring pass of what is on screen, a typed key to its painted glyph, the
// loading of a large source, and texts that are hard on an editor.
//
// Needs an X display. Figures are printed as a table; see README.md beside this file.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTextBlock>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#include "WindowBenchmark.h"
#include "commands/Commands.h"
#include "core/CommentMap.h"
#include "platform/Clock.h"
#include "platform/Files.h"
#include "project/ProjectModel.h"
#include "render/Player.h"
#include "support/OwnSettings.h"
#include "ui/MainWindow.h"
#include "ui/editor/CodeHighlight.h"
#include "ui/editor/CodeView.h"
#include "ui/text/Colouring.h"
#include "windows/widgets/WindowRegistry.h"

namespace pixelgrove {
namespace {

constexpr int kKeys = 1000;

// A stage as people write them: functions of ten lines with types, calls and comments.
QString SourceOfLines(int lines) {
    QString text;
    for (int i = 0; text.count(u'\n') < lines && i < lines; i += 10)
        text += QStringLiteral(
                    "// distance to the shape of number %1, in the space of its own\n"
                    "uniform float size%1; // [0, 1]\n"
                    "float shape%1(vec3 p, in vec2 uv)\n"
                    "{\n"
                    "\tvec4 a = texture(iChannel0, uv * 3.0 + sin(iTime) * 0.25);\n"
                    "\tif (a.x > 0.5 && length(p) < 2.0) {\n"
                    "\t\treturn clamp(dot(p, a.xyz), 0.0, 1.0) /* soft */ - 0.1;\n"
                    "\t}\n"
                    "\treturn mix(length(p) - size%1, max(p.x, p.y), smoothstep(0.0, 1.0, a.y));\n"
                    "}\n")
                    .arg(i / 10);
    return text;
}

double Ms(int64_t fromNs) {
    return double(CounterNs() - fromNs) / 1e6;
}

void Print(const char* name, std::vector<double> times) {
    std::sort(times.begin(), times.end());
    const auto at = [&times](double share) {
        return times[std::min(times.size() - 1, size_t(double(times.size()) * share))];
    };
    std::printf("%-40s median %8.2f ms   99%% %8.2f ms   worst %8.2f ms\n", name, at(0.5), at(0.99), at(1));
}

double TimeOf(const std::function<void()>& act) {
    const int64_t start = CounterNs();
    act();
    return Ms(start);
}

// Until everything that follows is painted.
void Settle() {
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

class Editor {
  public:
    explicit Editor(MainWindow& window)
        : window_(window), view_(*window.findChild<CodeView*>(QStringLiteral("editor"))) {}

    void Show(const QString& text) {
        StageDocument& document = *App()->project.currentDocument;
        SetDocumentText(document, text);
        window_.LoadDocument(document, StageSwitch::Anew);
        Settle();
    }

    // Comment map, pass and formats of the lines on screen, in the middle of the text; each time their
    // colours change, as the edit of a comment would change them.
    void MeasurePass() {
        view_.GoToLine(view_.blockCount() / 2);
        Settle();
        const QString& text = App()->project.currentDocument->text;
        const std::vector<CodeView::VisibleLine> lines = view_.VisibleLines();
        const QTextDocument& document = *view_.document();
        const int start = document.findBlockByNumber(lines.front().line - 1).position();
        const QTextBlock last = document.findBlockByNumber(lines.back().line - 1);
        const int end = last.position() + last.length() - 1;
        std::vector<double> passes;
        for (int i = 0; i < 200; ++i) {
            ApplyColours(*view_.document(), start, end, {});
            passes.push_back(TimeOf([&] {
                const std::vector<uint8_t> map = BuildCommentMap(text);
                ApplyColours(*view_.document(), start, end, ColourText(text, map, start, end).spans);
            }));
        }
        std::printf("%zu lines on screen\n", lines.size());
        Print("colouring pass", passes);
    }

    // From the key event to the end of the paint that shows its glyph, all that the key starts included.
    void MeasureKeys(const char* name, int count,
                     const QString& typed = QStringLiteral("vec2 uv = p; /* a */ ")) {
        std::vector<double> keys;
        for (int i = 0; i < count; ++i) {
            const QString text(typed[i % typed.size()]);
            keys.push_back(TimeOf([&] {
                QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, text);
                QCoreApplication::sendEvent(&view_, &press);
                QCoreApplication::sendPostedEvents();
                view_.viewport()->repaint();
            }));
            Settle();
        }
        Print(name, keys);
    }

    void MeasureHard(const char* name, const QString& text) {
        const QString before = QStringLiteral("int a;\n");
        Show(before);
        QApplication::clipboard()->setText(text);
        const auto step = [this](const std::function<void()>& act) {
            return TimeOf([&] {
                act();
                view_.viewport()->repaint();
                Settle();
            });
        };
        const double paste = step([this] { window_.SendCommand(kCmdEditPaste); });
        const double key = step([this] {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, QStringLiteral("x"));
            QCoreApplication::sendEvent(&view_, &press);
        });
        const bool isWhole = App()->project.currentDocument->text == text + u'x' + before;
        step([this] { window_.SendCommand(kCmdEditUndo); });
        const double undo = step([this] { window_.SendCommand(kCmdEditUndo); });
        const bool isBack = App()->project.currentDocument->text == before;
        const double redo = step([this] { view_.redo(); });
        std::printf("%-24s paste %7.0f ms   key %7.1f ms   undo %7.0f ms   redo %7.0f ms   %s\n", name, paste,
                    key, undo, redo, isWhole && isBack ? "text exact" : "TEXT DIFFERS");
    }

    // The tree of 40 controls read anew from the text on display, with the same controls and with one more or
    // less in front.
    void MeasureControls() {
        QString text = SourceOfLines(10000);
        for (int i = 0; i < 20; ++i) {
            text += QStringLiteral("uniform float gain%1; // sound!band: level [0.0..2.0, 1.0]\n").arg(i);
            text += QStringLiteral("#define STEP%1 1 // steps %1 [1..32]\n").arg(i);
        }
        Show(text);
        std::vector<double> same, other;
        for (int i = 0; i < 200; ++i)
            same.push_back(TimeOf([this] { window_.RebuildControlTree(); }));
        Print("controls, 10,000 lines, unchanged", same);
        StageDocument& document = *App()->project.currentDocument;
        for (int i = 0; i < 200; ++i) {
            SetDocumentText(document, i % 2 ? text : QStringLiteral("uniform int first; // a: b\n") + text);
            other.push_back(TimeOf([this] { window_.RebuildControlTree(); }));
        }
        Print("controls, 10,000 lines, another in front", other);
    }

    CodeView& View() { return view_; }

  private:
    MainWindow& window_;
    CodeView& view_;
};

int Run() {
    const bool keysAlone = QCoreApplication::arguments().contains(QStringLiteral("keys"));
    App()->recent.recentFiles = std::make_unique<StringList>();
    Windows().RegisterDefaultWindows();
    Player player;
    test::OwnSettings settings;
    MainWindow window(*App(), player, settings);
    window.OpenInitialProject({});
    window.show();
    Settle();
    Editor editor(window);

    editor.Show(SourceOfLines(10000));
    std::printf("stage of %d lines, %u characters\n", editor.View().blockCount(),
                App()->project.currentDocument->length);
    editor.MeasurePass();
    editor.MeasureKeys("key to glyph, 10,000 lines", kKeys);
    editor.MeasureKeys("key of a word, 10,000 lines", kKeys, QStringLiteral("smoothstep "));
    if (!keysAlone) editor.MeasureControls();

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("large.glsl"));
    QByteArray large = SourceOfLines(40000).toLatin1();
    large.truncate(1 << 20);
    if (!WriteWholeFile(path, large)) return 1;
    std::vector<double> loads;
    for (int i = 0; i < 5; ++i) {
        loads.push_back(TimeOf([&] {
            window.Projects().LoadSource(path);
            editor.View().viewport()->repaint();
            Settle();
        }));
    }
    Print("load of a 1 MB file, painted", loads);
    editor.MeasureKeys("key to glyph, 1 MB", kKeys);
    editor.MeasureKeys("key of a word, 1 MB", kKeys, QStringLiteral("smoothstep "));
    if (keysAlone) return 0;

    editor.MeasureHard("5 MB in 125,000 lines",
                       QStringLiteral("    vec4 a = texture(iChannel0, uv); // b\n").repeated(125000));
    editor.MeasureHard("1 MB of NULs, one line", QString(1 << 20, QChar(0)));
    editor.MeasureHard("1 MB in one line",
                       QStringLiteral("vec4 a = texture(iChannel0, uv * 3.0); ").repeated(27000));
    editor.MeasureHard("100,000 open comments", QStringLiteral("/* ").repeated(100000));
    editor.MeasureHard("the same in lines", QStringLiteral("/*\n").repeated(100000));
    return 0;
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    return pixelgrove::RunOnDisplay(argc, argv, pixelgrove::Run);
}
