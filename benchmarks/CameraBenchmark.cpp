// What the camera costs: its capture while a run looks at the pictures and while nobody does, and a frame
// that takes one beside those that don't. A still picture that GStreamer gives 30 times a second stands in
// for a camera.
#include <sys/resource.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

#include "camera/CameraCapture.h"
#include "camera/CameraDevice.h"
#include "media/LiveFeeds.h"
#include "support/Engine.h"

namespace pixelgrove {
namespace {

constexpr int kSeconds = 8;
constexpr int kFramesOfGrab = 16;

double ProcessSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& time) {
        return double(time.tv_sec) + 1e-6 * double(time.tv_usec);
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

// With four looks a second at its pictures, as a run at 60 frames a second has, or with none.
double ShareOfACore(bool isWatched) {
    const double before = ProcessSeconds();
    for (int i = 0; i < 4 * kSeconds; ++i) {
        if (isWatched) LatestCameraPicture();
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
    }
    return 100.0 * (ProcessSeconds() - before) / kSeconds;
}

bool Start(const QByteArray& source) {
    qputenv(kCameraVariable, source);
    StartCamera();
    for (int i = 0; i < 1000 && !LatestCameraPicture(); ++i)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return LatestCameraPicture() != nullptr;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + long(values.size() / 2), values.end());
    return values[values.size() / 2];
}

void MeasureCapture(const char* name, const QByteArray& source) {
    if (Start(source)) {
        const double watched = ShareOfACore(true);
        std::this_thread::sleep_for(std::chrono::milliseconds(kCameraLookMs + 500));
        std::printf("%-28s %5.2f %% of a core, nobody looks: %5.2f %%\n", name, watched, ShareOfACore(false));
    } else {
        std::printf("%-28s %s\n", name, qPrintable(CameraNote()));
    }
    StopCamera();
}

// One pass of a few pixels, so that the picture's way to the texture is nearly all that a frame does.
void MeasureGrab(const QByteArray& source) {
    if (!Start(source)) return;
    test::Engine engine;
    test::SetKind(engine.Channel(kStageImage, 0), kChannelWebcam);
    if (!engine.Play("void mainImage(out vec4 c, in vec2 p) { c = texture(iChannel0, p); }", 16, 16)) return;
    std::array<std::vector<double>, kFramesOfGrab> times;
    for (int frame = 0; frame < 100 * kFramesOfGrab; ++frame) {
        const auto begin = std::chrono::steady_clock::now();
        engine.Draw(1);
        glFinish();
        const std::chrono::duration<double, std::micro> spent = std::chrono::steady_clock::now() - begin;
        times[size_t(frame % kFramesOfGrab)].push_back(spent.count());
    }
    std::vector<double> medians;
    for (const std::vector<double>& of : times)
        medians.push_back(Median(of));
    std::printf("frame that takes a picture   %7.1f us\nframe that takes none        %7.1f us\n",
                *std::max_element(medians.begin(), medians.end()), Median(medians));
    StopCamera();
}

}  // namespace
}  // namespace pixelgrove

int main() {
    using namespace pixelgrove;
    const auto still = [](const char* form) {
        return QByteArray("videotestsrc num-buffers=1 ! video/x-raw,") + form +
               " ! imagefreeze is-live=true ! video/x-raw,framerate=30/1";
    };
    std::printf("%-28s %5.2f %% of a core\n", "no camera", ShareOfACore(true));
    MeasureCapture("640x480 BGRx", still("format=BGRx,width=640,height=480"));
    MeasureCapture("640x480 YUY2", still("format=YUY2,width=640,height=480"));
    MeasureCapture("1280x720 YUY2", still("format=YUY2,width=1280,height=720"));
    MeasureCapture("640x480 JPEG, made here too", still("format=I420,width=640,height=480") + " ! jpegenc");
    MeasureGrab(still("format=YUY2,width=640,height=480"));
    return 0;
}
