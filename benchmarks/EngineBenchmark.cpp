// The engine against a bare GL loop, the pacing of frames, and the time from Stop to the first new frame.
//
// Everything that is compared runs in this one process, in turns, so that a busy machine burdens both sides.
// Figures are printed as a table; see README.md beside this file.

#include <GL/glew.h>
#include <time.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "../tests/support/Engine.h"
#include "commands/Commands.h"
#include "platform/Clock.h"
#include "render/FramePacing.h"
#include "render/Player.h"

namespace pixelgrove {
namespace {

using test::Engine;

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Percentile(std::vector<double> values, double share) {
    std::sort(values.begin(), values.end());
    return values[std::min(values.size() - 1, size_t(double(values.size()) * share))];
}

constexpr const char* kBufferText =
    "void mainImage(out vec4 c, in vec2 p) { vec2 uv = p / iResolution.xy;"
    " c = mix(texture(iChannel0, uv), vec4(0.5 + 0.5 * cos(iTime + uv.xyx + vec3(0, 2, 4)), 1.0), 0.1); }";
constexpr const char* kCubeText =
    "void mainCubemap(out vec4 c, in vec2 p, in vec3 ro, in vec3 rd) { c = vec4(0.5 + 0.5 * rd, iTime); }";

// Image alone, buffers A to D and Image, or those and Cube A.
void MakeProject(Engine& engine, int passes) {
    engine.SetText(kStageImage, kBufferText);
    engine.Connect(kStageImage, 0, passes > 1 ? kStageBufferD : kStageImage);
    if (passes < 5) return;
    for (uint32_t id = kStageBufferA; id <= kStageBufferD; ++id) {
        engine.SetText(id, kBufferText);
        engine.Connect(id, 0, id == kStageBufferA ? uint32_t(kStageBufferA) : id - 1);
    }
    if (passes == 6) engine.SetText(kStageCubeA, kCubeText);
}

// What a program written for just this project would do: the same programs, the same targets, the same wait.
class BareLoop {
  public:
    explicit BareLoop(RenderContext& context) : context_(context) {
        for (ShaderStage& stage : context.project.stages) {
            if (!IsRenderedStage(stage.kind)) continue;
            const auto at = [&stage](const char* name) { return glGetUniformLocation(stage.program, name); };
            passes_.push_back({&stage, at("iTime"), at("iResolution"), at("iFrame"), at("iChannel0"),
                               at("cmCornerVertices")});
        }
    }
    void Draw() {
        time_ += 0.03f;
        ++frame_;
        for (const Pass& pass : passes_) {
            ShaderStage& stage = *pass.stage;
            const bool cube = stage.kind == kStageCubeA;
            glUseProgram(stage.program);
            glUniform1f(pass.time, time_);
            glUniform1i(pass.frame, frame_);
            const float width = cube ? 1024.0f : context_.resolution[0];
            const float height = cube ? 1024.0f : context_.resolution[1];
            glUniform3f(pass.resolution, width, height, 1.0f);
            if (pass.channel >= 0) {
                const ShaderStage& source = context_.project.stages[size_t(stage.channels[0].sourceStage)];
                glActiveTexture(GL_TEXTURE0);
                glBindTexture(GL_TEXTURE_2D, source.textures[(source.writeIndex + 1) % 2]);
                glUniform1i(pass.channel, 0);
            }
            glBindFramebuffer(GL_FRAMEBUFFER, stage.frameBuffers[stage.writeIndex]);
            glViewport(0, 0, GLsizei(width), GLsizei(height));
            glBindVertexArray(context_.vertexArray);
            for (int face = 0; face < (cube ? 6 : 1); ++face) {
                if (cube) {
                    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0,
                                           GLenum(GL_TEXTURE_CUBE_MAP_POSITIVE_X + face),
                                           stage.textures[stage.writeIndex], 0);
                    const float corners[15] = {1, -1, -1, 1, -1, 1, 1, 1, 1, 1, 1, -1, 0, 0, 0};
                    glUniform3fv(pass.corners, 5, corners);
                }
                glDrawArrays(GL_TRIANGLES, 0, 6);
                glFinish();
            }
            stage.writeIndex = (stage.writeIndex + 1) % 2;
        }
    }

