// Lantern lake
//
// The upper part of the picture is a sky with a moon, mountains and rising lanterns. The lower part is water:
// there the same function is asked again, at the mirrored height, shaken by a few waves. So the mirror image
// costs nothing extra: every pixel calls scene() once.

uniform int Lanterns = 40;   // lanterns: how many rise [0..40, 40]
uniform float Glow = 1.0;    // lanterns: brightness [0.0..2.5, 1.0]
uniform float Ripples = 1.0; // water: height of the waves [0.0..3.0, 1.0]
uniform float Mist = 1.0;    // air: density [0.0..2.5, 1.0]

const vec2 MOON = vec2(0.47, 0.27);

// Ridge of one mountain range: a sum of sines with odd frequencies never seems to repeat.
float ridge(float x, float seed)
{
    float broad = sin(x * 1.7 + seed) + 0.55 * sin(x * 3.9 + seed * 2.3);
    float rough = abs(sin(x * 7.3 + seed * 1.3)) * 0.34 + abs(sin(x * 17.7 + seed * 3.1)) * 0.13
                + abs(sin(x * 41.0 + seed * 0.7)) * 0.05;
    return 0.5 * broad - rough;
}

// Tops of the fir trees on the near shore.
float firs(float x)
{
    float edge = 0.0;
    for (int i = 0; i < 2; i++) {
        float scale = i == 0 ? 31.0 : 53.0;
        float u = x * scale + float(i) * 0.37;
        float tree = floor(u);
        float height = 0.35 + 0.65 * hash1(tree + float(i) * 17.0);
        float side = abs(fract(u) - 0.5) * 2.0;            // 0 at the trunk, 1 at the tips
        float comb = 0.10 * abs(fract(side * 4.0) - 0.5);   // the boughs
        edge = max(edge, height * (1.0 - side - comb) / (scale * 0.55));
    }
    return edge;
}

vec3 sky(vec2 p)
{
    float h = clamp((p.y - HORIZON) * 1.5, 0.0, 1.0);
    vec3 color = mix(vec3(1.05, 0.44, 0.19), vec3(0.50, 0.19, 0.30), smoothstep(0.0, 0.20, h));
    color = mix(color, vec3(0.09, 0.085, 0.23), smoothstep(0.10, 0.52, h));
    color = mix(color, vec3(0.018, 0.026, 0.085), smoothstep(0.40, 1.0, h));

    // Long thin clouds, lit from below.
    float veil = sin(p.x * 2.3 + p.y * 9.0 + 0.03 * iTime) + sin(p.x * 4.1 - p.y * 23.0 + 1.7)
               + 0.6 * sin(p.x * 9.7 + p.y * 41.0 - 0.05 * iTime);
    float bank = exp(-pow((h - 0.26) * 6.0, 2.0));
    color += vec3(0.62, 0.20, 0.16) * smoothstep(0.2, 2.2, veil) * bank * 0.55;

    // Stars: one in every cell of a grid, most of them too faint to see.
    vec2 cell = floor(p * 46.0);
    float luck = hash2(cell);
    vec2 star = fract(p * 46.0) - 0.25 - 0.5 * vec2(hash2(cell + 7.1), hash2(cell + 3.7));
    float twinkle = 0.7 + 0.3 * sin(iTime * 2.0 + luck * 90.0);
    float spark = smoothstep(0.085, 0.0, length(star)) * pow(luck, 9.0) * twinkle;
    color += vec3(0.85, 0.90, 1.0) * spark * smoothstep(0.25, 0.7, h) * 1.6;

    // The moon with a soft shadow and its halo.
    vec2 m = p - MOON;
    float d = length(m);
    float disc = smoothstep(0.0022, -0.0022, d - 0.062);
    float seas = sin(m.x * 61.0 + 2.0 * sin(m.y * 37.0 + 0.6)) * cos(m.y * 47.0 + 1.5 * sin(m.x * 71.0));
    vec3 moon = vec3(1.0, 0.90, 0.74) * (1.75 - 0.35 * smoothstep(0.0, 0.5, seas) + 6.0 * dot(m, vec2(-0.8, 0.6)));
    color = mix(color, moon, disc);
    color += vec3(0.60, 0.44, 0.36) * (0.020 / (d * d * 5.0 + 0.045)) * (1.0 - disc);
    return color;
}

// Adds one mountain range; near 0 is far away, near 1 is close.
vec3 addRange(vec3 color, vec2 p, float near, float pan)
{
    float x = p.x * (1.5 - 0.75 * near) + pan * (0.2 + near);
    float top = HORIZON + 0.165 - 0.125 * near + (0.115 - 0.060 * near) * ridge(x, 11.0 - near * 9.0);
    float mask = smoothstep(0.0025, -0.0025, p.y - top);
    vec3 rock = mix(vec3(0.36, 0.17, 0.27), vec3(0.035, 0.040, 0.085), sqrt(near));
    // Mist lies in the valleys: thick at the foot, thin at the top.
    float foot = exp(-(p.y - HORIZON) * mix(13.0, 30.0, near));
    vec3 mist = mix(vec3(0.98, 0.47, 0.30), vec3(0.34, 0.20, 0.30), near);
    rock = mix(rock, mist, clamp(foot * Mist * (0.80 - 0.45 * near), 0.0, 1.0));
    return mix(color, rock, mask);
}

