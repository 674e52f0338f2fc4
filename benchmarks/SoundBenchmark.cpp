// What hearing the desktop costs, in shares of a core: the thread that listens to a sound server of its own,
// on which a tone plays, and the main thread with the audio window at its base size. In four states: idle, a
// sound channel in use (as a run at 60 frames a second looks at it), the window open, both.
//
//     bench_sound [seconds a state]
#include <QApplication>
#include <QDir>
#include <QSet>
#include <QThread>
#include <QTimer>
#include <atomic>
#include <cstdio>
#include <memory>
#include <optional>
#include <thread>

#include "audio/widgets/AudioWindow.h"
#include "capture/AudioCapture.h"
#include "look/UiColours.h"
#include "look/widgets/Theme.h"
#include "media/LiveFeeds.h"
#include "support/SoundServer.h"

namespace pixelgrove {
namespace {

QSet<QString> Threads() {
    const QStringList names =
        QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return {names.begin(), names.end()};
}

// Of a thread of this process.
double CpuSeconds(const QString& thread) {
    QFile file(QStringLiteral("/proc/self/task/%1/schedstat").arg(thread));
    return file.open(QIODevice::ReadOnly) ? file.readAll().split(' ').constFirst().toDouble() / 1e9 : 0;
}

void WaitSeconds(double seconds) {
    QTimer::singleShot(int(seconds * 1000), [] { QCoreApplication::exit(); });
    QCoreApplication::exec();
}

// Takes the blocks as a run's frames do.
class Listener {
  public:
    Listener()
        : thread_([this] {
              while (!ends_) {
                  LatestAudioBlock();
                  QThread::usleep(16'667);
              }
          }) {}
    ~Listener() {
        ends_ = true;
        thread_.join();
    }

  private:
    std::atomic<bool> ends_{false};
    std::thread thread_;
};

int Measure(double seconds) {
    test::SoundServer server("format=s16le rate=48000 channels=2");
    if (!server.IsReady()) {
        std::fprintf(stderr, "there is no pulseaudio\n");
        return 1;
    }
    ApplyTheme(*qApp, UiColours());
    const auto parameters = std::make_shared<AudioParameters>();
    const QSet<QString> before = Threads();
    StartAudioCapture(parameters);
    const QSet<QString> added = Threads() - before;
    if (added.size() != 1) return 1;
    const QString capture = *added.begin(), main = QString::number(getpid());
    std::printf("%-18s %14s %14s %10s\n", "", "sound thread", "main thread", "blocks/s");
    for (const auto& [name, inUse, isOpen] : {std::tuple("idle", false, false),
                                              {"channel in use", true, false},
                                              {"window open", false, true},
                                              {"both", true, true}}) {
        const test::Child player = server.Play(1000, int(seconds) + 6);
        std::optional<Listener> listener;
        if (inUse) listener.emplace();
        std::unique_ptr<AudioWindow> window;
        if (isOpen) {
            window = std::make_unique<AudioWindow>(*parameters);
            window->show();
        }
        WaitSeconds(4);  // what a change of state brings about is over
        const double captureBefore = CpuSeconds(capture), mainBefore = CpuSeconds(main);
        const uint64_t blocks = LatestSoundReport().blocks;
        WaitSeconds(seconds);
        std::printf("%-18s %12.2f %% %12.2f %% %10.1f\n", name,
                    100 * (CpuSeconds(capture) - captureBefore) / seconds,
                    100 * (CpuSeconds(main) - mainBefore) / seconds,
                    double(LatestSoundReport().blocks - blocks) / seconds);
    }
    StopAudioCapture();
    return 0;
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    return pixelgrove::Measure(argc > 1 ? atof(argv[1]) : 20);
}
