// Water keys: the view into the pool.
//
// Channel 0 is Buffer A, the height of the water; channel 1 is Buffer B, the light of the keys. The slope of the
// water bends the view to the bottom. Where the surface is curved like a lens, light gathers on the bottom.

uniform float Depth = 1.0;    // water: depth, which is how far the view bends [0.0..3.0, 1.0]
uniform float Caustics = 1.0; // water: strength of the gathered light [0.0..3.0, 1.0]

// Letters as 5 by 5 dots, one bit for each: bit 0 is the dot at the lower left, bit 5 the one above it.
const int FONT[26] = int[26](
    0x0e8fe31, 0x0f8be2f, 0x1e0843e, 0x0f8c62f, 0x1f0bc3f, 0x1f0bc21, 0x1e0e63e,
    0x118fe31, 0x0e2108e, 0x1c42126, 0x1149d31, 0x010843f, 0x11dd631, 0x119d731,
    0x0e8c62e, 0x0f8bc21, 0x0e8d536, 0x0f8bd31, 0x1e0ba0f, 0x1f21084, 0x118c62e,
    0x118a944, 0x118d771, 0x1151151, 0x1151084, 0x1f4105f);

float dot5(int bits, vec2 cell)
{
    if (cell.x < 0.0 || cell.y < 0.0 || cell.x > 4.0 || cell.y > 4.0) return 0.0;
    return float((bits >> (int(cell.y) * 5 + int(cell.x))) & 1);
}

// How much of a letter covers the point q; the letter fills the square from 0 to 5. Blending between the dots and
// cutting at one half turns the dots into strokes with round ends.
float letter(int code, vec2 q, float soft)
{
    int bits = FONT[code - 65];
    vec2 cell = floor(q - 0.5);
    vec2 f = q - 0.5 - cell;
    f = f * f * (3.0 - 2.0 * f);
    float low = mix(dot5(bits, cell), dot5(bits, cell + vec2(1.0, 0.0)), f.x);
    float high = mix(dot5(bits, cell + vec2(0.0, 1.0)), dot5(bits, cell + vec2(1.0, 1.0)), f.x);
    return smoothstep(0.45 - soft, 0.45 + soft, mix(low, high, f.y));
}

float hash(vec2 p)
{
    p = fract(p * vec2(0.1031, 0.1173));
    p += dot(p, p.yx + 33.33);
    return fract((p.x + p.y) * p.x * 7.13);
}

