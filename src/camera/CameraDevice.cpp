#include "camera/CameraDevice.h"

#include <fcntl.h>
#include <linux/videodev2.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <cerrno>
#include <map>

namespace pixelgrove {

namespace {

// In quotation marks, which the path may hold as well.
CameraSource Device(const QString& path) {
    QByteArray name = QFile::encodeName(path);
    name.replace('\\', "\\\\").replace('"', "\\\"");
    return {"v4l2src device=\"" + name + '"', {}};
}

// One camera may have several devices, of which others give its settings or come from a decoder.
bool TakesPictures(int device) {
    v4l2_capability known{};
    if (ioctl(device, VIDIOC_QUERYCAP, &known) != 0) return false;
    const bool isOfDevice = (known.capabilities & V4L2_CAP_DEVICE_CAPS) != 0;
    const uint32_t can = isOfDevice ? known.device_caps : known.capabilities;
    return (can & (V4L2_CAP_VIDEO_CAPTURE | V4L2_CAP_VIDEO_CAPTURE_MPLANE)) != 0;
}

}  // namespace

CameraSource ChosenCamera() {
    const QString chosen = qEnvironmentVariable(kCameraVariable).trimmed();
    if (chosen.isEmpty()) return FirstCamera(QStringLiteral("/dev"));
    return chosen.startsWith(u'/') ? Device(chosen) : CameraSource{chosen.toLocal8Bit(), {}};
}

CameraSource FirstCamera(const QString& folder) {
    const QString prefix = QStringLiteral("video");
    std::map<int, QString> paths;
    const QDir devices(folder);
    for (const QString& name : devices.entryList({prefix + u'*'}, QDir::Files | QDir::System)) {
        bool isNumber = false;
        const int number = name.mid(prefix.size()).toInt(&isNumber);
        if (isNumber) paths[number] = devices.filePath(name);
    }
    QString problem;
    for (const auto& [number, path] : paths) {
        const int device = open(QFile::encodeName(path).constData(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
        if (device < 0) {
            if (problem.isEmpty())
                problem = QStringLiteral("The camera %1 can't be opened: %2.").arg(path, qt_error_string());
            continue;
        }
        const bool isCamera = TakesPictures(device);
        close(device);
        if (isCamera) return Device(path);
    }
    return {{}, problem.isEmpty() ? QStringLiteral("No camera was found.") : problem};
}

}  // namespace pixelgrove
