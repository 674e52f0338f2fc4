// An output window on the display, the global records behind it, and a thread that holds a GL context on it.
#pragma once

#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QScreen>
#include <QWindow>
#include <atomic>
#include <memory>
#include <thread>

#include "commands/CommandRegistry.h"
#include "render/InputState.h"
#include "render/Player.h"
#include "render/widgets/OutputCommands.h"
#include "render/widgets/OutputView.h"
#include "render/widgets/OutputWindow.h"
#include "support/DisplayTest.h"

namespace pixelgrove {

class OutputTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        RegisterOutputCommands(commands, [this] { return window.data(); });
        Mouse().isDown = Mouse().justPressed = 0;
        Mouse().x = Mouse().y = Mouse().clickX = Mouse().clickY = -1;
        ClearKeyboard();
    }

    void TearDown() override {
        if (!App()) return;
        if (window) window->close();
        PumpFor(0);
        player.outputSurface = nullptr;
        DisplayTest::TearDown();
    }

    void Open() {
        window = new OutputWindow(*App(), player, commands, [this](int id) { commands.Run(id); });
        window->move(100, 80);
        window->show();
        ASSERT_TRUE(PumpUntil([this] { return window->View()->isExposed(); }));
    }

    // The colour at a place of the picture turns into this one.
    bool Shows(int x, int y, QRgb colour) {
        return PumpUntil([=, this] {
            const QImage image = window->screen()->grabWindow(window->View()->winId()).toImage();
            return image.valid(x, y) && (image.pixel(x, y) | 0xff000000u) == colour;
        });
    }

    Player player;
    CommandRegistry commands;
    QPointer<OutputWindow> window;
};

// A context on the surface, made and left by a thread of its own, as a run has it.
class ContextOnThread {
  public:
    // `turn`, if any, is called over and over on the thread with the context current.
    explicit ContextOnThread(std::shared_ptr<OutputSurface> surface,
                             std::function<void(GlContext&)> turn = nullptr) {
        thread_ = std::thread([this, surface = std::move(surface), turn = std::move(turn)] {
            context_ = surface->CreateContext();
            isCurrent_ = context_ && context_->MakeCurrent();
            ready_ = true;
            while (isCurrent_ && !stop_) {
                if (turn) turn(*context_);
                std::this_thread::sleep_for(std::chrono::milliseconds(2));
            }
            if (context_) context_->Detach();
        });
    }
    ~ContextOnThread() { Stop(); }

    bool WaitCurrent() {
        return PumpUntil([this] { return ready_.load(); }) && isCurrent_;
    }
    // Ends the thread and destroys the context here.
    void Stop() {
        stop_ = true;
        if (thread_.joinable()) thread_.join();
        context_.reset();
    }

  private:
    std::unique_ptr<GlContext> context_;
    std::atomic<bool> ready_{false}, isCurrent_{false}, stop_{false};
    std::thread thread_;
};

}  // namespace pixelgrove
