// The scan of the cache against programs that search files, and against a loop that only reads them.
//
// All take turns on the same folder in this one run, so that a busy machine burdens each of them; see
// README.md beside this file.
#include <dirent.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <functional>
#include <random>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

#include "../tests/support/Memory.h"
#include "core/BaseFolders.h"
#include "library/ShaderSearch.h"
#include "platform/Clock.h"
#include "platform/Files.h"

namespace pixelgrove {
namespace {

constexpr int kFiles = 30'000;
constexpr int kTurns = 11;

// About 6 kB, like an answer of the service: nearly all of it is one string, with line ends as escapes.
QByteArray ShaderText(std::mt19937& random, int number) {
    static constexpr const char* kWords[] = {"vec3 ",
                                             "vec2 ",
                                             "float ",
                                             "uv",
                                             "col",
                                             "texture(iChannel0, ",
                                             " = ",
                                             " * ",
                                             " + ",
                                             ".xyz",
                                             "p",
                                             "d",
                                             "sin(",
                                             "iTime",
                                             ")",
                                             "length(",
                                             "1.0",
                                             "0.5",
                                             "mix(",
                                             ", ",
                                             "return ",
                                             "rd",
                                             "ro",
                                             "smoothstep(",
                                             "for(int i = 0; i < 64; i++)",
                                             "map(",
                                             "n",
                                             "t",
                                             "fract(",
                                             "dot("};
    QByteArray text =
        "{\"Shader\":{\"ver\":\"0.1\",\"info\":{\"id\":\"" + QByteArray::number(number) +
        "\",\"date\":\"1450000000\",\"viewed\":100,\"name\":\"Shader\",\"username\":\"somebody\","
        "\"description\":\"A shader\",\"likes\":3,\"tags\":[\"3d\",\"noise\"]},\"renderpass\":"
        "[{\"inputs\":[],\"outputs\":[],\"code\":\"";
    while (text.size() < 6000) {
        for (unsigned words = 2 + random() % 10; words > 0; --words)
            text += kWords[random() % std::size(kWords)];
        text += random() % 3 == 0 ? ";\\n\\n" : ";\\n    ";
    }
    if (number % 100 == 0) text += "float KaleidoFold(vec2 p);\\n";
    return text + "\",\"name\":\"Image\",\"description\":\"\",\"type\":\"image\"}]}}";
}

std::string MakeCache() {
    MakeDataFolders();
    const QString folder = CacheRoot() + u'/' + kCacheShaders;
    std::mt19937 random(1);
    for (int i = 0; i < kFiles; ++i)
        WriteWholeFile(folder + QStringLiteral("/s%1_0.json").arg(i), ShaderText(random, i), nullptr,
                       Durability::System);
    return folder.toStdString();
}

// Opens, reads and closes each file, and looks at nothing.
size_t ReadAll(const std::string& folder) {
    DIR* open = opendir(folder.c_str());
    std::vector<std::string> names;
    while (const dirent* entry = readdir(open))
        if (entry->d_type == DT_REG) names.emplace_back(entry->d_name);
    std::vector<char> buffer(1 << 16);
    size_t bytes = 0;
    for (const std::string& name : names) {
        const int file = openat(dirfd(open), name.c_str(), O_RDONLY | O_CLOEXEC);
        for (ssize_t got = 1; got > 0; bytes += size_t(std::max<ssize_t>(got, 0)))
            got = read(file, buffer.data(), buffer.size());
        close(file);
    }
    closedir(open);
    return bytes;
}

// How many files a program names on its standard output; -1 where there is no such program.
int FilesNamedBy(const std::string& command) {
    std::FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
    if (!pipe) return -1;
    int lines = 0;
    for (int byte; (byte = std::fgetc(pipe)) != EOF;)
        lines += byte == '\n';
    const int status = pclose(pipe);
    return WIFEXITED(status) && WEXITSTATUS(status) <= 1 ? lines : -1;
}

struct Side {
    const char* name;
    std::function<int()> run;
    std::vector<double> ms;
    int found = 0;
};

SearchContext Scan(const std::string& text, const std::stop_token& stop = {}) {
    const ShaderService service{{}, [](const QString&) { return FetchResult(); }};
    SearchContext context = NewSearch(QString::fromStdString(text), true);
    RunSearch(
        context, service, [](float) { return true; }, stop);
    return context;
}

void Compare(const std::string& folder, const std::string& text) {
    std::vector<Side> sides;
    sides.push_back({"scan", [&] { return int(Scan(text).results.size()); }});
    sides.push_back({"bare loop", [&] { return ReadAll(folder) > 0 ? 0 : -1; }});
    const std::string arguments = " -i -F -l '" + text + "' '" + folder + "'";
    sides.push_back({"rg -j1", [&] { return FilesNamedBy("rg --no-config -j1 --no-ignore" + arguments); }});
    sides.push_back({"grep -r", [&] { return FilesNamedBy("grep -r" + arguments); }});
    for (int turn = -1; turn < kTurns; ++turn) {
        for (Side& side : sides) {
            const int64_t start = CounterNs();
            side.found = side.run();
            if (turn >= 0) side.ms.push_back(double(CounterNs() - start) / 1e6);
        }
    }
    for (Side& side : sides) {
        std::sort(side.ms.begin(), side.ms.end());
        std::printf("%-14s %-10s ", text.c_str(), side.name);
        if (side.found < 0)
            std::printf("not installed\n");
        else
            std::printf("%9d %9.0f %14.2f\n", side.found, side.ms[kTurns / 2],
                        sides[0].ms[kTurns / 2] / side.ms[kTurns / 2]);
    }
}

// From another thread's wish that a scan end to its end.
void MeasureStops() {
    std::vector<double> ms;
    for (int i = 0; i < 100; ++i) {
        std::stop_source stop;
        std::atomic<int64_t> wishedNs = 0;
        std::thread user([&] {
            SleepMs(20 + uint32_t(i));
            wishedNs = CounterNs();
            stop.request_stop();
        });
        Scan("kaleidofold", stop.get_token());
        const int64_t endNs = CounterNs();
        user.join();
        ms.push_back(double(endNs - wishedNs) / 1e6);
    }
    std::sort(ms.begin(), ms.end());
    std::printf("a stop takes %.2f ms, at worst %.2f ms\n", ms[50], ms.back());
}

// A scan for a term in every file keeps a record of each.
void MeasureMemory() {
    const auto scanned = [](const char* text) {
        const double before = test::ResidentMiB();
        const SearchContext context = Scan(text);
        std::printf("memory for %zu results: %.1f MiB\n", context.results.size(),
                    test::ResidentMiB() - before);
    };
    for (const char* text : {"etnes", "e"})
        scanned(text);
}

}  // namespace
}  // namespace pixelgrove

int main() {
    using namespace pixelgrove;
    const QTemporaryDir data;
    SetBaseFolders(ChooseFolders(data.filePath(QStringLiteral("program")), {}, QString()));
    const std::string folder = MakeCache();
    std::printf("%d files of 6 kB, medians of %d turns\n", kFiles, kTurns);
    std::printf("%-14s %-10s %9s %9s %14s\n", "term", "side", "files", "ms", "scan / side");
    for (const char* text : {"kaleidofold", "texture(", "etnes", "e"})
        Compare(folder, text);
    MeasureStops();
    MeasureMemory();
    return 0;
}
