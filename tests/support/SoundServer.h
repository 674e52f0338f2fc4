// SoundServer: a PulseAudio server with one output that leads nowhere, in a folder of its own, and what plays
// to it. PipeWireServer: the same of PipeWire's.
//
// Each puts its address into the environment, so it is made before there are threads that look there. Ends
// with the object, as do the programs that play.
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
    // Its exit status; -1 when it was never there or was ended by a signal.
    int Wait() {
        int status = -1;
        if (id_ > 0) waitpid(std::exchange(id_, -1), &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

  private:
    pid_t id_ = -1;
};

// A program that plays a tone, by way of the file. frequency is in Hz.
inline Child PlayTone(const QString& path, double frequency, int seconds) {
    QFile file(path);
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

// Whether someone listens at the socket.
inline bool Answers(const std::string& address) {
    sockaddr_un name{AF_UNIX, {}};
    std::strncpy(name.sun_path, address.c_str(), sizeof(name.sun_path) - 1);
    const int stream = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool answers = connect(stream, reinterpret_cast<sockaddr*>(&name), sizeof(name)) == 0;
    close(stream);
    return answers;
}

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
        isReady_ = server_.IsThere() && WaitUntil([this] { return Answers(address_); });
    }

    bool IsInstalled() const { return server_.IsThere(); }
    bool IsReady() const { return isReady_; }
    Child Play(double frequency, int seconds = 5) {
        return PlayTone(folder_.filePath(QStringLiteral("tone")), frequency, seconds);
    }
    void RemoveOutput() { Child({"pactl", "unload-module", "module-null-sink"}).Wait(); }

  private:
    std::string Folder() const { return folder_.path().toStdString(); }
    QTemporaryDir folder_;
    std::string address_;
    Child server_;
    bool isReady_ = false;
};

class PipeWireServer {
  public:
    PipeWireServer()
        : bus_({"dbus-daemon", "--session", "--nofork", "--nopidfile", "--address=" + Bus()}),
          server_(Start("pipewire", "/pipewire-0")),
          manager_(Start("wireplumber", {})),
          pulse_(Start("pipewire-pulse", "/pulse/native")) {
        qputenv("PULSE_SERVER", QByteArray::fromStdString("unix:" + Folder() + "/pulse/native"));
        qputenv("PULSE_COOKIE", QByteArray::fromStdString(Folder() + "/cookie"));
        if (!IsInstalled()) return;
        // An output is taken once the manager is there.
        Child({"pactl", "load-module", "module-null-sink", "media.class=Audio/Sink", "sink_name=out"}).Wait();
        isReady_ = WaitUntil([] { return Child({"pactl", "set-default-sink", "out"}).Wait() == 0; });
    }

    bool IsInstalled() const {
        return bus_.IsThere() && server_.IsThere() && manager_.IsThere() && pulse_.IsThere();
    }
    bool IsReady() const { return isReady_; }
    Child Play(double frequency) { return PlayTone(folder_.filePath(QStringLiteral("tone")), frequency, 15); }

  private:
    std::string Folder() const { return folder_.path().toStdString(); }
    std::string Bus() const { return "unix:path=" + Folder() + "/bus"; }
    // Waits until it answers at its socket below the folder, if it has one.
    Child Start(const char* program, const std::string& socket) const {
        if (bus_.IsThere()) WaitUntil([this] { return Answers(Folder() + "/bus"); });
        Child child({program},
                    {"HOME=" + Folder(), "XDG_RUNTIME_DIR=" + Folder(), "XDG_CONFIG_HOME=" + Folder(),
                     "XDG_STATE_HOME=" + Folder(), "DBUS_SESSION_BUS_ADDRESS=" + Bus()});
        if (child.IsThere() && !socket.empty()) WaitUntil([&] { return Answers(Folder() + socket); });
        return child;
    }

    QTemporaryDir folder_;
    Child bus_;
    Child server_;
    Child manager_;
    Child pulse_;
    bool isReady_ = false;
};

}  // namespace pixelgrove::test
