// The camera's pictures from known sources to what the renderer takes, and what happens without one. No
// device is needed.
#include "camera/CameraCapture.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <thread>

#include "camera/CameraDevice.h"
#include "camera/CameraStream.h"
#include "media/LiveFeeds.h"
#include "support/SoundServer.h"

namespace pixelgrove {
namespace {

using test::WaitUntil;
using Colour = std::array<int, 3>;  // red, green, blue

constexpr const char* kRed = "videotestsrc is-live=true pattern=solid-color foreground-color=0xffff0000";
constexpr const char* kBlue = "videotestsrc is-live=true pattern=solid-color foreground-color=0xff0000ff";

class CameraTest : public testing::Test {
  protected:
    void TearDown() override {
        StopCamera();
        qunsetenv(kCameraVariable);
        PublishCameraNote({});
    }
    static void Start(const QByteArray& source) {
        qputenv(kCameraVariable, source);
        StartCamera();
    }
    static Colour At(const Bitmap& picture, int x, int y) {
        const uint8_t* pixel = picture.Row(y) + 4 * x;
        return {pixel[2], pixel[1], pixel[0]};
    }
    static bool Shows(const Colour& colour) {
        return WaitUntil([&] {
            const BitmapRef picture = LatestCameraPicture();
            return picture && At(*picture, 100, 100) == colour;
        });
    }
    static bool IsOverWith(const char* words) {
        return WaitUntil(
            [&] { return !LatestCameraPicture() && CameraNote().contains(QLatin1String(words)); });
    }
    static bool IsAnyThreadIn(int systemCall) {
        const QDir threads(QStringLiteral("/proc/self/task"));
        for (const QString& id : threads.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            QFile call(threads.filePath(id + QStringLiteral("/syscall")));
            if (call.open(QIODevice::ReadOnly) &&
                call.readLine().startsWith(QByteArray::number(systemCall) + ' '))
                return true;
        }
        return false;
    }
    static int MsOfStop() {
        const auto begin = std::chrono::steady_clock::now();
        StopCamera();
        const auto spent = std::chrono::steady_clock::now() - begin;
        return int(std::chrono::duration_cast<std::chrono::milliseconds>(spent).count());
    }
};

// The upper part of the test picture has seven bars, white at the left; below them the second field of the
// last quarter is brighter than all.
TEST_F(CameraTest, PicturesOfEveryFormComeTopFirstInTheSizeThatIsUsed) {
    constexpr Colour kWhite{255, 255, 255}, kYellow{255, 255, 0}, kCyan{0, 255, 255};
    const struct {
        const char* source;
        int width, height;  // the camera's
        int tolerance;
    } rows[] = {
        {"", 640, 480, 4},
        {" ! video/x-raw,width=1280,height=720", 1280, 720, 4},
        {" ! video/x-raw,format=YUY2,width=322,height=241", 322, 241, 6},
        {" ! video/x-raw,format=RGB,width=321,height=243", 321, 243, 4},
        {" ! video/x-raw,format=GRAY8,width=176,height=144", 176, 144, 20},
        {" ! jpegenc quality=95", 640, 480, 24},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.source);
        Start(QByteArray("videotestsrc is-live=true pattern=smpte") + row.source);
        ASSERT_TRUE(WaitUntil([] { return LatestCameraPicture() != nullptr; })) << CameraNote().toStdString();
        const BitmapRef picture = LatestCameraPicture();
        EXPECT_EQ(picture->width, std::min(row.width, 640));
        EXPECT_EQ(picture->height, std::min(row.height, 480));
        EXPECT_FALSE(picture->bottomUp);
        const bool isGrey = strstr(row.source, "GRAY8") != nullptr;
        const auto expectBar = [&](int bar, const Colour& colour) {
            const Colour seen = At(*picture, row.width * (2 * bar + 1) / 14, 5);
            const int grey = (299 * colour[0] + 587 * colour[1] + 114 * colour[2]) / 1000;
            for (size_t i = 0; i < 3; ++i)
                EXPECT_NEAR(seen[i], isGrey ? grey : colour[i], row.tolerance) << bar << ' ' << i;
        };
        expectBar(0, kWhite);
        expectBar(1, kYellow);
        expectBar(2, kCyan);
        if (picture->height == row.height) {
            EXPECT_GT(At(*picture, row.width / 4, row.height - 5)[1], 230) << "the lowest rows";
        }
        StopCamera();
        EXPECT_EQ(LatestCameraPicture(), nullptr);
    }
}

TEST_F(CameraTest, OneCaptureServesAllUntilItsCameraIsGone) {
    Start(kRed);
    EXPECT_EQ(CameraNote(), QStringLiteral("The camera is being opened."));
    ASSERT_TRUE(Shows({255, 0, 0}));
    EXPECT_EQ(CameraNote(), QString());
    Start(kBlue);
    const BitmapRef before = LatestCameraPicture();
    ASSERT_TRUE(WaitUntil([&] { return LatestCameraPicture() != before; }));
    EXPECT_TRUE(Shows({255, 0, 0}));
    StopCamera();

    // The next need after it was unplugged finds what is there then.
    Start(QByteArray(kRed) + " num-buffers=5");
    EXPECT_TRUE(IsOverWith("The camera gives no pictures: it has come to its end."));
    Start(kBlue);
    EXPECT_TRUE(Shows({0, 0, 255}));
}

TEST_F(CameraTest, WhatNobodyWantsIsNotMade) {
    std::atomic<bool> isWanted{true};
    std::atomic<int> pictures{0}, ends{0};
    CameraStream stream([&](const BitmapRef& picture) { ++(picture ? pictures : ends); },
                        [&]() -> bool { return isWanted; });
    std::thread watcher([&] { EXPECT_EQ(stream.Watch(kRed), QString()); });
    EXPECT_TRUE(WaitUntil([&] { return pictures >= 3; }));
    EXPECT_EQ(ends, 0);
    isWanted = false;
    EXPECT_TRUE(WaitUntil([&] { return ends == 1; }));
    const int before = pictures;
    isWanted = true;
    EXPECT_TRUE(WaitUntil([&] { return pictures > before; }));
    stream.Stop();
    watcher.join();
    EXPECT_EQ(ends, 1);
}

TEST_F(CameraTest, WhatGivesNoPicturesIsSaid) {
    for (const char* source :
         {"/dev/video987", "/dev/a \"b\\", "no-such-source", "videotestsrc !", "fakesink", "audiotestsrc",
          "videotestsrc num-buffers=8 ! identity error-after=4", "fakesrc num-buffers=2 sizetype=fixed"}) {
        Start(source);
        EXPECT_TRUE(IsOverWith("The camera gives no pictures: ")) << source;
        EXPECT_GT(CameraNote().size(), 35) << source;
    }
}

TEST_F(CameraTest, TheFirstDeviceThatTakesPicturesIsSought) {
    const QTemporaryDir folder;
    EXPECT_EQ(FirstCamera(folder.path()).problem, QStringLiteral("No camera was found."));
    for (const char* name : {"video10", "video", "videos", "audio1"}) {
        QFile file(folder.filePath(QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    EXPECT_EQ(FirstCamera(folder.path()).problem, QStringLiteral("No camera was found."));
    EXPECT_EQ(FirstCamera(folder.path()).description, QByteArray());
    // What can't be opened: the lower number is the first.
    for (const char* name : {"video11", "video9"}) {
        sockaddr_un address{AF_UNIX, {}};
        const QByteArray path = QFile::encodeName(folder.filePath(QLatin1String(name)));
        std::strncpy(address.sun_path, path.constData(), sizeof(address.sun_path) - 1);
        const int device = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        ASSERT_EQ(bind(device, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        close(device);
    }
    EXPECT_TRUE(FirstCamera(folder.path())
                    .problem.startsWith(QStringLiteral("The camera %1 can't be opened: ")
                                            .arg(folder.filePath(QStringLiteral("video9")))));
    qputenv(kCameraVariable, "/dev/a \"b\\");
    EXPECT_EQ(ChosenCamera().description, QByteArray("v4l2src device=\"/dev/a \\\"b\\\\\""));
}

// With threads of our own: those of GStreamer are hidden from ThreadSanitizer.
TEST_F(CameraTest, PicturesGoFromThreadToThreadWhole) {
    constexpr int kPictures = 2000;
    std::thread camera([] {
        for (int n = 1; n <= kPictures; ++n) {
            const auto picture = CreateBitmap(16, 2, 32, false);
            std::memcpy(picture->Row(0), &n, sizeof n);
            std::memcpy(picture->Row(1), &n, sizeof n);
            PublishCameraPicture(picture);
            PublishCameraNote(QString::number(n));
        }
    });
    int last = 0;
    while (last < kPictures) {
        const BitmapRef picture = LatestCameraPicture();
        if (!picture) continue;
        int first = 0, second = 0;
        std::memcpy(&first, picture->Row(0), sizeof first);
        std::memcpy(&second, picture->Row(1), sizeof second);
        ASSERT_EQ(first, second);
        ASSERT_GE(first, last);
        last = first;
        ASSERT_GE(CameraNote().toInt(), last - 1);
    }
    camera.join();
    PublishCameraPicture(nullptr);
}

TEST_F(CameraTest, ACameraThatHangsHoldsNobodyUpAndIsForgotten) {
    const QTemporaryDir folder;
    const QByteArray pipe = QFile::encodeName(folder.filePath(QStringLiteral("pipe")));
    ASSERT_EQ(mkfifo(pipe.constData(), 0600), 0);
    // Opening it blocks until somebody writes there.
    const auto isOpened = [&] {
        const int writer = open(pipe.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        if (writer >= 0) close(writer);
        return writer >= 0;
    };
    Start("filesrc location=" + pipe);
    ASSERT_TRUE(WaitUntil([] { return IsAnyThreadIn(SYS_openat); }));
    StartCamera();
    EXPECT_EQ(CameraNote(), QStringLiteral("The camera is being opened."));
    EXPECT_LT(MsOfStop(), 1000);

    Start(kRed);
    ASSERT_TRUE(Shows({255, 0, 0}));
    EXPECT_TRUE(WaitUntil(isOpened));
    EXPECT_TRUE(WaitUntil([&] { return !isOpened(); }));
    const BitmapRef before = LatestCameraPicture();
    EXPECT_TRUE(WaitUntil([&] { return LatestCameraPicture() != before; }));
    EXPECT_NE(LatestCameraPicture(), nullptr);
    EXPECT_EQ(CameraNote(), QString());
    StopCamera();

    // One that hangs in the middle of a picture, when it is closed.
    Start(QByteArray(kBlue) + " ! identity sleep-time=2000000");
    EXPECT_TRUE(Shows({0, 0, 255}));
    EXPECT_LT(MsOfStop(), 1000);
}

}  // namespace
}  // namespace pixelgrove
