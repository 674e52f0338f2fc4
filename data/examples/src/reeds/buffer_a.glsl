// Memory, not a picture. Channel 0 is the sound: row 0 its spectrum in 512 columns up to 20 kHz, row 1 its
// waveform. Channel 1 is this buffer's own last frame.
//
// The texel (n, 0) has for reed n: how loud its part of the sound is, the same with a slow fall, and how far the reed
// is bent and how fast it moves, as a spring does. The texel (0, 1) has how loud bass and all of it are.

uniform float Wind = 1.0;

// Loudest of the columns from one frequency to the next. Ears hear steps of frequency as ratios, so the parts
// grow from 40 Hz to 12 kHz.
float heard(int n)
{
    float ratio = pow(300.0, 1.0 / float(REEDS));
    float low = 40.0 * pow(ratio, float(n)) * 512.0 / 20000.0;
    int first = int(low);
    int last = max(first, int(low * ratio));
    float loud = 0.0;
    for (int i = first; i <= min(last, first + 24); i++)
        loud = max(loud, texelFetch(iChannel0, ivec2(i, 0), 0).x);
    return loud;
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    ivec2 at = ivec2(fragCoord);
    if (at.x >= REEDS || at.y > 1) discard;
    vec4 last = iFrame < 2 ? vec4(0.0) : texelFetch(iChannel1, at, 0);

    if (at.y == 1) {
        float bass = 0.0;
        float all = 0.0;
        for (int n = 0; n < REEDS; n++) {
            float loud = heard(n);
            bass += n < 14 ? loud / 14.0 : 0.0;
            all += loud / float(REEDS);
        }
        vec2 now = vec2(bass, all);
        fragColor = vec4(mix(last.xy, now, vec2(0.35, 0.12)), 0.0, 0.0);
        return;
    }

    float loud = heard(at.x);
    float level = mix(last.x, loud, loud > last.x ? 0.7 : 0.25);
    float glow = max(level, last.y * 0.955);

    // The wind comes in gusts from the left.
    float x = float(at.x) / float(REEDS);
    float gust = 0.5 + 0.5 * sin(iTime * 0.55 - x * 4.0) * sin(iTime * 0.23 + 1.0);
    float wind = Wind * (0.10 + 0.55 * gust + 0.12 * sin(iTime * 2.1 - x * 11.0 + hash(float(at.x))));
    float push = level * 1.5 * (at.x % 2 == 0 ? 1.0 : -1.0);
    float speed = (last.w + (wind + push - last.z) * 0.060) * 0.93;
    fragColor = vec4(level, glow, iFrame < 2 ? wind : last.z + speed, speed);
}
