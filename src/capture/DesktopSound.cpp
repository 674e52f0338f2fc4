#include "capture/DesktopSound.h"

#include <chrono>
#include <utility>

namespace pixelgrove {

namespace {

constexpr pa_usec_t kPacketUs = 20'000;
constexpr pa_usec_t kRarePacketUs = 250'000;  // while nobody looks
constexpr int kUnwantedPackets = 100;         // of the short ones, until then
constexpr const char* kStreamName = "Sound for shaders";

// What mixers show of who listens.
Owned<pa_proplist, pa_proplist_free> ProgramProperties() {
    Owned<pa_proplist, pa_proplist_free> list(pa_proplist_new());
    pa_proplist_sets(list.get(), PA_PROP_APPLICATION_NAME, "Pixelgrove");
    pa_proplist_sets(list.get(), PA_PROP_APPLICATION_ICON_NAME, "pixelgrove");
    return list;
}

pa_buffer_attr PacketsOf(pa_usec_t duration, const pa_sample_spec& spec) {
    pa_buffer_attr buffer{};
    buffer.maxlength = uint32_t(-1);
    buffer.fragsize = uint32_t(pa_usec_to_bytes(duration, &spec));
    return buffer;
}

bool HoldsInt16(pa_sample_format_t format) {
    return format == PA_SAMPLE_S16LE || format == PA_SAMPLE_S16BE;
}

}  // namespace

DesktopSound::DesktopSound(Roads roads) : roads_(std::move(roads)), loop_(pa_mainloop_new()) {}

void DesktopSound::EndContext(pa_context* context) {
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

void DesktopSound::EndStream(pa_stream* stream) {
    pa_stream_set_state_callback(stream, nullptr, nullptr);
    pa_stream_set_read_callback(stream, nullptr, nullptr);
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

void DesktopSound::Stop() {
    {
        const std::lock_guard lock(restLock_);
        isStopped_ = true;
    }
    restEnd_.notify_all();
    if (loop_) pa_mainloop_wakeup(loop_.get());
}

void DesktopSound::Listen() {
    // Without a descriptor for it there is no loop.
    if (!loop_) return;
    const auto properties = ProgramProperties();
    context_.reset(pa_context_new_with_proplist(pa_mainloop_get_api(loop_.get()), nullptr, properties.get()));
    if (!context_) return;
    const auto onState = [](pa_context*, void* self) { static_cast<DesktopSound*>(self)->OnContextState(); };
    pa_context_set_state_callback(context_.get(), onState, this);
    // A machine without a server is not to get one from us.
    if (pa_context_connect(context_.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0) isOver_ = true;
    while (!isOver_ && !isStopped_ && pa_mainloop_iterate(loop_.get(), 1, nullptr) >= 0) {
        if (isRare_) Rest();
    }
    stream_.reset();
    context_.reset();
}

void DesktopSound::OnContextState() {
    const pa_context_state_t state = pa_context_get_state(context_.get());
    if (!PA_CONTEXT_IS_GOOD(state)) isOver_ = true;
    if (state != PA_CONTEXT_READY) return;
    // By its own name: where there is no sound of outputs by the name of the default's, PipeWire would give
    // that of the microphone instead.
    const auto onOutput = [](pa_context*, const pa_sink_info* output, int, void* self) {
        static_cast<DesktopSound*>(self)->OnOutput(output);
    };
    pa_operation* operation =
        pa_context_get_sink_info_by_name(context_.get(), "@DEFAULT_SINK@", onOutput, this);
    if (operation)
        pa_operation_unref(operation);
    else
        isOver_ = true;
}

// Called with the output if there is one, and at the end or on an error with null.
void DesktopSound::OnOutput(const pa_sink_info* output) {
    if (!output) {
        if (!stream_) isOver_ = true;
        return;
    }
    pa_sample_spec spec = output->sample_spec;
    const bool isInt16 = HoldsInt16(spec.format);
    spec.format = isInt16 ? PA_SAMPLE_S16NE : PA_SAMPLE_FLOAT32NE;
    format_ = {isInt16 ? SoundFormat::Sample::Int16 : SoundFormat::Sample::Float32, spec.channels,
               double(spec.rate)};
    if (output->monitor_source_name)
        stream_.reset(pa_stream_new(context_.get(), kStreamName, &spec, &output->channel_map));
    if (!stream_) {
        isOver_ = true;
        return;
    }
    const auto onState = [](pa_stream*, void* self) { static_cast<DesktopSound*>(self)->OnStreamState(); };
    const auto onData = [](pa_stream*, size_t, void* self) {
        static_cast<DesktopSound*>(self)->TakePackets();
    };
    pa_stream_set_state_callback(stream_.get(), onState, this);
    pa_stream_set_read_callback(stream_.get(), onData, this);
    const pa_buffer_attr buffer = PacketsOf(kPacketUs, spec);
    // The device may go to sleep while nothing plays, whoever listens.
    const auto flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE |
                                         PA_STREAM_DONT_INHIBIT_AUTO_SUSPEND | PA_STREAM_START_UNMUTED);
    if (pa_stream_connect_record(stream_.get(), output->monitor_source_name, &buffer, flags) < 0)
        isOver_ = true;
}

void DesktopSound::OnStreamState() {
    const pa_stream_state_t state = pa_stream_get_state(stream_.get());
    if (state == PA_STREAM_READY && roads_.onConnected) roads_.onConnected();
    if (state == PA_STREAM_FAILED || state == PA_STREAM_TERMINATED) isOver_ = true;
}

void DesktopSound::TakePackets() {
    const void* data = nullptr;
    size_t size = 0;
    while (!isStopped_ && pa_stream_peek(stream_.get(), &data, &size) == 0 && size > 0) {
        // A hole in the stream has a size and no data.
        if (data) roads_.take(format_, {static_cast<const std::byte*>(data), size});
        pa_stream_drop(stream_.get());
    }
    FollowInterest();
}

// What plays may have the server send short packets all the same: here they come together.
void DesktopSound::Rest() {
    while (isRare_ && !isOver_ && !isStopped_ && pa_mainloop_iterate(loop_.get(), 0, nullptr) > 0) {
    }
    if (!isRare_ || isOver_) return;
    std::unique_lock lock(restLock_);
    restEnd_.wait_for(lock, std::chrono::microseconds(kRarePacketUs), [this] { return isStopped_.load(); });
}

// A server that refuses leaves the packets as they are.
void DesktopSound::FollowInterest() {
    unwanted_ = !roads_.takeInterest || roads_.takeInterest() ? 0 : unwanted_ + 1;
    const bool isRare = isRare_ ? unwanted_ > 0 : unwanted_ >= kUnwantedPackets;
    if (std::exchange(isRare_, isRare) == isRare) return;
    const pa_buffer_attr buffer =
        PacketsOf(isRare ? kRarePacketUs : kPacketUs, *pa_stream_get_sample_spec(stream_.get()));
    if (pa_operation* operation = pa_stream_set_buffer_attr(stream_.get(), &buffer, nullptr, nullptr))
        pa_operation_unref(operation);
}

}  // namespace pixelgrove
