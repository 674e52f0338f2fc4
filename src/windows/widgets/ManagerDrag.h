// ManagerDrag: a drag that the window manager carries out. It moves or sizes the window as the pointer goes,
// until the button is released; the program sees neither the moves of the pointer nor the release, only where
// the window comes to be.
//
// A frame owns one and starts it while the left button is down on it. Main thread.
#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>
#include <optional>

#include "windows/FrameGeometry.h"

class QWidget;

namespace pixelgrove {

class ManagerDrag : public QObject {
    Q_OBJECT

  public:
    // The frame owns it.
    explicit ManagerDrag(QWidget* frame);

    // Carries out a drag by the zone as from the point on the screen. False, with nothing begun, when the
    // window manager can't be asked.
    bool Start(FrameZone zone, const QPoint& from);
    bool IsActive() const { return watch_.isActive(); }
    // The release came to the program: the window manager is told to leave the window, if it has the pointer.
    void Cancel();
    // Whether it has done anything to the window since the start.
    bool HasMoved() const;
    // Nothing is told any more, to nobody.
    void Forget();

  Q_SIGNALS:
    // The button is up and the window rests.
    void Ended();

  private:
    void Look();

    QWidget* const frame_;
    QTimer watch_;
    std::optional<QRect> atStart_;
    QRect lastSeen_;
    int quietLooks_ = 0;  // in a row, with the button up and the window where it was
};

}  // namespace pixelgrove
