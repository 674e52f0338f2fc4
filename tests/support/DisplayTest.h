// What tests with windows share: the check for a display, the global records, and turns of the event loop.
// On the main thread.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QElapsedTimer>
#include <functional>

#include "core/AppState.h"
#include "platform/Clock.h"

namespace pixelgrove {

// Handles events until the condition holds; false after ten seconds.
inline bool PumpUntil(const std::function<bool()>& condition) {
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > 10000) return false;
        SleepMs(1);  // what is waited for needs the processor
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

inline void PumpFor(int milliseconds) {
    QElapsedTimer timer;
    timer.start();
    PumpUntil([&] { return timer.elapsed() >= milliseconds; });
}

// The program's main makes an application where there is a display. Without one, App() is null behind SetUp.
class DisplayTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!qApp) GTEST_SKIP() << "no X display: set DISPLAY to one";
        ASSERT_TRUE(AllocateGlobals());
    }
    void TearDown() override {
        if (App()) FreeGlobals();
    }
};

}  // namespace pixelgrove
