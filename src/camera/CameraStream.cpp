#include "camera/CameraStream.h"

#include <gst/app/gstappsink.h>
#include <gst/gst.h>
#include <gst/video/video.h>

#include <algorithm>
#include <cstring>
#include <utility>

#include "media/LiveFeeds.h"
#include "platform/Owned.h"

namespace pixelgrove {

namespace {

// The first form that both sides know is taken. Cameras pack what is too much for their cable as JPEG.
constexpr const char* kForms =
    " ! capsfilter name=forms caps=\"video/x-raw,width=640,height=480;image/jpeg,width=640,height=480;"
    "video/x-raw;image/jpeg\" ! decodebin ! videoconvert ! appsink name=pictures sync=false drop=true "
    "max-buffers=1 enable-last-sample=false caps=video/x-raw,format=BGRx";

void EndPipeline(GstElement* pipeline) {
    gst_element_set_state(pipeline, GST_STATE_NULL);
    gst_object_unref(pipeline);
}

QString TakeText(GError* error) {
    const Owned<GError, g_error_free> own(error);
    return own ? QString::fromUtf8(own->message).trimmed() : QStringLiteral("it can't be opened");
}

QString ErrorText(GstMessage* message) {
    GError* error = nullptr;
    gst_message_parse_error(message, &error, nullptr);
    return TakeText(error);
}

BitmapRef PictureOf(const GstVideoFrame& frame) {
    const int width = std::min(GST_VIDEO_FRAME_WIDTH(&frame), kCameraWidth);
    const int height = std::min(GST_VIDEO_FRAME_HEIGHT(&frame), kCameraHeight);
    auto picture = CreateBitmap(width, height, 32, false);
    if (!picture) return nullptr;
    const auto* pixels = static_cast<const uint8_t*>(GST_VIDEO_FRAME_PLANE_DATA(&frame, 0));
    const int stride = GST_VIDEO_FRAME_PLANE_STRIDE(&frame, 0);
    for (int row = 0; row < height; ++row)
        std::memcpy(picture->Row(row), pixels + ptrdiff_t(row) * stride, size_t(width) * 4);
    return picture;
}

}  // namespace

CameraStream::CameraStream(TakeFunction take, WantFunction isWanted)
    : take_(std::move(take)), isWanted_(std::move(isWanted)) {}

void CameraStream::Stop() {
    isStopped_ = true;
    const std::shared_ptr<GstBus> bus = bus_.Copy();
    if (bus) gst_bus_post(bus.get(), gst_message_new_application(nullptr, gst_structure_new_empty("stop")));
}

QString CameraStream::Watch(const QByteArray& source) {
    if (isStopped_) return {};
    GError* error = nullptr;
    if (!gst_init_check(nullptr, nullptr, &error)) return TakeText(error);
    const QString reason = Play(source);
    return isStopped_ ? QString() : reason;
}

QString CameraStream::Play(const QByteArray& source) {
    GError* error = nullptr;
    GstElement* parsed =
        gst_parse_launch_full((source + kForms).constData(), nullptr, GST_PARSE_FLAG_FATAL_ERRORS, &error);
    if (!parsed) return TakeText(error);
    const Owned<GstElement, EndPipeline> pipeline(GST_ELEMENT(gst_object_ref_sink(parsed)));
    const Owned<GstElement, gst_object_unref> sink(gst_bin_get_by_name(GST_BIN(pipeline.get()), "pictures"));
    const std::shared_ptr<GstBus> bus(gst_element_get_bus(pipeline.get()), gst_object_unref);
    bus_.Exchange(bus);
    // A Stop from before had nowhere to leave word.
    if (isStopped_) return {};

    GstAppSinkCallbacks calls{};
    calls.new_sample = [](GstAppSink* from, gpointer self) {
        static_cast<const CameraStream*>(self)->TakePicture(from);
        return GST_FLOW_OK;
    };
    gst_app_sink_set_callbacks(GST_APP_SINK(sink.get()), &calls, this, nullptr);
    GstStateChangeReturn change = gst_element_set_state(pipeline.get(), GST_STATE_PAUSED);
    // What isn't live, as a file, is to come at its own rate and not as fast as it can.
    if (change == GST_STATE_CHANGE_NO_PREROLL)
        DropUnwanted(pipeline.get());
    else
        g_object_set(sink.get(), "sync", TRUE, nullptr);
    if (change != GST_STATE_CHANGE_FAILURE) change = gst_element_set_state(pipeline.get(), GST_STATE_PLAYING);
    if (change != GST_STATE_CHANGE_FAILURE) return WaitForEnd(bus.get());
    const Owned<GstMessage, gst_message_unref> failure(gst_bus_pop_filtered(bus.get(), GST_MESSAGE_ERROR));
    return failure ? ErrorText(failure.get()) : TakeText(nullptr);
}

QString CameraStream::WaitForEnd(GstBus* bus) const {
    constexpr auto kEnds = GstMessageType(GST_MESSAGE_ERROR | GST_MESSAGE_EOS | GST_MESSAGE_APPLICATION);
    while (!isStopped_) {
        const Owned<GstMessage, gst_message_unref> message(
            gst_bus_timed_pop_filtered(bus, GST_CLOCK_TIME_NONE, kEnds));
        if (!message) break;
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_ERROR) return ErrorText(message.get());
        if (GST_MESSAGE_TYPE(message.get()) == GST_MESSAGE_EOS)
            return QStringLiteral("it has come to its end");
    }
    return {};
}

// Before they are decoded and converted, which is most of the work.
void CameraStream::DropUnwanted(GstElement* pipeline) {
    const Owned<GstElement, gst_object_unref> forms(gst_bin_get_by_name(GST_BIN(pipeline), "forms"));
    const Owned<GstPad, gst_object_unref> pad(gst_element_get_static_pad(forms.get(), "src"));
    const auto onPicture = [](GstPad*, GstPadProbeInfo*, gpointer self) {
        return static_cast<CameraStream*>(self)->Passes() ? GST_PAD_PROBE_OK : GST_PAD_PROBE_DROP;
    };
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, onPicture, this, nullptr);
}

bool CameraStream::Passes() {
    const bool passes = isWanted_();
    // The last one would be an old one when somebody looks again.
    if (std::exchange(hasPassed_, passes) && !passes) take_(nullptr);
    return passes;
}

void CameraStream::TakePicture(GstAppSink* sink) const {
    const Owned<GstSample, gst_sample_unref> sample(gst_app_sink_pull_sample(sink));
    if (!sample) return;
    GstVideoInfo form;
    GstVideoFrame frame;
    if (!gst_video_info_from_caps(&form, gst_sample_get_caps(sample.get()))) return;
    if (!gst_video_frame_map(&frame, &form, gst_sample_get_buffer(sample.get()), GST_MAP_READ)) return;
    BitmapRef picture = PictureOf(frame);
    gst_video_frame_unmap(&frame);
    if (picture) take_(std::move(picture));
}

}  // namespace pixelgrove