  private:
    struct Pass {
        ShaderStage* stage;
        GLint time, resolution, frame, channel, corners;
    };
    RenderContext& context_;
    std::vector<Pass> passes_;
    float time_ = 0.1f;
    int frame_ = 0;
};

template <typename F>
double SecondsOf(int frames, F&& draw) {
    const int64_t start = CounterNs();
    for (int i = 0; i < frames; ++i)
        draw();
    return double(CounterNs() - start) / 1e9 / frames;
}

void CompareWithBareLoop() {
    std::printf("engine against a bare loop (ms a frame, medians of 25 turns each)\n");
    std::printf("%7s %9s %9s %9s %9s\n", "passes", "size", "bare", "engine", "ratio");
    for (const SurfaceSize size : {SurfaceSize{64, 64}, SurfaceSize{640, 360}}) {
        for (const int passes : {1, 5, 6}) {
            Engine engine;
            MakeProject(engine, passes);
            if (engine.Start(size.width, size.height).result != CompileResult::Good) {
                std::printf("the benchmark's project doesn't compile\n");
                return;
            }
            BareLoop bare(engine.Context());
            engine.Draw(20);
            SecondsOf(20, [&bare] { bare.Draw(); });
            const double once = SecondsOf(5, [&bare] { bare.Draw(); });
            const int frames = std::clamp(int(0.08 / once), 2, 1000);
            std::vector<double> bareTimes, engineTimes;
            for (int turn = 0; turn < 25; ++turn) {
                bareTimes.push_back(SecondsOf(frames, [&bare] { bare.Draw(); }));
                engineTimes.push_back(SecondsOf(frames, [&engine] { engine.Draw(1); }));
            }
            const std::string shown = std::to_string(size.width) + "x" + std::to_string(size.height);
            std::printf("%7d %9s %9.4f %9.4f %9.3f\n", passes, shown.c_str(), Median(bareTimes) * 1e3,
                        Median(engineTimes) * 1e3, Median(engineTimes) / Median(bareTimes));
        }
    }
}

double ThreadCpuSeconds() {
    timespec spent{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &spent);
    return double(spent.tv_sec) + double(spent.tv_nsec) / 1e9;
}

void MeasurePacing() {
    std::printf("\npacing of the waiting loop, 4 s each\n");
    std::printf("%5s %16s %16s %14s\n", "fps", "median error us", "99th error us", "share of core");
    for (const uint32_t fps : {30u, 60u, 240u}) {
        std::atomic<uint32_t> stop{0};
        const int64_t intervalNs = FrameIntervalNs(fps);
        std::vector<double> errorsUs;
        const int64_t start = CounterNs();
        const double cpuStart = ThreadCpuSeconds();
        int64_t last = start;
        while (CounterNs() - start < 4'000'000'000) {
            const int64_t now = WaitForFrame(last, intervalNs, stop);
            if (now == 0) continue;
            errorsUs.push_back(double(now - last - intervalNs) / 1e3);
            last = now;
        }
        const double share = (ThreadCpuSeconds() - cpuStart) / (double(CounterNs() - start) / 1e9);
        std::printf("%5u %16.2f %16.2f %13.1f%%\n", fps, Median(errorsUs), Percentile(errorsUs, 0.99),
                    share * 100);
    }
}

void MeasureRestart() {
    AllocateGlobals();
    InitialiseSpeed(*Controls());
    SetDocumentText(App()->project.documents[kStageImage], QString::fromLatin1(kBufferText));
    App()->project.documents[kStageImage].hasText = true;
    const auto surface = std::make_shared<test::ResizableSurface>(SurfaceSize{640, 360});
    const auto makeRequest = [&surface] {
        RunRequest request = SnapshotProject(*App(), *Controls());
        request.surface = surface;
        return request;
    };
    Player player;
    std::vector<double> restartMs;
    for (int i = 0; i < 21; ++i) {
        const int64_t start = CounterNs();
        StopRenderThread(*App(), player);
        ToggleRenderThread(*App(), player, makeRequest, 240);
        while (player.currentRun->framesDrawn == 0)
            SleepUntilNs(CounterNs() + 50'000);
        if (i > 0) restartMs.push_back(double(CounterNs() - start) / 1e6);
        SleepMs(50);
    }
    std::printf("\nStop to the first new frame: median %.1f ms, 99th %.1f ms (one pass, 640x360)\n",
                Median(restartMs), Percentile(restartMs, 0.99));
    StopRenderThread(*App(), player);
    FreeGlobals();
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    const std::string only = argc > 1 ? argv[1] : "";
    if (only.empty() || only == "frames") pixelgrove::CompareWithBareLoop();
    if (only.empty() || only == "pacing") pixelgrove::MeasurePacing();
    if (only.empty() || only == "restart") pixelgrove::MeasureRestart();
    return 0;
}
