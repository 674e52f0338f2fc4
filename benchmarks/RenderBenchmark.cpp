// pixelgrove-render as a script runs it: frames through a pipe against a bare read-back loop, pictures on
// several threads, and what one small frame costs from start to end.
//
// bench_render [PROJECT [PROGRAM]]: without a project a heavy one and a gradient of one line; PROGRAM is
// another build of pixelgrove-render to take turns with. Sides that are compared run in turns, so that a busy
// machine burdens all; medians are printed, with the least and the most.

#include <GL/glew.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <QString>
#include <QTemporaryDir>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
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
struct Ratio {
    double least = 0.0, median = 0.0, most = 0.0;
};

Ratio RatioOf(const std::vector<double>& over, const std::vector<double>& under) {
    std::vector<double> ratios;
    for (size_t i = 0; i < over.size(); ++i)
        ratios.push_back(over[i] / under[i]);
    std::sort(ratios.begin(), ratios.end());
    return {ratios.front(), Median(ratios), ratios.back()};
}

double SecondsOn(clockid_t clock) {
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) + double(now.tv_nsec) / 1e9;
}

// Of one side, in seconds: those that passed, and the processors' own, to which other programs don't add.
struct Turns {
    std::vector<double> wall, own;

    void Add(double wallSeconds, double ownSeconds) {
        wall.push_back(wallSeconds);
        own.push_back(ownSeconds);
    }
};

void PrintRates(const char* what, const Turns& bare, const Turns& side) {
    const Ratio wall = RatioOf(bare.wall, side.wall), own = RatioOf(bare.own, side.own);
    std::printf("  %-12s %6.1f ms, rate %.2f (%.2f to %.2f); of processors %6.1f ms, %.2f (%.2f to %.2f)\n",
                what, Median(side.wall) * 1e3, wall.median, wall.least, wall.most, Median(side.own) * 1e3,
                own.median, own.least, own.most);
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
    double Draw(int frames, Turns& turns) {
        const double start = SecondsOn(CLOCK_MONOTONIC), ownStart = SecondsOn(CLOCK_PROCESS_CPUTIME_ID);
        for (int i = 0; i < frames; ++i) {
            engine_.Draw(1);
            const ShaderStage& stage = engine_.Context().project.stages[kStageImage];
            glBindFramebuffer(GL_READ_FRAMEBUFFER, stage.frameBuffers[(stage.writeIndex + 1) % 2]);
            glBindFramebuffer(GL_DRAW_FRAMEBUFFER, frameBuffer_);
            glBlitFramebuffer(0, 0, kWidth, kHeight, 0, 0, kWidth, kHeight, GL_COLOR_BUFFER_BIT, GL_NEAREST);
            glBindFramebuffer(GL_READ_FRAMEBUFFER, frameBuffer_);
            glReadPixels(0, 0, kWidth, kHeight, GL_BGRA, GL_UNSIGNED_BYTE, pixels_.data());
        }
        const double seconds = (SecondsOn(CLOCK_MONOTONIC) - start) / frames;
        turns.Add(seconds, (SecondsOn(CLOCK_PROCESS_CPUTIME_ID) - ownStart) / frames);
        return seconds;
    }

  private:
    test::Engine& engine_;
    std::vector<uint8_t> pixels_;
    GLuint texture_ = 0, frameBuffer_ = 0;
};

