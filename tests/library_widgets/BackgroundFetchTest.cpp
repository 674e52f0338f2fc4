#include "library/widgets/BackgroundFetch.h"

#include <gtest/gtest.h>

#include <QMouseEvent>
#include <QPaintEvent>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <functional>

#include "support/DisplayTest.h"
#include "support/TestService.h"

namespace pixelgrove {
namespace {

class Watched : public QWidget {
  public:
    std::function<void()> onPaint;
    int presses = 0;

    void paintEvent(QPaintEvent*) override {
        if (onPaint) onPaint();
    }
    void mousePressEvent(QMouseEvent*) override { ++presses; }
};

class BackgroundFetchTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        ASSERT_TRUE(!qApp || service_.IsReady());
    }
    void Show(Watched& window) {
        window.setWindowFlag(Qt::X11BypassWindowManagerHint);
        window.setGeometry(10, 10, 80, 80);
        window.show();
        ASSERT_TRUE(PumpUntil([&] { return window.windowHandle()->isExposed(); }));
    }

    test::TestService service_;
    BackgroundFetch fetch_;
};

TEST_F(BackgroundFetchTest, GivesTheAnswerAndItsBytes) {
    qint64 last = 0;
    const FetchResult result =
        fetch_.Fetch(service_.Http("/gzip/hello"), [&](const QString&, qint64 bytes) { last = bytes; });
    EXPECT_EQ(result.body, "hello") << qPrintable(result.reason);
    EXPECT_EQ(last, 5);
    EXPECT_FALSE(fetch_.IsFetching());
}

// In these the server never answers: only what happens in an event can end the fetch.

TEST_F(BackgroundFetchTest, OneThatBringsNothingIsToldToo) {
    const FetchResult result =
        fetch_.Fetch(service_.Http("/hang/hello"), [&](const QString&, qint64) { fetch_.Stop(); });
    EXPECT_EQ(result.failure, FetchFailure::Stopped) << qPrintable(result.reason);
}

TEST_F(BackgroundFetchTest, WindowsArePaintedMeanwhile) {
    Watched window;
    Show(window);
    FetchResult inner;
    int paints = 0;
    window.onPaint = [&] {
        if (++paints < 3) {
            window.update();
            return;
        }
        inner = fetch_.Fetch(service_.Http("/plain/hello"));
        fetch_.Stop();
    };
    window.update();
    EXPECT_EQ(fetch_.Fetch(service_.Http("/hang/hello")).failure, FetchFailure::Stopped);
    EXPECT_EQ(paints, 3);
    EXPECT_EQ(inner.reason, QStringLiteral("another fetch is under way"));
    EXPECT_EQ(fetch_.Fetch(service_.Http("/plain/hello")).body, "hello");
}

TEST_F(BackgroundFetchTest, InputWaitsForItsEnd) {
    Watched window;
    Show(window);
    QTimer::singleShot(0, [&] {
        ASSERT_EQ(std::system("xdotool mousemove 50 50 click 1"), 0);
        // The press is on its way before the repaint that ends the fetch.
        window.onPaint = [&] { fetch_.Stop(); };
        window.update();
    });
    EXPECT_EQ(fetch_.Fetch(service_.Http("/hang/hello")).failure, FetchFailure::Stopped);
    EXPECT_EQ(window.presses, 0);
    EXPECT_TRUE(PumpUntil([&] { return window.presses == 1; }));
}

TEST_F(BackgroundFetchTest, AnEndOfTheProgramEndsIt) {
    FetchResult result;
    QTimer::singleShot(0, [&] {
        QTimer::singleShot(0, [] { QCoreApplication::exit(3); });
        result = fetch_.Fetch(service_.Http("/hang/hello"));
    });
    EXPECT_EQ(QCoreApplication::exec(), 3);
    EXPECT_EQ(result.failure, FetchFailure::Stopped);
}

}  // namespace
}  // namespace pixelgrove
