// The water's surface: x is its height, y its height a frame before.
// Channel 0 is the keyboard, channel 1 this buffer's own last frame.
//
// A wave equation: a point lower than its neighbours is pulled up, a higher one down, and what moves goes on moving.
// Neighbours two pixels away make the waves run twice as fast as the next ones would.

const float PULL = 0.40;     // below 0.5, or the waves grow without end
const float DAMPING = 0.992;
const int REACH = 2;

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    if (iFrame < 2) {
        fragColor = vec4(0.0);
        return;
    }
    ivec2 at = ivec2(fragCoord);
    ivec2 high = ivec2(iResolution.xy) - 1;
    vec2 here = texelFetch(iChannel1, at, 0).xy;
    float around = texelFetch(iChannel1, ivec2(min(at.x + REACH, high.x), at.y), 0).x
                 + texelFetch(iChannel1, ivec2(max(at.x - REACH, 0), at.y), 0).x
                 + texelFetch(iChannel1, ivec2(at.x, min(at.y + REACH, high.y)), 0).x
                 + texelFetch(iChannel1, ivec2(at.x, max(at.y - REACH, 0)), 0).x;
    // Friction between a pixel and its four next neighbours: motion that differs from theirs wears off. It also
    // holds the two chequered halves of the grid together, which the pull over two pixels never connects.
    vec2 beside = texelFetch(iChannel1, ivec2(min(at.x + 1, high.x), at.y), 0).xy
                + texelFetch(iChannel1, ivec2(max(at.x - 1, 0), at.y), 0).xy
                + texelFetch(iChannel1, ivec2(at.x, min(at.y + 1, high.y)), 0).xy
                + texelFetch(iChannel1, ivec2(at.x, max(at.y - 1, 0)), 0).xy;
    float motion = here.x - here.y;
    motion = mix(motion, 0.25 * (beside.x - beside.y), 0.30);
    float next = here.x + motion * DAMPING + PULL * (around - 4.0 * here.x);
    next *= 0.9985;

    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    Key key = keyAt(p);
    vec2 d = p - key.center;
    next -= keyDown(iChannel0, key.code, iTime) * 0.060 * exp(-dot(d, d) * 900.0);
    if (iMouse.z > 0.0) {
        vec2 m = p - (iMouse.xy - 0.5 * iResolution.xy) / iResolution.y;
        next -= 0.040 * exp(-dot(m, m) * 1800.0);
    }
    // A drop of rain now and then keeps the pool alive.
    float drop = floor(iTime / 0.9);
    vec2 place = (fract(sin(vec2(drop * 12.9, drop * 78.2)) * 4375.85) - 0.5) * vec2(1.7, 0.95);
    vec2 r = p - place;
    if (fract(iTime / 0.9) < 0.07) next -= 0.060 * exp(-dot(r, r) * 2600.0);

    fragColor = vec4(clamp(next, -1.0, 1.0), here.x, 0.0, 1.0);
}
