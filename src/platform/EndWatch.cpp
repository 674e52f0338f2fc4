#include "platform/EndWatch.h"

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <stdlib.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <iterator>
#include <utility>

namespace pixelgrove {

namespace {

constexpr int kNoStatus = -1;
constexpr std::array kSignals = {SIGTERM, SIGINT, SIGHUP};

// What the handlers and other threads may touch.
std::atomic<int> endStatus{kNoStatus};  // with which the process is to end; written by whoever is first
std::atomic<int> wakeUp{-1};            // the pipe's end that wakes the main thread

// Main thread.
int readEnd = -1;
pid_t process;
pthread_t mainThread;
std::function<void()> saveAll;
std::array<struct sigaction, std::size(kSignals)> formerActions;
struct sigaction formerAlarm;

void WakeMainThread() {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(wakeUp, &byte, 1);
}

extern "C" void OnEndSignal(int number) {
    const int before = errno;
    int none = kNoStatus;
    if (!endStatus.compare_exchange_strong(none, 128 + number)) _exit(128 + number);
    alarm(kEndPatienceS);
    WakeMainThread();
    errno = before;
}

extern "C" void OnPatienceGone(int) {
    _exit(endStatus);
}

// Main thread.
[[noreturn]] void SaveAndEnd() {
    alarm(kEndPatienceS);
    if (const auto save = std::exchange(saveAll, nullptr)) save();
    _exit(endStatus);
}

extern "C" void OnExit(int status, void*) {
    // A child that was forked and not yet made another program has nothing to save.
    if (wakeUp < 0 || getpid() != process) return;
    int none = kNoStatus;
    endStatus.compare_exchange_strong(none, status);
    // Saving may have come here itself; there is nothing more to be done then.
    if (pthread_equal(pthread_self(), mainThread)) SaveAndEnd();
    // What is to be saved is the main thread's.
    WakeMainThread();
    sleep(kEndPatienceS);
    _exit(endStatus);
}

int MakePipe() {
    int ends[2] = {-1, -1};
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return -1;
    wakeUp = ends[1];
    return readEnd = ends[0];
}

}  // namespace

EndWatch::EndWatch(std::function<void()> save) : notifier_(MakePipe(), QSocketNotifier::Read) {
    if (readEnd < 0) return;
    process = getpid();
    mainThread = pthread_self();
    saveAll = std::move(save);
    QObject::connect(&notifier_, &QSocketNotifier::activated, [] { SaveAndEnd(); });

    struct sigaction action {};
    action.sa_flags = SA_RESTART;
    action.sa_handler = OnPatienceGone;
    sigaction(SIGALRM, &action, &formerAlarm);
    action.sa_handler = OnEndSignal;
    for (size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &formerActions[i]);
        if (formerActions[i].sa_handler != SIG_IGN) sigaction(kSignals[i], &action, nullptr);
    }
    // Twice: an exit() within the first call, by what is being saved, goes on with the next.
    static const bool isRegistered = on_exit(OnExit, nullptr) == 0 && on_exit(OnExit, nullptr) == 0;
    (void)isRegistered;
}

EndWatch::~EndWatch() {
    if (readEnd < 0) return;
    for (size_t i = 0; i < kSignals.size(); ++i)
        sigaction(kSignals[i], &formerActions[i], nullptr);
    // A signal that came too late for the event loop: the program is on its way out already.
    if (endStatus != kNoStatus) alarm(0);
    sigaction(SIGALRM, &formerAlarm, nullptr);
    notifier_.setEnabled(false);
    saveAll = nullptr;
    close(wakeUp.exchange(-1));
    close(std::exchange(readEnd, -1));
    endStatus = kNoStatus;
}

}  // namespace pixelgrove
