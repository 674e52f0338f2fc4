// How fast the main window answers to clicks: from the press that the X server reports to the click's
// handling and to the first paint behind it, without a run and while a heavy shader plays.
//
// Needs an X display that nobody else uses the pointer of. Figures are printed as a table; see README.md
// beside this file.

#include <QApplication>
#include <QCheckBox>
#include <QElapsedTimer>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <random>
#include <thread>
#include <vector>

#include "WindowBenchmark.h"
#include "commands/Commands.h"
#include "platform/Clock.h"
#include "project/ProjectModel.h"
#include "render/Player.h"
#include "render/RenderThread.h"
#include "support/OwnSettings.h"
#include "ui/MainWindow.h"
#include "windows/widgets/WindowRegistry.h"

// After Qt, whose names they would turn into macros.
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace pixelgrove {
namespace {

constexpr int kClicks = 200;

// A march of many steps, as the heavier shaders of shader sites have it: some frames a second on a software
// driver, and every core busy.
constexpr const char* kHeavyShader =
    "void mainImage(out vec4 c, in vec2 p) {\n"
    "  vec3 a = vec3(p / iResolution.xy, iTime);\n"
    "  for (int i = 0; i < 1500; ++i) a = 0.5 + 0.5 * sin(a.yzx * 3.1 + cos(a.zxy + float(i)));\n"
    "  c = vec4(a, 1);\n"
    "}\n";

struct Times {
    std::vector<double> answersMs;
    int lost = 0;
};

// On a thread of its own with a connection of its own, as another program would click.
Times ClickOver(QPoint at, std::atomic<int64_t>& handledNs) {
    Times times;
    Display* display = XOpenDisplay(nullptr);
    if (!display) return times;
    std::mt19937 random(7);
    XTestFakeMotionEvent(display, -1, at.x(), at.y(), 0);
    XSync(display, False);
    SleepMs(300);
    for (int i = 0; i < kClicks; ++i) {
        handledNs = 0;
        XTestFakeButtonEvent(display, 1, True, 0);
        XTestFakeButtonEvent(display, 1, False, 0);
        const int64_t start = CounterNs();
        XFlush(display);
        while (!handledNs && CounterNs() - start < 2'000'000'000)
            SleepMs(1);
        if (handledNs) {
            times.answersMs.push_back(double(handledNs - start) / 1e6);
        } else {
            ++times.lost;
        }
        SleepMs(20 + random() % 50);
    }
    XCloseDisplay(display);
    return times;
}

double At(std::vector<double> values, double share) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(double(values.size()) * share))];
}

void Print(const char* name, const Times& times) {
    std::printf("%-14s median %6.2f ms   99%% %6.2f ms   worst %6.2f ms   lost %d\n", name,
                At(times.answersMs, 0.5), At(times.answersMs, 0.99), At(times.answersMs, 1), times.lost);
}

Times Measure(QAbstractButton& button) {
    Times times;
    std::atomic<int64_t> handledNs{0};
    const auto watch =
        QObject::connect(&button, &QAbstractButton::clicked, [&handledNs] { handledNs = CounterNs(); });
    std::atomic<bool> done{false};
    const QPoint at = button.mapToGlobal(button.rect().center()) * button.devicePixelRatioF();
    std::thread clicker([&] {
        times = ClickOver(at, handledNs);
        done = true;
        QMetaObject::invokeMethod(
            qApp, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    });
    while (!done)
        QCoreApplication::exec();
    clicker.join();
    QObject::disconnect(watch);
    return times;
}

void PumpFor(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    while (timer.elapsed() < milliseconds)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
}

int Run() {
    Windows().RegisterDefaultWindows();
    Player player;
    test::OwnSettings settings;
    MainWindow window(*App(), player, settings);
    window.OpenInitialProject({});
    App()->project.documents[kStageImage].text = QString::fromLatin1(kHeavyShader);
    window.LoadDocument(App()->project.documents[kStageImage], StageSwitch::KeepsView);
    window.ShowWithLayout();
    window.raise();
    PumpFor(500);
    auto* button = window.findChild<QCheckBox*>(QStringLiteral("randomizeCheck"));
    Print("no run", Measure(*button));
    window.SendCommand(kCmdPlay);
    PumpFor(3000);
    if (!player.currentRun) {
        std::fprintf(stderr, "the shader does not play\n");
        return 1;
    }
    const uint64_t before = player.currentRun->framesDrawn;
    QElapsedTimer timer;
    timer.start();
    Print("heavy shader", Measure(*button));
    std::printf("%.1f frames a second meanwhile\n",
                double(player.currentRun->framesDrawn - before) * 1000.0 / double(timer.elapsed()));
    window.SendCommand(kCmdStop);
    App()->project.shaderModified = false;
    window.close();
    return 0;
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    return pixelgrove::RunOnDisplay(argc, argv, pixelgrove::Run);
}
