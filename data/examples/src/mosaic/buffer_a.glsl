// The colour of each stone, in the texel of its column and row. Channel 0 is the camera, channel 1 this buffer's own
// last frame. A camera's picture is renewed a few times a second only, so the colours glide to it.
//
// Alpha says how much of the picture is the camera's: from 0, as long as it gives nothing, to 1.

uniform float Stones = 46.0; // from the lower edge of the picture to the upper one
uniform float Glide = 0.08;  // how much of the way to a new colour a stone goes in a frame

// A channel without a picture is black and see-through everywhere.
bool cameraSeesSomething()
{
    float light = 0.0;
    for (int i = 0; i < 25; i++)
        light += dot(texture(iChannel0, (vec2(i % 5, i / 5) + 0.5) / 5.0), vec4(1.0));
    return light > 0.02;
}

// Height of a chain of hills.
float hills(float x, float rough)
{
    return sin(x * 2.1 + 0.6) * 0.5 + sin(x * 5.3 + 1.9) * 0.22 + sin(x * 11.7) * rough;
}

// A sail: between the mast at x = 0 and a line that leans towards it. Positive inside.
float sail(vec2 p, float foot, float top, float width)
{
    float up = (p.y - foot) / (top - foot);
    float belly = width * (1.0 - up) * (1.0 + 0.35 * up);
    return min(min(p.x * sign(width), abs(belly) - p.x * sign(width)), min(p.y - foot, top - p.y));
}

// A bay at sunset, x from -0.9 to 0.9 and y from -0.5 to 0.5 or so.
vec3 bay(vec2 p)
{
    const float SHORE = -0.06;
    vec2 sun = vec2(0.18, 0.10);
    float t = iTime * 0.5;
    float h = p.y - SHORE;
    vec2 q = h > 0.0 ? p : vec2(p.x, SHORE - h); // the water mirrors the sky
    float away = length((q - sun) * vec2(1.0, 1.25));

    // Rays of two colours turn around the sun.
    float ray = 0.5 + 0.5 * cos(atan(q.y - sun.y, q.x - sun.x) * 18.0 + t * 0.35);
    vec3 color = mix(vec3(0.98, 0.68, 0.28), vec3(0.84, 0.30, 0.24), smoothstep(0.12, 0.55, away));
    color = mix(color, vec3(0.30, 0.16, 0.42), smoothstep(0.45, 0.98, away));
    color *= 0.86 + 0.22 * ray * smoothstep(0.10, 0.25, away);
    color = mix(color, vec3(1.0, 0.93, 0.62), smoothstep(0.118, 0.108, away));

    float far = SHORE + 0.075 + 0.050 * hills(q.x * 1.4, 0.10);
    color = mix(color, vec3(0.33, 0.25, 0.46), smoothstep(0.006, -0.006, q.y - far));
    float near = SHORE + 0.005 + 0.11 * smoothstep(-0.05, -0.85, q.x) * (1.0 + 0.5 * hills(q.x * 2.0, 0.2));
    color = mix(color, vec3(0.08, 0.24, 0.24), smoothstep(0.006, -0.006, q.y - near));

    if (h < 0.0) {
        // Waves: bands that grow towards the viewer, and the sun's road on them.
        float depth = -h;
        float wave = sin(26.0 * sqrt(depth + 0.02) * 4.0 - t * 2.0 + 1.3 * sin(p.x * 9.0 + t));
        vec3 sea = mix(vec3(0.06, 0.38, 0.46), vec3(0.03, 0.16, 0.34), smoothstep(0.0, 0.45, depth));
        color = mix(color * 0.85, sea, 0.45 + 0.40 * smoothstep(0.0, 0.3, depth) - 0.16 * wave);
        float road = exp(-pow((p.x - sun.x) / (0.05 + 0.35 * depth), 2.0));
        color += vec3(0.95, 0.62, 0.22) * road * smoothstep(0.1, 0.8, wave) * 0.75;
    }

    // A boat crosses the bay and comes back.
    float course = 0.55 * sin(t * 0.16 - 0.9);
    vec2 b = p - vec2(course, SHORE - 0.115 + 0.008 * sin(t * 2.2));
    b.x *= cos(t * 0.16 - 0.9) < 0.0 ? -1.0 : 1.0;
    b = mat2(1.0, 0.035 * sin(t * 1.7), -0.035 * sin(t * 1.7), 1.0) * b;
    color = mix(color, vec3(0.96, 0.90, 0.78), step(0.0, sail(b - vec2(0.006, 0.0), 0.028, 0.270, 0.125)));
    color = mix(color, vec3(0.80, 0.22, 0.16), step(0.0, sail(b + vec2(0.008, 0.0), 0.028, 0.230, -0.085)));
    float hull = min(b.y + 0.030, 0.022 - b.y);
    hull = min(hull, 0.125 - abs(b.x - 0.015) - 0.9 * (0.022 - b.y));
    color = mix(color, vec3(0.30, 0.13, 0.09), step(0.0, hull));
    return color;
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 stone = floor(fragCoord);
    vec2 wide = vec2(Stones * iResolution.x / iResolution.y, Stones);
    if (any(greaterThan(stone, wide + 1.0))) discard;

    vec2 uv = middle(stone) / wide;
    vec4 last = texelFetch(iChannel1, ivec2(stone), 0);
    bool isSeen = cameraSeesSomething();
    vec3 goal;
    if (isSeen) {
        // As in a mirror, and cut to the shape of the window: the texture is 16 by 9.
        vec2 cut = vec2(iResolution.x / iResolution.y * 9.0 / 16.0, 1.0);
        vec2 at = 0.5 + (uv - 0.5) * cut / max(cut.x, 1.0) * vec2(-1.0, 1.0);
        vec2 reach = 0.25 * cut / wide;
        for (int i = 0; i < 4; i++)
            goal += 0.25 * texture(iChannel0, at + reach * (vec2(i % 2, i / 2) * 2.0 - 1.0)).rgb;
    } else {
        goal = bay((uv - 0.5) * vec2(iResolution.x / iResolution.y, 1.0));
    }
    float pace = iFrame < 2 ? 1.0 : Glide;
    fragColor = vec4(mix(last.rgb, goal, pace), mix(last.a, isSeen ? 1.0 : 0.0, pace));
}
