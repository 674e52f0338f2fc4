// DesktopSound: what the machine is playing, as frames of the default output device in that device's own
// form.
//
// By the PulseAudio client library, which PipeWire serves as well. The output is chosen once: neither another
// default nor a server that comes back is followed. While nothing plays and the device sleeps, no frames
// come. Listen is called once, by any thread; Stop by any other.
#pragma once

#include <pulse/pulseaudio.h>

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <span>

#include "audio/SoundFrames.h"
#include "platform/Owned.h"

namespace pixelgrove {

class DesktopSound {
  public:
    // What its owner has to do with it, all of it on the thread that listens.
    struct Roads {
        std::function<void(const SoundFormat&, std::span<const std::byte>)> take;  // gets whole frames
        std::function<void()> onConnected = {};  // an output is listened to from now on; may be empty
        // Whether anyone looked at the sound since the last call. While nobody does, packets come rarely, and
        // the machine sleeps longer between them. Empty: always.
        std::function<bool()> takeInterest = {};
    };
    explicit DesktopSound(Roads roads);
    DesktopSound(const DesktopSound&) = delete;
    DesktopSound& operator=(const DesktopSound&) = delete;

    // Returns after Stop, and without a message when there is no server or no output, or once they are gone.
    void Listen();
    // Counts for good. Doesn't wait.
    void Stop();

  private:
    static void EndContext(pa_context* context);
    static void EndStream(pa_stream* stream);

    void OnContextState();
    void OnOutput(const pa_sink_info* output);
    void OnStreamState();
    void TakePackets();
    void Rest();
    void FollowInterest();

    const Roads roads_;
    std::mutex restLock_;
    std::condition_variable restEnd_;
    std::atomic<bool> isStopped_{false};  // set under restLock_
    const Owned<pa_mainloop, pa_mainloop_free> loop_;
    // The listening thread's.
    Owned<pa_context, EndContext> context_;
    Owned<pa_stream, EndStream> stream_;
    SoundFormat format_;
    bool isRare_ = false;  // the packets
    int unwanted_ = 0;     // packets since the last that anyone looked at
    bool isOver_ = false;
};

}  // namespace pixelgrove
