// pixelgrove-render as a script runs it: frames through a pipe against a bare read-back loop, pictures on
// several threads, and what one small frame costs from start to end.
//
// bench_render [PROJECT [PROGRAM]]: PROGRAM is another build of pixelgrove-render to take turns with. Sides
// that are compared run in turns, so that a busy machine burdens all; medians are printed.

#include <GL/glew.h>
#include <fcntl.h>
#include <unistd.h>

#include <QString>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "../tests/support/Engine.h"
#include "core/BaseFolders.h"
#include "library/ShaderService.h"
#include "platform/Clock.h"

namespace pixelgrove {
namespace {

constexpr int kWidth = 1920, kHeight = 1080;
constexpr int kWarmUp = 2;
const std::string kProgram = PIXELGROVE_BIN_DIR "/pixelgrove-render";

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

// Of the turns' own ratios, as neighbours in time are burdened alike.
double MedianRatio(const std::vector<double>& over, const std::vector<double>& under) {
    std::vector<double> ratios;
    for (size_t i = 0; i < over.size(); ++i)
        ratios.push_back(over[i] / under[i]);
    return Median(ratios);
}

std::string FilmOptions(int frames) {
    return " --size " + std::to_string(kWidth) + "x" + std::to_string(kHeight) + " --frames " +
           std::to_string(frames);
}

// What a program written for just this would do: the engine's frame, its picture as bytes, and nothing else.
class ReadBackLoop {
  public:
    explicit ReadBackLoop(test::Engine& engine) : engine_(engine), pixels_(size_t(kWidth) * kHeight * 4) {
        glGenTextures(1, &texture_);
        glBindTexture(GL_TEXTURE_2D, texture_);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, kWidth, kHeight, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
        glGenFramebuffers(1, &frameBuffer_);
        glBindFramebuffer(GL_FRAMEBUFFER, frameBuffer_);
        glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, texture_, 0);
    }
    double SecondsPerFrame(int frames) {
        const int64_t start = CounterNs();
        for (int i = 0; i < frames; ++i) {
            engine_.Draw(1);
            const ShaderStage& stage = engine_.Context().project.stages[kStageImage];
            glBindFramebuffer(GL_READ_FRAMEBUFFER, stage.frameBuffers[(stage.writeIndex + 1) % 2]);
            glBindFramebuffer(GL_DRAW_FRAMEBUFFER, frameBuffer_);
            glBlitFramebuffer(0, 0, kWidth, kHeight, 0, 0, kWidth, kHeight, GL_COLOR_BUFFER_BIT, GL_NEAREST);
            glBindFramebuffer(GL_READ_FRAMEBUFFER, frameBuffer_);
            glReadPixels(0, 0, kWidth, kHeight, GL_BGRA, GL_UNSIGNED_BYTE, pixels_.data());
        }
        return double(CounterNs() - start) / 1e9 / frames;
    }

  private:
    test::Engine& engine_;
    std::vector<uint8_t> pixels_;
    GLuint texture_ = 0, frameBuffer_ = 0;
};

// From the last byte of the frames that warm it up to that of the last one.
double PipedSecondsPerFrame(const std::string& project, const std::string& form, int frames) {
    FILE* pipe =
        popen((kProgram + " " + project + FilmOptions(kWarmUp + frames) + " --pipe " + form).c_str(), "r");
    if (!pipe) return 0.0;
    // Thrown away unseen: what a reader does with the bytes is its own time.
    const int nowhere = open("/dev/null", O_WRONLY);
    const size_t warmUpBytes = size_t(kWarmUp) * kWidth * kHeight * 3;
    size_t taken = 0;
    int64_t start = 0;
    for (ssize_t got = 0; (got = splice(fileno(pipe), nullptr, nowhere, nullptr, size_t(1) << 20, 0)) > 0;) {
        taken += size_t(got);
        if (start == 0 && taken >= warmUpBytes) start = CounterNs();
    }
    const double seconds = double(CounterNs() - start) / 1e9;
    close(nowhere);
    return pclose(pipe) == 0 ? seconds / frames : 0.0;
}

double CommandSeconds(const std::string& command) {
    const int64_t start = CounterNs();
    if (std::system(command.c_str()) != 0) std::printf("failed: %s\n", command.c_str());
    return double(CounterNs() - start) / 1e9;
}

bool Load(test::Engine& engine, const std::string& path) {
    ShaderProject project;
    const ShaderService service{ServiceOfEnvironment(), {}};
    const QString name = QString::fromStdString(path);
    if (LoadProjectFromService(service, name, project).status != ProjectFileStatus::Loaded) return false;
    AdoptProject(App()->project, project, name);
    return engine.Start(kWidth, kHeight).result == CompileResult::Good;
}

void ComparePipe(const std::string& project) {
    test::Engine engine;
    App()->project.includeContext = CreateIncludeContext();
    if (!Load(engine, project)) {
        std::printf("%s can't be played\n", project.c_str());
        return;
    }
    ReadBackLoop loop(engine);
    const double once = loop.SecondsPerFrame(kWarmUp);
    const int frames = std::clamp(int(0.5 / once), 3, 100);
    std::vector<double> bare, rgb, y4m;
    for (int turn = 0; turn < 7; ++turn) {
        bare.push_back(loop.SecondsPerFrame(frames));
        rgb.push_back(PipedSecondsPerFrame(project, "rgb24", frames));
        y4m.push_back(PipedSecondsPerFrame(project, "y4m", frames));
    }
    std::printf(
        "ms a frame at 1920x1080: bare loop %.1f, --pipe %.1f (its rate is %.2f of the bare loop's), "
        "--pipe y4m %.1f (%.2f)\n",
        Median(bare) * 1e3, Median(rgb) * 1e3, MedianRatio(bare, rgb), Median(y4m) * 1e3,
        MedianRatio(bare, y4m));
}

void CompareJobs(const std::string& project) {
    const QTemporaryDir folder;
    const std::string line =
        kProgram + " " + project + FilmOptions(16) + " --out " + folder.path().toStdString() + " --jobs ";
    std::vector<double> seconds[3];
    for (int turn = 0; turn < 5; ++turn)
        for (int jobs = 1; jobs <= 3; ++jobs)
            seconds[jobs - 1].push_back(CommandSeconds(line + std::to_string(jobs)));
    std::printf("16 PNG files of 1920x1080: --jobs 1 %.2f s, --jobs 2 %.2f times as fast, --jobs 3 %.2f\n",
                Median(seconds[0]), MedianRatio(seconds[0], seconds[1]), MedianRatio(seconds[0], seconds[2]));
}

void CompareStarts(const std::string& project, const std::string& other) {
    const QTemporaryDir folder;
    const std::string options = " " + project + " --size 64x64 --out " + folder.path().toStdString();
    std::vector<double> own, others;
    for (int turn = 0; turn < 15; ++turn) {
        own.push_back(CommandSeconds(kProgram + options));
        if (!other.empty()) others.push_back(CommandSeconds(other + options));
    }
    std::printf("one frame of 64x64, start to end: %.1f ms\n", Median(own) * 1e3);
    if (!other.empty())
        std::printf("the other program: %.1f ms, %.3f times that\n", Median(others) * 1e3,
                    MedianRatio(others, own));
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const std::string project = argc > 1 ? argv[1] : PIXELGROVE_SOURCE_DIR "/data/examples/golden_seams.json";
    pixelgrove::ComparePipe(project);
    pixelgrove::CompareJobs(project);
    pixelgrove::CompareStarts(project, argc > 2 ? argv[2] : "");
    return 0;
}
