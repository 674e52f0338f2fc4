// A main window with the output window beside it, and the picture on the screen.
#pragma once

#include <QScreen>

#include "WindowFixture.h"
#include "render/RenderThread.h"
#include "render/widgets/OutputView.h"
#include "render/widgets/OutputWindow.h"

namespace pixelgrove {

class OutputTest : public WindowTest {
  protected:
    void TearDown() override {
        if (App()) StopRenderThread(*App(), player);
        EXPECT_TRUE(PumpUntil([] { return AbandonedRuns() == 0; })) << "a thread outlives the test";
        WindowTest::TearDown();
    }
    // Side by side: what is covered can't be seen on a screenshot.
    void OpenOutput() {
        Run(kCmdAnimationWindow);
        Output().move(8, 40);
        window->move(900, 20);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(OutputFrame()));
    }
    OutputWindow& Output() const { return static_cast<OutputWindow&>(*OutputFrame()); }
    QImage Screenshot() const { return Output().screen()->grabWindow(Output().View()->winId()).toImage(); }
};

}  // namespace pixelgrove
