// Night reeds
//
// Channel 0 is what each reed heard (see Buffer A). The pond shows the same picture upside down, shaken by waves
// that the bass makes larger.

uniform float Wind = 1.0;     // air: strength of the wind [0.0..2.5, 1.0]
uniform float Fireflies = 1.0; // air: brightness of the fireflies [0.0..3.0, 1.0]
uniform float Light = 1.0;    // reeds: brightness of what they hear [0.0..3.0, 1.0]
uniform float Height = 1.0;   // reeds: how high they are [0.5..1.5, 1.0]
uniform float Waves = 1.0;    // water: height of the waves [0.0..3.0, 1.0]

const float REACH = 0.2; // how far a reed bends and shines to the side

// From low sounds to high ones.
vec3 tone(float x)
{
    return 0.55 + 0.45 * cos(6.2832 * (vec3(0.02, 0.36, 0.62) - 0.78 * x));
}

vec3 sky(vec2 p)
{
    float h = p.y - WATER;
    vec3 color = mix(vec3(0.20, 0.30, 0.38), vec3(0.030, 0.060, 0.13), smoothstep(-0.05, 0.45, h));
    color = mix(color, vec3(0.010, 0.016, 0.050), smoothstep(0.25, 0.75, h));

    vec2 m = p - vec2(-0.52, 0.31);
    float d = length(m);
    float disc = smoothstep(0.060, 0.057, d) * smoothstep(0.050, 0.054, length(m - vec2(0.028, 0.012)));
    color += vec3(1.0, 0.95, 0.80) * disc + vec3(0.30, 0.36, 0.40) * 0.012 / (d * d * 9.0 + 0.05);

    vec2 cell = floor(p * 42.0);
    float luck = hash(cell.x + 71.0 * cell.y);
    vec2 star = fract(p * 42.0) - 0.3 - 0.4 * vec2(hash(luck * 19.0), hash(luck * 31.0));
    float twinkle = 0.7 + 0.3 * sin(iTime * 1.7 + luck * 80.0);
    color += smoothstep(0.075, 0.0, length(star)) * pow(luck, 8.0) * twinkle * smoothstep(0.12, 0.5, h);

    // Two lines of trees on the other shore, and the mist before them.
    for (int i = 0; i < 2; i++) {
        float k = float(i);
        float x = p.x * (1.0 + 0.6 * k) + 3.0 * k;
        float top = 0.060 - 0.022 * k + 0.022 * sin(x * 5.0 + k) + 0.010 * sin(x * 17.0)
                  + 0.006 * abs(sin(x * 61.0)) + 0.004 * abs(sin(x * 137.0));
        color = mix(color, mix(vec3(0.060, 0.105, 0.14), vec3(0.020, 0.045, 0.060), k),
                    smoothstep(0.004, -0.004, h - top));
        color += vec3(0.10, 0.15, 0.17) * exp(-h * (26.0 + 20.0 * k)) * (0.75 + 0.25 * sin(p.x * 4.0 + iTime * 0.12));
    }
    return color;
}

