// Buffer A is used as memory, not as a picture: the texel (n, 0) holds lantern n as
// (x, y, size, brightness). So all of this is worked out once for each lantern, not once for each pixel.
// Channel 0 is this buffer's own last frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    float n = floor(fragCoord.x);
    vec2 last = texelFetch(iChannel0, ivec2(0, 1), 0).xy;

    // The texel (0, 1) holds where the viewer looks; it follows the mouse softly.
    vec2 goal = iMouse.z > 0.0 ? iMouse.xy / iResolution.xy - 0.5 : vec2(0.10 * sin(iTime * 0.11), 0.0);
    if (floor(fragCoord.y) == 1.0) {
        fragColor = vec4(iFrame < 2 ? goal : mix(last, goal, 0.08), 0.0, 0.0);
        return;
    }

    float pan = iFrame < 2 ? 0.0 : last.x * 0.4;
    float near = fract(n * 0.618034 + 0.31); // multiples of the golden ratio spread evenly over the depths
    near = near * near * near;
    float size = mix(0.010, 0.078, near);

    // Each lantern rises, leaves the picture, and comes back somewhere else.
    float trip = hash1(n + 2.0) + iTime * mix(0.008, 0.021, near);
    float rise = fract(trip);
    float spot = hash1(n * 3.7 + floor(trip) * 5.1 + 0.3);
    float sway = 0.025 * sin(iTime * 0.5 + n * 2.4) * (0.4 + near);
    float x = (spot - 0.5) * 2.1 + sway + pan * near * 0.8;
    float y = HORIZON + 0.035 + 0.05 * near + rise * 0.74;

    float flicker = 0.88 + 0.12 * sin(iTime * 7.0 + n * 5.0) * sin(iTime * 4.3 + n);
    float fade = smoothstep(0.0, 0.06, rise) * smoothstep(1.0, 0.90, rise);
    fragColor = vec4(x, y, size, flicker * fade * (0.55 + 0.65 * sqrt(near)));
}
