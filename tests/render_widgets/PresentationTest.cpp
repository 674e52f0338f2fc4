#include <QOpenGLContext>
#include <QOpenGLFunctions>
#include <cstring>

#include "OutputFixture.h"
#include "project/ProjectModel.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"

namespace pixelgrove {
namespace {

constexpr QRgb kRed = qRgb(255, 0, 0), kGreen = qRgb(0, 255, 0), kBlack = qRgb(0, 0, 0);

// Bottom-up: the lower half in one colour, the upper in the other.
BitmapRef TwoHalves(int width, int height, QRgb lower, QRgb upper) {
    auto bitmap = CreateFrameBitmap(width, height);
    for (int y = 0; y < height; ++y) {
        QRgb colour = y < height / 2 ? lower : upper;
        for (int x = 0; x < width; ++x) {
            std::memcpy(bitmap->Row(y) + 4 * x, &colour, 4);
        }
    }
    return bitmap;
}

using PresentationTest = OutputTest;

TEST_F(PresentationTest, TheLastBitmapOfAnotherThreadFillsTheClientArea) {
    struct Counter : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            count += event->type() == WindowSurface::BitmapEventType();
            return false;
        }
        int count = 0;
    } counter;
    Open();
    EXPECT_TRUE(Shows(0, 0, kBlack));
    EXPECT_TRUE(Shows(639, 359, kBlack));
    App()->run->hasContext = 1;
    App()->run->useGdiDisplay = 1;
    ContextOnThread context(window->Surface());  // the window shows pictures of its own run only
    ASSERT_TRUE(context.WaitCurrent());
    window->View()->installEventFilter(&counter);
    std::thread([surface = window->Surface()] {
        surface->ShowBitmap(nullptr);
        for (int i = 0; i < 1000; ++i)
            surface->ShowBitmap(TwoHalves(8, 8, kRed, kRed));
        surface->ShowBitmap(TwoHalves(64, 20, kGreen, kRed));
    }).join();
    EXPECT_TRUE(Shows(0, 0, kRed));
    EXPECT_TRUE(Shows(639, 179, kRed));
    EXPECT_TRUE(Shows(0, 180, kGreen));
    EXPECT_TRUE(Shows(639, 359, kGreen));
    EXPECT_EQ(counter.count, 1) << "no queue of stale pictures";
    window->Surface()->ShowBitmap(TwoHalves(8, 8, kRed, kGreen));
    EXPECT_TRUE(Shows(639, 179, kGreen));
    EXPECT_EQ(counter.count, 2);
    // The window shows it again by itself, at its new size, until the run ends.
    window->ResizeClient({700, 400});
    EXPECT_TRUE(Shows(699, 199, kGreen));
    EXPECT_TRUE(Shows(699, 399, kRed));
    App()->run->hasContext = 0;
    window->ResizeClient({720, 410});
    EXPECT_TRUE(Shows(719, 409, kBlack));
}

TEST_F(PresentationTest, AMultisampledPictureFollowsTheWindowWhilePaused) {
    Open();
    SetDocumentText(
        App()->project.documents[kStageImage],
        QStringLiteral("void mainImage(out vec4 c, in vec2 p) { c = vec4(1.0, 0.0, 0.0, 1.0); }"));
    App()->project.documents[kStageImage].hasText = true;
    App()->display.multisampleIndex = 2;
    ASSERT_TRUE(ToggleRenderThread(
        *App(), player,
        [this] {
            RunRequest request = SnapshotProject(*App(), *Controls());
            request.surface = window->Surface();
            return request;
        },
        60));
    ASSERT_TRUE(Shows(639, 359, kRed));
    App()->run->paused = 1;
    PumpFor(150);  // the frame that was under way
    window->ResizeClient({800, 450});
    EXPECT_TRUE(Shows(799, 449, kRed));
    StopRenderThread(*App(), player);
}

TEST_F(PresentationTest, ARunGoesOnWithoutItsWindowAndInTheNextOne) {
    Open();
    const std::shared_ptr<WindowSurface> surface = window->Surface();
    surface->SetInUse(true);
    QPointer<OutputView> view = window->View();
    std::atomic<int> frames{0};
    ContextOnThread run(window->Surface(), [&](GlContext& context) {
        ASSERT_TRUE(context.MakeCurrent());
        QOpenGLFunctions* gl = QOpenGLContext::currentContext()->functions();
        gl->glClearColor(1, 0, 0, 1);
        gl->glClear(GL_COLOR_BUFFER_BIT);
        context.SwapBuffers();
        ++frames;
    });
    ASSERT_TRUE(run.WaitCurrent());
    ASSERT_TRUE(Shows(300, 300, kRed));
    const auto closeAndGoOn = [&] {
        window->close();
        EXPECT_TRUE(PumpUntil([this] { return !window; }));
        const int before = frames;
        EXPECT_TRUE(PumpUntil([&] { return frames > before + 10; }));
        EXPECT_EQ(surface->ClientSize(), (SurfaceSize{640, 360})) << "the run keeps its size";
    };
    closeAndGoOn();
    Open();
    EXPECT_EQ(window->View(), view);
    EXPECT_TRUE(Shows(300, 300, kRed));
    window->ResizeClient({700, 400});
    EXPECT_TRUE(PumpUntil([&] { return surface->ClientSize() == SurfaceSize{700, 400}; }));
    window->ResizeClient({640, 360});
    EXPECT_TRUE(PumpUntil([&] { return surface->ClientSize() == SurfaceSize{640, 360}; }));
    closeAndGoOn();
    run.Stop();
    surface->SetInUse(false);
    EXPECT_TRUE(PumpUntil([&] { return !view; }));
    EXPECT_TRUE(surface->IsRetired());
}

}  // namespace
}  // namespace pixelgrove
