#include "controls/SliderTrack.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace pixelgrove {

namespace {

float* FieldOf(RangeControlState& state, SliderHandle handle) {
    switch (handle) {
        case SliderHandle::Low:
            return &state.low;
        case SliderHandle::High:
            return &state.high;
        case SliderHandle::Value:
            return &state.value;
        default:
            return nullptr;
    }
}

}  // namespace

float HandleValue(const RangeControlState& state, SliderHandle handle) {
    if (handle == SliderHandle::Low) return state.low;
    return handle == SliderHandle::High ? state.high : state.value;
}

bool SetHandleValue(RangeControlState& state, SliderHandle handle, float value) {
    float* field = FieldOf(state, handle);
    if (!field || std::isnan(value)) return false;
    const float taken = WithinBounds(state, value);
    if (*field == taken) return false;
    *field = taken;
    return true;
}

float WithinBounds(const RangeControlState& state, float value) {
    if (value > state.maximum) value = state.maximum;
    return value < state.minimum ? state.minimum : value;
}

double TrackFraction(const RangeControlState& state, float value) {
    const double fraction =
        (double(value) - double(state.minimum)) / (double(state.maximum) - double(state.minimum));
    return std::isnan(fraction) ? 0.0 : std::clamp(fraction, 0.0, 1.0);
}

QRect HandleRect(const RangeControlState& state, SliderHandle handle, const QSize& track) {
    const int height = track.height();
    const int centre = int(TrackFraction(state, HandleValue(state, handle)) * track.width());
    QRect box(centre - kHandleWidth / 2, 0, kHandleWidth, height);
    if (handle == SliderHandle::Low) box.setHeight(height * 2 / 3);
    if (handle == SliderHandle::High) box.setTop(height / 3);
    return box;
}

SliderHandle HandleAt(const RangeControlState& state, bool twoHandles, const QSize& track,
                      const QPoint& point) {
    if (!QRect(QPoint(), track).contains(point)) return SliderHandle::None;
    std::array<SliderHandle, 2> handles = {SliderHandle::Low, SliderHandle::High};
    if (!twoHandles) handles = {SliderHandle::Value, SliderHandle::Value};
    SliderHandle hit = SliderHandle::None;
    for (SliderHandle handle : handles)
        if (HandleRect(state, handle, track).contains(point)) hit = handle;
    if (hit != SliderHandle::None) return hit;

    // Beside the boxes: above the middle of the track the upper handle goes first where both are as near.
    if (point.y() >= track.height() / 2) std::swap(handles[0], handles[1]);
    int nearest = kHandleWidth / 2 + kHandleReach + 1;
    for (SliderHandle handle : handles) {
        const int centre = HandleRect(state, handle, track).left() + kHandleWidth / 2;
        const int distance = std::abs(point.x() - centre);
        if (distance >= nearest) continue;
        nearest = distance;
        hit = handle;
    }
    return hit;
}

float DraggedValue(const RangeControlState& state, double x, int trackWidth) {
    const float value = float(x / trackWidth) * (state.maximum - state.minimum) + state.minimum;
    return WithinBounds(state, value);
}

float StepOf(const RangeControlState& state) {
    const float step = (state.maximum - state.minimum) / 1000.0f;
    return state.isFloat == 0 && std::fabs(step) < 1.0f ? std::copysign(1.0f, step) : step;
}

uint32_t MixedColour(uint32_t a, uint32_t b, int i, int n) {
    if (n <= 0) return a;
    uint32_t mixed = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const int64_t from = (a >> shift) & 0xff;
        const int64_t to = (b >> shift) & 0xff;
        const int64_t channel = std::clamp<int64_t>((from * (n - int64_t(i)) + to * i) / n, 0, 255);
        mixed |= uint32_t(channel) << shift;
    }
    return mixed;
}

}  // namespace pixelgrove
