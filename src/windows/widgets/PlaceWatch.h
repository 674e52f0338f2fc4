// PlaceWatch: keeps a frame's geometry to what the window system reports of it.
//
// Toolkit and frame count what they asked for as the window's place until a report says something new. A
// window manager that refuses a place reports the old one once more, or nothing at all, and then the place
// that was asked for would stand for good. Each frame owns one. Main thread.
#pragma once

#include <QObject>
#include <QRect>
#include <QTimer>

class QWidget;

namespace pixelgrove {

class PlaceWatch : public QObject {
    Q_OBJECT

  public:
    // The frame owns it.
    explicit PlaceWatch(QWidget* frame);

    // The frame's geometry was set and the window system asked for it.
    void NoteAsked();
    // Nobody waits for an answer: the window goes where somebody else takes it.
    void Forget();
    // Whether no answer is being waited for, so that the frame's geometry is where the window is.
    bool IsSettled() const { return !patience_.isActive(); }
    // The window system has told where the window is, and the toolkit knows.
    void NoteReport();

  Q_SIGNALS:
    // What was asked for last was granted, or refused, and the frame's geometry is as reported.
    void Settled(bool refused);

  private:
    void LosePatience();
    void Finish();

    QWidget* const frame_;
    QTimer patience_;
    QRect asked_;
    QRect reportedBefore_;  // when the patience began
    QRect reported_;
    bool taking_ = false;    // a report, into the frame's geometry
    bool inquired_ = false;  // the next report is the answer, whatever it says
};

}  // namespace pixelgrove
