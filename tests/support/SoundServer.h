// SoundServer: a PulseAudio server with one output that leads nowhere, in a folder of its own, and what plays
// to it.
//
// Puts its address into the environment, so it is made before there are threads that look there. Ends with
// the object, as do the programs that play.
#pragma once

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QTemporaryDir>
#include <chrono>
#include <cmath>
#include <cstring>
#include <numbers>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace pixelgrove::test {

// A look every few milliseconds. False when it didn't come true for very long.
template <typename Condition>
bool WaitUntil(Condition isTrue) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isTrue()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(3));
    }
    return true;
}

// One program, ended by its id with the object. QProcess would have ThreadSanitizer overlook the locks of
// this thread from then on.
class Child {
  public:
    explicit Child(std::vector<std::string> words, const std::vector<std::string>& variables = {}) {
        std::vector<char*> arguments, environment;
        for (std::string& word : words)
            arguments.push_back(word.data());
        for (char** entry = environ; *entry; ++entry) {
            // Neither starts a bus nor asks the display for another server.
            if (strncmp(*entry, "DISPLAY=", 8) != 0 && strncmp(*entry, "DBUS_", 5) != 0)
                environment.push_back(*entry);
        }
        for (const std::string& variable : variables)
            environment.insert(environment.begin(), const_cast<char*>(variable.c_str()));
        arguments.push_back(nullptr);
        environment.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&id_, arguments[0], &actions, nullptr, arguments.data(), environment.data()) != 0)
            id_ = -1;
        posix_spawn_file_actions_destroy(&actions);
    }
    ~Child() {
        if (id_ > 0) kill(id_, SIGTERM);
        Wait();
    }
    Child(Child&& other) noexcept : id_(std::exchange(other.id_, -1)) {}
    Child& operator=(Child&&) = delete;

    bool IsThere() const { return id_ > 0; }
    void Wait() {
        if (id_ > 0) waitpid(std::exchange(id_, -1), nullptr, 0);
    }

  private:
    pid_t id_ = -1;
};

class SoundServer {
  public:
    // output: what the output is, such as "format=s16le rate=48000 channels=2".
    explicit SoundServer(const std::string& output)
        // With rewinds an output that was idle takes two seconds to its first sound.
        : address_(folder_.filePath(QStringLiteral("socket")).toStdString()),
          server_({"pulseaudio", "-n", "--daemonize=no", "--exit-idle-time=-1", "--use-pid-file=no",
                   "--disable-shm=no", "--realtime=no", "--high-priority=no", "-L",
                   "module-null-sink sink_name=out norewinds=1 " + output, "-L",
                   "module-native-protocol-unix auth-anonymous=1 socket=" + address_},
                  {"HOME=" + Folder(), "XDG_RUNTIME_DIR=" + Folder(), "XDG_CONFIG_HOME=" + Folder()}) {
        qputenv("PULSE_SERVER", QByteArray::fromStdString("unix:" + address_));
        qputenv("PULSE_COOKIE", folder_.filePath(QStringLiteral("cookie")).toLocal8Bit());
        isReady_ = server_.IsThere() && WaitUntil([this] { return Answers(); });
    }

    bool IsInstalled() const { return server_.IsThere(); }
    bool IsReady() const { return isReady_; }
    // A program that plays a tone. frequency is in Hz.
    Child Play(double frequency, int seconds = 5) {
        QFile file(folder_.filePath(QStringLiteral("tone")));
        if (!file.open(QIODevice::WriteOnly)) qFatal("no tone can be written");
        std::vector<int16_t> samples;
        for (int i = 0; i < 48000 * seconds; ++i) {
            const double sine = std::sin(2.0 * std::numbers::pi * frequency * i / 48000.0);
            samples.insert(samples.end(), 2, int16_t(std::lround(16000.0 * sine)));
        }
        file.write(reinterpret_cast<const char*>(samples.data()), qint64(samples.size() * sizeof(int16_t)));
        return Child({"pacat", "--playback", "--raw", "--format=s16le", "--rate=48000", "--channels=2",
                      "--latency-msec=40", file.fileName().toStdString()});
    }
    void RemoveOutput() { Child({"pactl", "unload-module", "module-null-sink"}).Wait(); }

  private:
    std::string Folder() const { return folder_.path().toStdString(); }
    bool Answers() const {
        sockaddr_un name{AF_UNIX, {}};
        std::strncpy(name.sun_path, address_.c_str(), sizeof(name.sun_path) - 1);
        const int stream = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        const bool answers = connect(stream, reinterpret_cast<sockaddr*>(&name), sizeof(name)) == 0;
        close(stream);
        return answers;
    }

    QTemporaryDir folder_;
    std::string address_;
    Child server_;
    bool isReady_ = false;
};

}  // namespace pixelgrove::test
