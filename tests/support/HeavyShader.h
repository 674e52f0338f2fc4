// A shader that keeps the driver busy for longer and longer, on a machine of any speed.
#pragma once

#include <functional>

#include "core/AppState.h"
#include "platform/Clock.h"
#include "render/RenderThread.h"

namespace pixelgrove::test {

// Each frame takes about twice as long as the one before. The weight lies in the body of the loop: drivers
// that draw on the processor end loops after 65535 turns.
constexpr const char* kDoublingShader =
    "float a(float x) { return sin(sin(sin(sin(x + iTime)))); }\n"
    "float b(float x) { return a(a(a(a(x)))); }\n"
    "void mainImage(out vec4 c, in vec2 p) {\n"
    "  float x = p.x;\n"
    "  int n = 1 << min(iFrame, 15);\n"
    "  for (int i = 0; i < n; ++i) x = b(b(b(b(x))));\n"
    "  c = vec4(x);\n"
    "}\n";

// Waits until a frame of that shader has taken so long: the next one, which has just begun, takes about twice
// that. idle runs in between. False when none comes within two minutes.
inline bool WaitForLongFrame(int milliseconds, const std::function<void()>& idle) {
    const int64_t start = CounterNs();
    int64_t frameStart = start;
    uint64_t drawn = 0;
    while (CounterNs() - start < 120'000'000'000) {
        const uint64_t now = App()->renderThread->framesDrawn;
        if (now != drawn) {
            if (drawn > 0 && CounterNs() - frameStart > milliseconds * int64_t(1'000'000)) return true;
            drawn = now;
            frameStart = CounterNs();
        }
        idle();
        SleepMs(1);
    }
    return false;
}

}  // namespace pixelgrove::test