// Adds the reeds, what they light up, and the fireflies above them.
vec3 addReeds(vec3 color, vec2 p, float soft)
{
    float wide = iResolution.x / iResolution.y;
    vec3 light = vec3(0.0);
    // They stand in a row: those that are too far away to be seen here, or to shine so far, are not looked at.
    vec2 part = (vec2(p.x - REACH, p.x + REACH) / (wide - 0.06) + 0.5) * float(REEDS);
    int first = clamp(int(part.x), 0, REEDS);
    int end = clamp(int(part.y) + 1, 0, REEDS);
    for (int n = first; n < end; n++) {
        float k = float(n);
        vec4 reed = texelFetch(iChannel0, ivec2(n, 0), 0);
        float x = (k + 0.5) / float(REEDS);
        float foot = (x - 0.5) * (wide - 0.06) + 0.018 * (hash(k) - 0.5);
        float tall = Height * (0.20 + 0.20 * hash(k + 40.0)) * (1.0 + 0.10 * reed.x);
        float up = (p.y - WATER + 0.02 * hash(k + 7.0)) / tall;
        float across = p.x - foot;
        float bend = 0.075 * reed.z * tall / 0.3;
        vec3 own = tone(x);
        float level = reed.x * Light;
        float glow = reed.y * Light;

        // The stalk bends as the square of its height.
        float at = clamp(up, 0.0, 1.0);
        float side = abs(across - bend * at * at);
        float thick = mix(0.0030, 0.0014, at);
        float stalk = smoothstep(soft, -soft, side - thick) * step(0.0, up) * step(up, 1.0);
        vec3 green = mix(vec3(0.020, 0.050, 0.045), vec3(0.10, 0.17, 0.11), at * at);
        color = mix(color, green + own * (0.10 * glow + 0.9 * level * at * at), stalk);

        // A leaf on every second one.
        float leafAt = clamp((up - 0.08) / (0.45 + 0.2 * hash(k + 3.0)), 0.0, 1.0);
        float turn = n % 2 == 0 ? 1.0 : -1.0;
        float leaf = abs(across - bend * at * at - turn * 0.055 * leafAt * leafAt);
        float blade = smoothstep(soft, -soft, leaf - 0.0042 * leafAt * (1.0 - leafAt) * 2.2);
        color = mix(color, green * 0.85 + own * 0.08 * glow, blade * step(0.08, up) * step(leafAt, 0.995));

        // The head: a brown cigar that lights up.
        vec2 tip = vec2(foot + bend * 0.93, WATER - 0.02 * hash(k + 7.0) + tall * 0.96);
        vec2 q = p - tip;
        q.x -= bend * 1.9 * q.y / tall;
        float cigar = length(vec2(q.x, max(abs(q.y) - 0.026, 0.0))) - 0.0068;
        vec3 head = mix(vec3(0.13, 0.075, 0.045), own, 0.45 * min(glow, 1.0));
        head += own * (0.9 * glow + 2.2 * level) * (1.0 - 0.5 * smoothstep(-0.007, 0.0, cigar));
        head += vec3(0.10, 0.13, 0.14) * smoothstep(0.004, -0.004, q.x + 0.003);
        color = mix(color, head, smoothstep(soft, -soft, cigar));
        float away = dot(q, q);
        light += own * (level * 1.4 + glow * 0.5) * (0.00085 / (away + 0.0009)) * smoothstep(REACH, 0.1, abs(across));
    }

    for (int i = 0; i < 14; i++) {
        float k = float(i) * 3.7;
        float t = iTime * 0.24 + k;
        vec2 fly = vec2((hash(k) - 0.5) * (wide + 0.1) + 0.12 * sin(t * 1.3) + 0.05 * sin(t * 3.1 + k),
                        WATER + 0.10 + 0.26 * hash(k + 1.0) + 0.06 * sin(t * 1.7 + k));
        vec2 q = p - fly;
        float blink = smoothstep(0.1, 0.9, sin(iTime * 1.1 + k * 5.0) * 0.5 + 0.5);
        light += vec3(0.85, 0.95, 0.35) * blink * Fireflies * 0.000035 / (dot(q, q) + 0.00003);
    }
    return color + light;
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    vec2 loud = texelFetch(iChannel0, ivec2(0, 1), 0).xy;
    float soft = 0.7 / iResolution.y;

    float depth = WATER - p.y; // below 0 in the air
    vec2 q = p;
    float slope = 0.0;
    if (depth > 0.0) {
        float away = 0.12 / (depth + 0.02);
        vec2 w = vec2(p.x * away * 4.0, away * 7.0);
        slope = sin(w.y * 2.3 + w.x * 0.7 + iTime * 0.9) + 0.6 * sin(w.y * 4.1 - w.x * 1.9 + iTime * 1.6)
              + (0.4 + 3.0 * loud.x) * sin(w.y * 8.3 + w.x * 0.4 - iTime * 5.0);
        float height = Waves * (0.004 + 0.05 * depth) * (0.7 + 1.6 * loud.x);
        q.y = WATER + depth + height * slope;
        q.x += 0.35 * height * sin(w.x * 2.7 + w.y * 1.7 - iTime);
        q.y = max(q.y, WATER + 0.0005);
        soft *= 2.0;
    }
    vec3 color = sky(q) + vec3(0.05, 0.06, 0.09) * loud.y;
    color = addReeds(color, q, soft);
    if (depth > 0.0) {
        float steep = clamp(depth * 3.0, 0.0, 1.0);
        color = color * mix(vec3(0.72, 0.78, 0.80), vec3(0.30, 0.40, 0.46), steep)
              + vec3(0.004, 0.012, 0.018) * (1.0 + 0.4 * slope);
    }
    float band = exp(-abs(depth) * 42.0);
    color += vec3(0.045, 0.070, 0.080) * band;

    color = 1.0 - exp(-color * 1.6);
    vec2 uv = fragCoord / iResolution.xy;
    color *= 0.60 + 0.40 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.25);
    color += (hash(fragCoord.x + 311.0 * fragCoord.y) - 0.5) / 255.0;
    fragColor = vec4(color, 1.0);
}