// Light of all lanterns at p, and in w how much of what is behind them their paper hides.
vec4 lanterns(vec2 p)
{
    // Bags seldom overlap: the loop adds up the glow of all and only remembers the bag that p is deepest in.
    float glow = 0.0;
    float nearest = 1e9;
    vec2 bag = vec2(9.0);
    vec2 which = vec2(0.05, 0.0); // its size and brightness
    for (int i = 0; i < Lanterns; i++) {
        vec4 lantern = texelFetch(iChannel0, ivec2(i, 0), 0);
        vec2 q = (p - lantern.xy) / lantern.z;
        float g = dot(q, q);
        glow += lantern.w * (0.062 / (0.45 + g) + 0.0011 / (0.05 + g * 0.004));
        if (g < nearest) {
            nearest = g;
            bag = q;
            which = lantern.zw;
        }
    }
    vec3 light = vec3(1.0, 0.42, 0.12) * glow;

    // A paper bag: wider above than below, with round corners.
    vec2 q = bag;
    q.x += 0.12 * sin(iTime * 0.7 + which.x * 900.0) * q.y;
    float width = 0.50 + 0.13 * q.y - 0.05 * q.y * q.y;
    vec2 e = vec2(abs(q.x) - width + 0.16, abs(q.y) - 0.52);
    float d = length(max(e, 0.0)) + min(max(e.x, e.y), 0.0) - 0.16;
    float soft = 0.0026 / which.x;
    float mask = smoothstep(soft, -soft, d);

    // The flame sits at the bottom of the bag; its light fades towards the top and the sides.
    vec2 f = (q - vec2(0.0, -0.42)) * vec2(1.3, 0.75);
    float inner = 1.0 / (0.55 + 1.9 * dot(f, f));
    vec3 paper = mix(vec3(2.0, 0.60, 0.12), vec3(3.2, 1.75, 0.62), clamp(inner - 0.55, 0.0, 1.0));
    float ribs = 0.93 + 0.07 * cos(q.x * 13.0 / width);
    float rim = smoothstep(-0.16, 0.0, d);
    light += paper * inner * ribs * mask * (1.0 - 0.45 * rim) * which.y;
    return vec4(light * Glow, mask * min(which.y * 1.5, 1.0));
}

vec3 scene(vec2 p, float pan)
{
    vec3 color = sky(p + vec2(-pan * 0.10, 0.0));
    color = addRange(color, p, 0.05, pan);
    color = addRange(color, p, 0.33, pan);
    color = addRange(color, p, 0.72, pan);

    // The near shore, left and right, leaves the middle open.
    float x = p.x + pan * 1.1;
    float bank = 0.030 * smoothstep(0.25, 0.95, abs(x + 0.10));
    float top = HORIZON + bank + firs(x) * smoothstep(0.22, 0.60, abs(x + 0.10)) * 1.9 - 0.004;
    color = mix(color, vec3(0.012, 0.014, 0.030), smoothstep(0.002, -0.002, p.y - top));

    vec4 light = lanterns(p);
    return color * (1.0 - light.w) + light.rgb;
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    vec2 look = texelFetch(iChannel0, ivec2(0, 1), 0).xy;
    float pan = look.x * 0.4;
    p.y += look.y * 0.12;

    float depth = HORIZON - p.y; // below 0 in the air
    float water = smoothstep(-0.001, 0.001, depth);
    vec2 q = p;
    float slope = 0.0;
    float crest = 0.0;
    if (depth > 0.0) {
        // Perspective: the nearer the horizon, the further away and the denser the waves.
        float away = 0.11 / (depth + 0.018);
        vec2 w = vec2((p.x + pan) * away * 5.0, away * 6.5);
        float t = iTime;
        slope = sin(w.y * 2.1 + w.x * 0.6 + t * 1.1) + 0.7 * sin(w.y * 3.7 - w.x * 1.3 + t * 1.7)
              + 0.5 * sin(w.y * 7.9 + w.x * 2.9 - t * 2.3) + 0.35 * sin(w.x * 5.3 - w.y * 12.1 + t * 2.9);
        crest = sin(w.x * 5.3 + w.y * 2.7 + t) * sin(w.y * 13.0 - t * 2.2 + 0.8 * slope);
        crest = smoothstep(0.25, 0.95, crest + 0.15 * slope);
        float height = Ripples * (0.006 + 0.075 * depth) * smoothstep(0.0, 0.03, depth);
        q.y = HORIZON + depth * 1.04 + height * slope;
        q.x += 0.22 * height * sin(w.x * 3.1 + w.y * 1.9 - t * 1.3);
        q.y = max(q.y, HORIZON + 0.001);
    }
    vec3 color = scene(q, pan);

    // Water swallows more light the steeper one looks into it, and has a colour of its own.
    float steep = clamp(depth * 2.6, 0.0, 1.0);
    vec3 lake = color * mix(vec3(0.80, 0.72, 0.76), vec3(0.34, 0.42, 0.55), steep)
              + vec3(0.004, 0.012, 0.028) * (1.0 + 0.5 * slope) * steep;

    // The moon itself is mirrored below the picture's edge; only the crests of the waves catch its light.
    float path = (p.x + pan * 0.1 - MOON.x) / (0.035 + 0.40 * depth);
    float glitter = crest * exp(-path * path) * smoothstep(0.0, 0.05, depth) * smoothstep(0.36, 0.06, depth);
    lake += vec3(1.00, 0.74, 0.58) * glitter * 0.60;
    color = mix(color, lake, water);

    // Mist on the water line hides where both halves meet.
    float band = exp(-abs(depth) * 34.0) * Mist;
    color = mix(color, vec3(0.78, 0.38, 0.30), 0.34 * clamp(band, 0.0, 1.5));

    // From light to picture: soft shoulder, darker corners, a grain too fine to see that hides colour steps.
    color = 1.0 - exp(-color * 1.25);
    color = pow(color, vec3(0.86, 0.90, 0.92));
    vec2 uv = fragCoord / iResolution.xy;
    color *= 0.62 + 0.38 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.22);
    color += (hash2(fragCoord) - 0.5) / 255.0;
    fragColor = vec4(color, 1.0);
}