// From the last byte of the frames that warm it up to that of the last one.
void DrawThroughPipe(const std::string& project, const std::string& form, int frames, Turns& turns) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    const std::string line =
        "exec " + kProgram + " " + project + FilmOptions(kWarmUp + frames) + " --pipe " + form;
    std::string shell = "sh", option = "-c", command = line;
    char* const arguments[] = {shell.data(), option.data(), command.data(), nullptr};
    pid_t program = 0;
    const bool isRunning = posix_spawn(&program, "/bin/sh", &actions, nullptr, arguments, environ) == 0;
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    clockid_t own = 0;
    if (!isRunning || clock_getcpuclockid(program, &own) != 0) {
        std::printf("failed: %s\n", line.c_str());
        return;
    }
    // Thrown away unseen: what a reader does with the bytes is its own time.
    const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    const size_t frameBytes = size_t(kWidth) * kHeight * 3;
    const size_t wanted = size_t(kWarmUp + frames) * frameBytes;
    size_t taken = 0;
    double start = 0.0, ownStart = 0.0, end = 0.0, ownEnd = 0.0;
    for (ssize_t got = 0; (got = splice(ends[0], nullptr, nowhere, nullptr, size_t(1) << 20, 0)) > 0;) {
        taken += size_t(got);
        if (start == 0.0 && taken >= kWarmUp * frameBytes) {
            start = SecondsOn(CLOCK_MONOTONIC);
            ownStart = SecondsOn(own);
        }
        if (end == 0.0 && taken >= wanted) {
            end = SecondsOn(CLOCK_MONOTONIC);
            ownEnd = SecondsOn(own);
        }
    }
    close(nowhere);
    close(ends[0]);
    int status = 0;
    waitpid(program, &status, 0);
    if (status != 0 || end == 0.0) std::printf("failed: %s\n", line.c_str());
    turns.Add((end - start) / frames, (ownEnd - ownStart) / frames);
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

// Gives how many frames fill a second.
int ComparePipe(const std::string& project) {
    test::Engine engine;
    App()->project.includeContext = CreateIncludeContext();
    if (!Load(engine, project)) {
        std::printf("%s can't be played\n", project.c_str());
        return 0;
    }
    ReadBackLoop loop(engine);
    Turns bare, rgb, y4m, warmUp;
    const int frames = std::clamp(int(1.0 / loop.Draw(kWarmUp, warmUp)), 3, 100);
    for (int turn = 0; turn < 7; ++turn) {
        loop.Draw(frames, bare);
        DrawThroughPipe(project, "rgb24", frames, rgb);
        DrawThroughPipe(project, "y4m", frames, y4m);
    }
    std::printf("a frame of 1920x1080, %s: bare loop %.1f ms, of processors %.1f\n", project.c_str(),
                Median(bare.wall) * 1e3, Median(bare.own) * 1e3);
    PrintRates("--pipe", bare, rgb);
    PrintRates("--pipe y4m", bare, y4m);
    return frames;
}

void CompareJobs(const std::string& project, int frames) {
    const QTemporaryDir folder;
    const std::string line =
        kProgram + " " + project + FilmOptions(frames) + " --out " + folder.path().toStdString() + " --jobs ";
    std::vector<double> seconds[3];
    for (int turn = 0; turn < 5; ++turn)
        for (int jobs = 1; jobs <= 3; ++jobs)
            seconds[jobs - 1].push_back(CommandSeconds(line + std::to_string(jobs)));
    const Ratio two = RatioOf(seconds[0], seconds[1]), three = RatioOf(seconds[0], seconds[2]);
    std::printf(
        "%d PNG files, start to end: --jobs 1 %.2f s, --jobs 2 %.2f times as fast (%.2f to %.2f), --jobs 3 "
        "%.2f (%.2f to %.2f)\n",
        frames, Median(seconds[0]), two.median, two.least, two.most, three.median, three.least, three.most);
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
                    RatioOf(others, own).median);
}

}  // namespace
}  // namespace pixelgrove

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    const QTemporaryDir folder;
    const std::string gradient = folder.path().toStdString() + "/gradient.glsl";
    if (FILE* file = std::fopen(gradient.c_str(), "w")) {
        std::fputs(
            "void mainImage(out vec4 c, in vec2 p) { c = vec4(p / iResolution.xy, fract(iTime), 1.0); }\n",
            file);
        std::fclose(file);
    }
    std::vector<std::string> projects = {PIXELGROVE_SOURCE_DIR "/data/examples/golden_seams.json", gradient};
    if (argc > 1) projects = {argv[1]};
    for (const std::string& project : projects) {
        const int frames = pixelgrove::ComparePipe(project);
        if (frames > 0) pixelgrove::CompareJobs(project, std::clamp(2 * frames, 4, 16));
    }
    pixelgrove::CompareStarts(projects[0], argc > 2 ? argv[2] : "");
    return 0;
}