float noise(vec2 p)
{
    vec2 cell = floor(p);
    vec2 f = p - cell;
    f = f * f * (3.0 - 2.0 * f);
    float low = mix(hash(cell), hash(cell + vec2(1.0, 0.0)), f.x);
    float high = mix(hash(cell + vec2(0.0, 1.0)), hash(cell + vec2(1.0, 1.0)), f.x);
    return mix(low, high, f.y);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 uv = fragCoord / iResolution.xy;
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    float scale = iResolution.y / 360.0;

    vec2 e = 1.5 / iResolution.xy;
    float h = texture(iChannel0, uv).x;
    float right = texture(iChannel0, uv + vec2(e.x, 0.0)).x;
    float left = texture(iChannel0, uv - vec2(e.x, 0.0)).x;
    float up = texture(iChannel0, uv + vec2(0.0, e.y)).x;
    float down = texture(iChannel0, uv - vec2(0.0, e.y)).x;
    vec2 slope = vec2(right - left, up - down) * scale;
    float lens = (right + left + up + down - 4.0 * h) * scale * scale;

    // Long swells that are too slow for the simulation.
    float t = iTime * 0.8;
    vec2 swell = 0.012 * vec2(cos(p.x * 9.0 + p.y * 5.0 + t), cos(p.y * 11.0 - p.x * 4.0 + t * 1.3));
    // Their light on the bottom: bright threads where crossing waves, bent by each other, meet.
    vec2 w = p * 8.0 + vec2(0.4 * t, 0.0);
    w += vec2(sin(w.y * 1.3 + t), cos(w.x * 1.1 - t * 0.8));
    w += 0.6 * vec2(sin(w.y * 2.1 - t * 1.2), cos(w.x * 2.3 + t));
    float thread = abs(sin(w.x + 0.5 * w.y)) + abs(sin(w.y - 0.4 * w.x));
    lens += 0.085 * exp(-thread * 3.0) - 0.016;

    vec2 q = p - (slope * 0.14 + swell * 0.25) * Depth; // where the bent view meets the bottom
    vec3 light = texture(iChannel1, q * iResolution.y / iResolution.xy + 0.5).rgb;
    float caustic = clamp(1.0 + lens * 26.0 * Caustics, 0.10, 3.5);

    // Bottom: dark sand with a ripple pattern.
    float sand = noise(q * 90.0) * 0.5 + noise(q * 210.0) * 0.5;
    float ripple = 0.5 + 0.5 * sin(q.y * 70.0 + 5.0 * noise(q * 5.0) + q.x * 6.0);
    vec3 bottom = vec3(0.014, 0.062, 0.092) * (0.70 + 0.35 * sand + 0.25 * ripple);
    vec3 color = bottom * (0.55 + 0.75 * caustic);
    color += light * vec3(0.85, 0.90, 1.0) * (0.30 + 0.5 * sand) * caustic;

    // Keys: rounded stones that stand a little above the sand.
    Key key = keyAt(q);
    if (key.code != 0) {
        vec2 local = q - key.center;
        vec2 d = abs(local) - KEY_HALF + 0.022;
        float edge = length(max(d, 0.0)) + min(max(d.x, d.y), 0.0) - 0.022;
        float soft = 1.2 / iResolution.y;
        float stone = smoothstep(soft, -soft, edge);
        vec2 fall = abs(local - vec2(0.010, -0.014)) - KEY_HALF + 0.022;
        float shadow = smoothstep(0.020, -0.012, length(max(fall, 0.0)) - 0.022);
        color *= 1.0 - 0.55 * shadow;

        float pulse = dot(light, vec3(0.35)); // how brightly this key still glows
        vec3 top = vec3(0.070, 0.125, 0.150) * (0.88 + 0.24 * noise(q * 60.0 + key.center * 90.0));
        float bevel = smoothstep(-0.016, -0.002, edge);
        float facing = dot(normalize(local + 1e-5), normalize(vec2(-0.5, 0.85)));
        top *= 1.0 + bevel * 0.75 * facing;
        vec3 face = top * (0.45 + 0.85 * caustic) + light * (0.55 + 0.25 * bevel) * (0.6 + 0.4 * caustic);

        float side = KEY_HALF * 1.02; // of the letter
        vec2 grid = (local / side + 0.5) * 5.0;
        float ink = letter(key.code, grid, 0.16 / scale);
        float groove = letter(key.code, grid + vec2(-0.22, 0.30), 0.16 / scale);
        face *= 1.0 - 0.35 * groove * (1.0 - ink);
        vec3 inlay = mix(vec3(0.42, 0.60, 0.62) * (0.35 + 0.65 * caustic), vec3(1.6), clamp(pulse * 0.8, 0.0, 1.0))
                   + light * 0.9;
        face = mix(face, inlay, ink);
        color = mix(color, face, stone);
    }

    // The surface mirrors a bright evening sky where it leans towards it.
    vec3 normal = normalize(vec3(-(slope * 5.0 + swell), 1.0));
    vec3 lamp = normalize(vec3(-0.35, 0.60, 0.72));
    float glint = pow(max(dot(reflect(vec3(0.0, 0.0, -1.0), normal), lamp), 0.0), 24.0);
    color += vec3(0.75, 0.92, 1.0) * glint * 0.85;
    color += vec3(0.10, 0.22, 0.28) * clamp(normal.y * 1.3 - normal.x * 0.8, 0.0, 1.0) * 0.7;

    color = 1.0 - exp(-color * 1.9);
    color = pow(color, vec3(0.74));
    color *= 0.52 + 0.48 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.28);
    fragColor = vec4(color, 1.0);
}
