// ExternalRecorder: drives a screen recorder of another maker by the key combination in force. It presses
// blindly: nothing tells whether a recorder is there, or reacts.
//
// Main thread, which it never blocks.
#pragma once

#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>
#include <chrono>
#include <deque>
#include <functional>
#include <optional>

#include "recording/keyboard/KeyPresser.h"

namespace pixelgrove {

struct RecorderTable;

class ExternalRecorder {
  public:
    // say gets what the user should know. The table outlives this.
    ExternalRecorder(const RecorderTable& table, std::function<void(const QString& text)> say);

    // Presses the start or the stop combination, in turns, while the output window is the active one; the
    // window and the focus of now get it back afterwards. Half a second after the length of a recording that
    // this starts, the stop combination is pressed, unless a call did it before. A call while keys are
    // pressed waits for its turn.
    void Toggle(QWidget& output, std::optional<std::chrono::seconds> length);

    // Whether the stop combination comes next.
    bool IsOn() const { return isOn_; }

  private:
    struct Request {
        QPointer<QWidget> output;  // null to leave all windows as they are
        std::optional<std::chrono::seconds> length;
    };

    struct Focus {
        QPointer<QWidget> window, widget;
    };

    void Ask(const Request& request);
    void Begin();
    void Press(std::function<void()> released);
    void End();

    const RecorderTable& table_;
    const std::function<void(const QString& text)> say_;
    bool isOn_ = false;
    std::deque<Request> requests_;  // the first one is under way
    std::optional<Focus> lender_;   // who had it before the requests that wait
    QTimer stop_;
    KeyPresser presser_;
    QObject later_;  // has what is yet to be done
};

}  // namespace pixelgrove
