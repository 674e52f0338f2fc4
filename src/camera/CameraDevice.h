// CameraDevice: which camera is used, as the description of its source that GStreamer takes.
//
// Any thread. Blocks as long as the system takes to open a device.
#pragma once

#include <QByteArray>
#include <QString>

namespace pixelgrove {

// A device (/dev/video2) or the description of a source in GStreamer's words (videotestsrc is-live=true), for
// machines with several cameras and for tests. Empty or unset, the first camera is taken.
constexpr const char* kCameraVariable = "PIXELGROVE_CAMERA";

struct CameraSource {
    QByteArray description;  // empty without one
    QString problem;         // why there is none, as a sentence
};

// What the variable names, else the first camera of the machine.
CameraSource ChosenCamera();

// The device videoN of the folder with the smallest number that takes pictures. Where none does and one
// couldn't be opened, the problem tells of that one.
CameraSource FirstCamera(const QString& folder);

}  // namespace pixelgrove
