// TestService: the service that tests talk to (service.py): a process of its own with a folder that it
// serves.
//
// One for a program is enough; it ends with the object, and with the program however that ends.
#pragma once

#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <utility>

namespace pixelgrove::test {

class TestService {
  public:
    TestService() {
        for (const char* name : {"shaders", "searches", "media"})
            QDir(folder_.path()).mkdir(QLatin1String(name));
        // Neither a proxy nor the user's own trust has a say in tests.
        qputenv("no_proxy", "*");
        qunsetenv("SSL_CERT_FILE");
        // QProcess would have ThreadSanitizer overlook the locks of this thread from then on.
        std::array<int, 2> ends{};
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return;
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        for (const int stream : {STDIN_FILENO, STDOUT_FILENO})
            posix_spawn_file_actions_adddup2(&actions, ends[1], stream);
        QByteArray script(PIXELGROVE_SOURCE_DIR "/tests/support/service.py"),
            folder = folder_.path().toLocal8Bit();
        char python[] = "python3";
        char* const arguments[] = {python, script.data(), folder.data(), nullptr};
        if (posix_spawnp(&process_, python, &actions, nullptr, arguments, environ) != 0) process_ = -1;
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        stream_ = ends[0];
        QByteArray line;
        for (char byte = 0; byte != '\n' && read(stream_, &byte, 1) == 1;)
            line += byte;
        ports_ = line.trimmed().split(' ');
    }
    ~TestService() { Stop(); }
    TestService(const TestService&) = delete;
    TestService& operator=(const TestService&) = delete;

    bool IsReady() const { return ports_.size() == 3; }
    // From then on connections are refused.
    void Stop() {
        if (stream_ >= 0) close(std::exchange(stream_, -1));
        if (process_ > 0) waitpid(std::exchange(process_, -1), nullptr, 0);
    }

    QString Http(const char* path = "") const { return Url("http", 0, path); }
    QString Https(const char* path = "") const { return Url("https", 1, path); }
    // Connections come up, also over https, and nothing follows.
    QString Silent(const char* scheme) const { return Url(scheme, 2, "/"); }
    QByteArray CertificatePath() const { return FilePath("cert.pem").toLocal8Bit(); }

    // What it serves: "shaders/ID.json", "searches/TEXT", "media/NAME".
    QString FilePath(const char* name) const { return folder_.filePath(QLatin1String(name)); }
    void Put(const char* name, const QByteArray& bytes) const {
        QFile file(FilePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("%s can't be written", name);
    }

  private:
    QString Url(const char* scheme, qsizetype port, const char* path) const {
        return QStringLiteral("%1://127.0.0.1:%2%3")
            .arg(QLatin1String(scheme), QString::fromLatin1(ports_.value(port)), QLatin1String(path));
    }

    QTemporaryDir folder_;
    pid_t process_ = -1;
    int stream_ = -1;  // what it reads and writes
    QList<QByteArray> ports_;
};

}  // namespace pixelgrove::test
