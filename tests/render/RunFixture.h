// Runs of a small project on EGL, started and stopped as the main window does it.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "commands/Commands.h"
#include "platform/Clock.h"
#include "render/Player.h"
#include "support/Engine.h"
#include "support/RecordingHost.h"

namespace pixelgrove::test {

class Run : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(AllocateGlobals());
        InitialiseSpeed(*Controls());
        App()->host = &host_;
        App()->run->recordFrameDelayMs = 0;
        surface_ = std::make_shared<ResizableSurface>(SurfaceSize{32, 18});
        SetText(kStageImage,
                "void mainImage(out vec4 c, in vec2 p) { c = vec4(0.5, float(iFrame), 0.0, 1.0); }");
    }
    void TearDown() override {
        StopRenderThread(*App(), player_);
        FreeGlobals();
    }
    static void SetText(uint32_t stage, const char* text) {
        SetDocumentText(App()->project.documents[stage], QString::fromLatin1(text));
        App()->project.documents[stage].hasText = true;
    }
    bool Toggle(uint32_t fps = 240) {
        return ToggleRenderThread(
            *App(), player_,
            [this] {
                RunRequest request = SnapshotProject(*App(), *Controls());
                request.surface = surface_;
                request.startTime = 1.0f;
                request.playedUpTo = std::exchange(playedUpTo_, std::nullopt);
                return request;
            },
            fps, [this](RenderRun& run) { run.framePath = framePath_; });
    }
    // False after ten seconds.
    static bool WaitUntil(const std::function<bool()>& condition) {
        for (int i = 0; i < 10000; ++i) {
            if (condition()) return true;
            SleepMs(1);
        }
        return false;
    }
    // The data of the next compile result, or -1.
    int WaitResult() {
        std::optional<intptr_t> result;
        WaitUntil([&] { return (result = host_.TakePosted(kCmdCompileResult)).has_value(); });
        return int(result.value_or(-1));
    }
    bool WaitFrames(uint64_t count) const {
        return WaitUntil([=, this] { return player_.currentRun->framesDrawn >= count; });
    }

    RecordingHost host_;
    Player player_;
    std::shared_ptr<const SharedFramePath> framePath_;  // of the runs to come
    std::shared_ptr<ResizableSurface> surface_;
    std::optional<PlayedUpTo> playedUpTo_;  // by the next run
};

}  // namespace pixelgrove::test
