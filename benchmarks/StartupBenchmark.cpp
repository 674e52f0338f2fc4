// What the programs cost before they do anything: pixelgrove-render beside a bare EGL program, the workbench
// beside a bare window of Qt, from the start to the first frame that the display shows.
//
// bench_startup [render|window] [FOLDER]: FOLDER has other builds of both programs to take turns with. What
// is compared runs in turns, so that a busy machine burdens all alike; medians are printed, and medians of
// the turns' differences. This program stays small, as a child's peak of memory begins with its parent's.

#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

const std::string kBinFolder = PIXELGROVE_BIN_DIR;
constexpr int kRenderTurns = 31;
constexpr int kWindowTurns = 11;

double NowMs(clockid_t clock = CLOCK_MONOTONIC) {
    timespec now{};
    clock_gettime(clock, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

double Median(std::vector<double> values) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

struct Cost {
    double wallMs = 0, cpuMs = 0, peakMiB = 0;
};
using Turns = std::vector<Cost>;

std::vector<double> Column(const Turns& turns, double Cost::*field) {
    std::vector<double> values;
    for (const Cost& cost : turns)
        values.push_back(cost.*field);
    return values;
}

// The turns of both sides by pairs: neighbours in time are burdened alike.
std::vector<double> Differences(const Turns& turns, const Turns& bare, double Cost::*field) {
    std::vector<double> values;
    for (size_t i = 0; i < turns.size(); ++i)
        values.push_back(turns[i].*field - bare[i].*field);
    return values;
}

void Print(const char* name, const Turns& turns, const Turns& bare) {
    const double wall = Median(Column(turns, &Cost::wallMs)), cpu = Median(Column(turns, &Cost::cpuMs));
    std::printf("%-22s %8.1f %8.1f %8.1f", name, wall, cpu, Median(Column(turns, &Cost::peakMiB)));
    if (&turns != &bare) {
        std::vector<double> walls = Differences(turns, bare, &Cost::wallMs);
        std::sort(walls.begin(), walls.end());
        std::printf("   %+8.1f (%+.1f to %+.1f) %+8.1f %+8.1f %7.2f", Median(walls), walls[walls.size() / 4],
                    walls[walls.size() * 3 / 4], Median(Differences(turns, bare, &Cost::cpuMs)),
                    Median(Differences(turns, bare, &Cost::peakMiB)),
                    wall / Median(Column(bare, &Cost::wallMs)));
    }
    std::printf("\n");
}

pid_t Start(const std::vector<std::string>& line) {
    std::vector<char*> arguments;
    for (const std::string& word : line)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int error = posix_spawn(&process, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error == 0) return process;
    std::printf("%s can't be started\n", arguments[0]);
    std::exit(1);
}

// From the start to the end, which has to be a good one.
Cost RunToEnd(const std::vector<std::string>& line) {
    const double start = NowMs();
    const pid_t process = Start(line);
    rusage usage{};
    int status = 0;
    wait4(process, &status, 0, &usage);
    const double end = NowMs();
    if (status != 0) {
        std::printf("%s failed\n", line[0].c_str());
        std::exit(1);
    }
    const auto ms = [](const timeval& time) {
        return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
    };
    return {end - start, ms(usage.ru_utime) + ms(usage.ru_stime), double(usage.ru_maxrss) / 1024};
}

const std::string kShader =
    "void mainImage(out vec4 c, in vec2 p) { c = vec4(p / iResolution.xy, 0.5, 1.0); }";

std::string Write(const fs::path& file, const std::string& text) {
    std::ofstream(file) << text;
    return file;
}

void CompareRender(const fs::path& scratch, const std::string& other) {
    const std::string shader = Write(scratch / "one.glsl", kShader);
    const auto line = [&](const std::string& folder) {
        return std::vector<std::string>{
            folder + "/pixelgrove-render", shader, "--size", "64x64", "--out", scratch};
    };
    Turns bare, own, others;
    for (int turn = -2; turn < kRenderTurns; ++turn) {
        // The first ones fill the caches.
        Turns none;
        (turn < 0 ? none : bare).push_back(RunToEnd({kBinFolder + "/bare_egl"}));
        (turn < 0 ? none : own).push_back(RunToEnd(line(kBinFolder)));
        if (!other.empty()) (turn < 0 ? none : others).push_back(RunToEnd(line(other)));
    }
    Print("bare EGL program", bare, bare);
    Print("pixelgrove-render", own, bare);
    if (!other.empty()) Print("the other one", others, bare);
}

// What the display shows, seen by a connection of our own.
class Watcher {
  public:
    Watcher() : display_(XOpenDisplay(nullptr)) {
        // A window may go while it is asked for.
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
        if (display_) clients_ = XInternAtom(display_, "_NET_CLIENT_LIST", False);
    }
    ~Watcher() {
        if (display_) XCloseDisplay(display_);
    }
    bool IsReady() const { return display_; }

    // A window of that name shows a picture: many colours in its middle, where a form would have a few.
    bool ShowsPicture(const std::string& name) {
        if (window_ == None) window_ = Find(name);
        XWindowAttributes place{};
        if (window_ == None || !XGetWindowAttributes(display_, window_, &place)) return false;
        if (place.map_state != IsViewable || place.width < 100 || place.height < 100) return false;
        std::set<unsigned long> colours;
        for (const int part : {1, 2}) {
            XImage* row = XGetImage(display_, window_, 0, place.height * part / 3, unsigned(place.width), 1,
                                    AllPlanes, ZPixmap);
            if (!row) return false;
            for (int x = 0; x < row->width; ++x)
                colours.insert(XGetPixel(row, x, 0));
            XDestroyImage(row);
        }
        return colours.size() >= 30;
    }
    void Forget() { window_ = None; }

  private:
    Window Find(const std::string& name) {
        Atom type = None;
        int format = 0;
        unsigned long count = 0, left = 0;
        unsigned char* list = nullptr;
        XGetWindowProperty(display_, DefaultRootWindow(display_), clients_, 0, 64, False, XA_WINDOW, &type,
                           &format, &count, &left, &list);
        Window found = None;
        for (unsigned long i = 0; i < count && found == None; ++i) {
            const Window window = reinterpret_cast<Window*>(list)[i];
            char* title = nullptr;
            if (!XFetchName(display_, window, &title) || !title) continue;
            if (std::string(title).starts_with(name)) found = window;
            XFree(title);
        }
        if (list) XFree(list);
        return found;
    }

    Display* display_;
    Atom clients_ = None;
    Window window_ = None;
};

// From the start to the first frame that is seen; then the program is asked to end.
Cost RunToFrame(const std::vector<std::string>& line, const std::string& title, Watcher& watcher) {
    watcher.Forget();
    const double start = NowMs();
    const pid_t process = Start(line);
    bool isSeen = false;
    while (!isSeen && NowMs() - start < 30e3) {
        usleep(1000);
        isSeen = watcher.ShowsPicture(title);
    }
    Cost cost;
    cost.wallMs = NowMs() - start;
    clockid_t clock = 0;
    if (clock_getcpuclockid(process, &clock) == 0) cost.cpuMs = NowMs(clock);
    kill(process, SIGTERM);
    rusage usage{};
    wait4(process, nullptr, 0, &usage);
    cost.peakMiB = double(usage.ru_maxrss) / 1024;
    if (isSeen) return cost;
    std::printf("%s shows no frame\n", line[0].c_str());
    std::exit(1);
}

// A copy with data of its own, as the program keeps them beside itself.
std::string CopyWorkbench(const std::string& folder, const fs::path& scratch, const char* name) {
    const fs::path copy = scratch / name;
    fs::create_directory(copy);
    const auto everything = fs::copy_options::recursive;
    for (const char* part : {"pixelgrove", "Globals.XML", "UI", "Palettes"})
        fs::copy(fs::path(folder) / part, copy / part, everything);
    return copy / "pixelgrove";
}

// A bare window that draws the project's passes.
std::vector<std::string> PassesOf(const std::string& project, const fs::path& scratch) {
    std::vector<std::string> line = {kBinFolder + "/bare_window"};
    for (const char* stage : {"Buffer A", "Buffer B", "Buffer C", "Buffer D", "Image"}) {
        const std::string file = scratch / (std::to_string(line.size()) + ".frag");
        const std::string print = kBinFolder + "/pixelgrove-render '" + project + "' --print-source '" +
                                  stage + "' >" + file + " 2>/dev/null";
        if (std::system(print.c_str()) == 0) line.push_back(file);
    }
    return line;
}

void CompareWorkbench(const fs::path& scratch, const std::string& other) {
    Watcher watcher;
    if (!watcher.IsReady()) {
        std::printf("no display: the workbench isn't measured\n");
        return;
    }
    const std::string examples = PIXELGROVE_SOURCE_DIR "/data/examples/";
    std::string project;
    std::getline(std::ifstream(examples + "default.txt"), project);
    // As a project: a source file is unsaved work, which the next start would ask about.
    const std::string shader = Write(
        scratch / "one.json", R"({"Shader":{"ver":"0.1","info":{},"renderpass":[{"inputs":[],"outputs":[],)"
                              R"("name":"Image","description":"","type":"image","code":")" +
                                  kShader + "\"}]}}");
    setenv("PIXELGROVE_AUTOPLAY", "1", 1);
    struct Side {
        const char* name;
        std::vector<std::string> line;
        const char* title;
        size_t bare;  // the side that it is compared with
        Turns turns = {};
    };
    const std::string own = CopyWorkbench(kBinFolder, scratch, "own");
    const std::string bare = kBinFolder + "/bare_window";
    std::vector<Side> sides = {
        {"bare window", {bare}, "Bare window", 0},
        {"workbench", {own, shader}, "Shader Output", 0},
        {"bare, default project", PassesOf(examples + project, scratch), "Bare window", 2},
        {"workbench, the same", {own, examples + project}, "Shader Output", 2},
    };
    if (!other.empty()) {
        const std::string program = CopyWorkbench(other, scratch, "other");
        sides.push_back({"the other one", {program, shader}, "Shader Output", 0});
        sides.push_back({"the other, the same", {program, examples + project}, "Shader Output", 2});
    }
    for (int turn = -2; turn < kWindowTurns; ++turn) {
        for (Side& side : sides) {
            const Cost cost = RunToFrame(side.line, side.title, watcher);
            // The first ones fill the caches.
            if (turn >= 0) side.turns.push_back(cost);
        }
    }
    for (const Side& side : sides)
        Print(side.name, side.turns, sides[side.bare].turns);
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    std::vector<std::string> words(argv + 1, argv + argc);
    std::string only;
    if (!words.empty() && (words[0] == "render" || words[0] == "window")) {
        only = words[0];
        words.erase(words.begin());
    }
    const std::string other = words.empty() ? "" : words[0];
    char scratchName[] = "/tmp/bench_startup.XXXXXX";
    if (!mkdtemp(scratchName)) return 1;
    const fs::path scratch = scratchName;
    std::printf("%-22s %8s %8s %8s   %s\n", "", "ms", "cpu ms", "MiB",
                "over bare: ms (quarters), cpu ms, MiB, ratio");
    if (only != "window") CompareRender(scratch, other);
    if (only != "render") CompareWorkbench(scratch, other);
    fs::remove_all(scratch);
    return 0;
}
