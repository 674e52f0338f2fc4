#include "recording/widgets/ExternalRecorder.h"

#include <QApplication>
#include <utility>

#include "platform/TextScan.h"
#include "recording/RecorderTable.h"
#include "recording/keyboard/KeyboardKeys.h"

namespace pixelgrove {

namespace {

// Before the keys go down, for the recorder to see the output window as its target, and after they are up.
constexpr std::chrono::milliseconds kFocusTime{50};

// Beyond the length of a recording.
constexpr std::chrono::milliseconds kExtraTime{500};

}  // namespace

ExternalRecorder::ExternalRecorder(const RecorderTable& table, std::function<void(const QString& text)> say)
    : table_(table), say_(std::move(say)) {
    stop_.setSingleShot(true);
    stop_.setTimerType(Qt::PreciseTimer);
    stop_.callOnTimeout(&later_, [this] { Ask({}); });
}

void ExternalRecorder::Toggle(QWidget& output, std::optional<std::chrono::seconds> length) {
    Ask({&output, length});
}

void ExternalRecorder::Ask(const Request& request) {
    requests_.push_back(request);
    if (requests_.size() == 1) Begin();
}

void ExternalRecorder::Begin() {
    QWidget* const output = requests_.front().output;
    if (!output) {
        Press([this] { End(); });
        return;
    }
    // The window system takes its time: what was given back a moment ago isn't there yet.
    if (!lender_) lender_ = {QApplication::activeWindow(), QApplication::focusWidget()};
    output->activateWindow();
    output->update();
    QTimer::singleShot(kFocusTime, Qt::PreciseTimer, &later_, [this] {
        Press([this] { QTimer::singleShot(kFocusTime, Qt::PreciseTimer, &later_, [this] { End(); }); });
    });
}

void ExternalRecorder::Press(std::function<void()> released) {
    const std::optional<std::chrono::seconds> length = requests_.front().length;
    isOn_ = !isOn_;
    if (isOn_ && length)
        stop_.start(*length + kExtraTime);
    else
        stop_.stop();

    const QString combo = isOn_ ? table_.current.start : table_.current.stop;
    const QString purpose =
        isOn_ ? QStringLiteral("to start recording") : QStringLiteral("to stop recording");
    const auto keys = ParseKeyCombo(combo, KeyNames());
    QString reason = QStringLiteral("the keyboard lacks one of the keys");
    if (combo.isEmpty()) {
        say_(QStringLiteral("There is no key combination %1.").arg(purpose));
    } else if (keys && presser_.Press(*keys, released, reason)) {
        say_(QStringLiteral("Pressed %1 %2.").arg(combo, purpose));
        return;
    } else {
        say_(QStringLiteral("Couldn't press %1 %2: %3.").arg(combo, purpose, reason));
    }
    released();
}

void ExternalRecorder::End() {
    requests_.pop_front();
    if (!requests_.empty()) {
        Begin();
        return;
    }
    if (!lender_) return;
    if (lender_->window) lender_->window->activateWindow();
    if (lender_->widget) lender_->widget->setFocus();
    lender_.reset();
}

}  // namespace pixelgrove
