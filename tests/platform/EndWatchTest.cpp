#include "platform/EndWatch.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <thread>

namespace pixelgrove {
namespace {

// In a process of its own: runs `inLoop` from the event loop, with a save that writes down that it ran.
void EndBy(const std::function<void()>& inLoop) {
    int argc = 1;
    char name[] = "test";
    char* argv[] = {name, nullptr};
    QCoreApplication application(argc, argv);
    const pthread_t mainThread = pthread_self();
    const EndWatch watch([mainThread] {
        if (pthread_equal(pthread_self(), mainThread)) std::fputs("saved", stderr);
        std::exit(99);  // what is saved may lead here again
    });
    QTimer::singleShot(0, inLoop);
    QCoreApplication::exec();
    std::_Exit(98);
}

TEST(EndWatch, SavesAndEndsWithTheStatusOfTheCause) {
    const std::pair<int, std::function<void()>> rows[] = {
        {143, [] { raise(SIGTERM); }},
        {130, [] { raise(SIGINT); }},
        {129, [] { raise(SIGHUP); }},
        // In an event loop within.
        {143,
         [] {
             raise(SIGTERM);
             QEventLoop().exec();
         }},
        {7, [] { std::exit(7); }},
        {7, [] { std::thread([] { std::exit(7); }).detach(); }},
    };
    for (const auto& [status, cause] : rows)
        EXPECT_EXIT(EndBy(cause), testing::ExitedWithCode(status), "saved");
}

TEST(EndWatch, ASecondSignalDoesNotWait) {
    const auto stuck = [] {
        raise(SIGTERM);
        raise(SIGINT);
        for (;;)
            pause();
    };
    EXPECT_EXIT(EndBy(stuck), testing::ExitedWithCode(130), "^$");
}

TEST(EndWatch, StandsAside) {
    const auto ignored = [] {
        signal(SIGHUP, SIG_IGN);  // as nohup does
        EndBy([] {
            raise(SIGHUP);
            QTimer::singleShot(0, [] { QCoreApplication::quit(); });
        });
    };
    EXPECT_EXIT(ignored(), testing::ExitedWithCode(98), "^$");
    const auto past = [] {
        int argc = 0;
        QCoreApplication application(argc, nullptr);
        {
            const EndWatch watch([] { std::fputs("saved", stderr); });
        }
        std::exit(5);
    };
    EXPECT_EXIT(past(), testing::ExitedWithCode(5), "^$");
}

}  // namespace
}  // namespace pixelgrove
