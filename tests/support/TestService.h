// TestService: the service that tests talk to (service.py): a process of its own with a folder that it
// serves.
//
// One for a program is enough; it ends with the object, and with the program however that ends.
#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

namespace pixelgrove::test {

class TestService {
  public:
    TestService() {
        for (const char* name : {"shaders", "searches", "media"})
            QDir(folder_.path()).mkdir(QLatin1String(name));
        // Neither a proxy nor the user's own trust has a say in tests.
        qputenv("no_proxy", "*");
        qunsetenv("SSL_CERT_FILE");
        process_.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process_.start(QStringLiteral("python3"),
                       {QStringLiteral(PIXELGROVE_SOURCE_DIR "/tests/support/service.py"), folder_.path()});
        while (!process_.canReadLine() && process_.waitForReadyRead(60'000)) {
        }
        ports_ = process_.readLine().trimmed().split(' ');
    }
    ~TestService() { Stop(); }

    bool IsReady() const { return ports_.size() == 3; }
    // From then on connections are refused.
    void Stop() {
        process_.closeWriteChannel();
        if (process_.state() != QProcess::NotRunning) process_.waitForFinished();
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
    QProcess process_;
    QList<QByteArray> ports_;
};

}  // namespace pixelgrove::test
