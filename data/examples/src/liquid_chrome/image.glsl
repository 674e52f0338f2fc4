// Chrome in a neon room
//
// A ray for each pixel is walked forward in steps. The distance function says how far away the surface is at
// least, so that far is safe to walk. Where the ray meets the ring, its mirror direction is looked up in Cube A.

uniform float Twist = 2.0;  // ring: half turns of the twist [0.0..6.0, 2.0]
uniform float Polish = 1.0; // ring: strength of the mirror [0.0..1.0, 1.0]

#define STEPS 44 // most steps of a ray [2..80, 44]
#define FILM     // look of the metal [@FILM, SILVER, GOLD]

const float FLOOR = -1.02;

// What Cube A holds in direction d. The stage's rays and the look-up disagree in y and z: see there.
vec3 room(vec3 d)
{
    return texture(iChannel0, vec3(d.x, -d.y, -d.z)).rgb;
}

vec2 turn(vec2 v, float angle)
{
    float c = cos(angle), s = sin(angle);
    return vec2(c * v.x - s * v.y, s * v.x + c * v.y);
}

// Distance to a ring whose cross section is a rounded square that turns on its way round.
float ring(vec3 p)
{
    p.xy = turn(p.xy, iTime * 0.17);
    p.yz = turn(p.yz, 0.62 + 0.42 * sin(iTime * 0.31));
    float around = atan(p.z, p.x);
    vec2 section = turn(vec2(length(p.xz) - 0.72, p.y), around * floor(Twist + 0.5) * 0.5 + iTime * 0.3);
    vec2 corner = abs(section) - 0.155;
    float d = length(max(corner, 0.0)) + min(max(corner.x, corner.y), 0.0) - 0.075;
    return d * 0.80; // the twist makes the raw value a little too large
}

vec3 ringNormal(vec3 p)
{
    // Four looks at the corners of a tetrahedron give the slope in all three directions.
    const vec2 e = vec2(1.0, -1.0);
    const float h = 0.002;
    return normalize(e.xyy * ring(p + e.xyy * h) + e.yyx * ring(p + e.yyx * h)
                   + e.yxy * ring(p + e.yxy * h) + e.xxx * ring(p + e.xxx * h));
}

vec3 metal(vec3 p, vec3 ray)
{
    vec3 n = ringNormal(p);
    vec3 mirror = reflect(ray, n);
    float facing = max(dot(-ray, n), 0.0);
    // A thin film on the metal splits colours by the angle, like oil on water.
    vec3 film = 0.72 + 0.28 * cos(6.2832 * (facing * 1.1 + vec3(0.02, 0.20, 0.42)));
#ifdef FILM
    vec3 tint = mix(film, vec3(1.0), pow(1.0 - facing, 4.0));
#elif defined GOLD
    vec3 tint = vec3(1.15, 0.78, 0.32);
#else
    vec3 tint = vec3(0.95);
#endif
    // The lower side sees the floor and the ring's own shadow there.
    float open = 0.45 + 0.55 * smoothstep(-0.9, 0.4, mirror.y);
    return room(mirror) * tint * open * Polish * 1.25 + vec3(0.006, 0.007, 0.012) + tint * 0.035 * (0.5 + 0.5 * n.y);
}

// One ray through the scene without the floor. cover says how much of the pixel the ring fills.
vec3 march(vec3 eye, vec3 ray, float pixel, out float cover)
{
    cover = 0.0;
    // The ring fits in a ball; rays that miss it are not walked.
    float b = dot(eye, ray);
    float h = b * b - dot(eye, eye) + 1.10;
    if (h <= 0.0) return vec3(0.0);
    h = sqrt(h);
    float t = max(-b - h, 0.0);
    float last = -b + h;
    float bestRatio = 1e9;
    float bestT = t;
    for (int i = 0; i < STEPS; i++) {
        float d = ring(eye + ray * t);
        // Remember where the ray came closest: rays that only just miss get a soft edge from that.
        float ratio = d / (t * pixel);
        if (ratio < bestRatio) {
            bestRatio = ratio;
            bestT = t;
        }
        if (ratio < 0.25 || t > last) break;
        t += d;
    }
    cover = smoothstep(1.15, 0.25, bestRatio);
    if (cover <= 0.0) return vec3(0.0);
    return metal(eye + ray * bestT, ray);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    vec2 look = iMouse.z > 0.0 ? (iMouse.xy / iResolution.xy - 0.5) * vec2(6.0, 1.4)
                               : vec2(0.35 + 0.10 * iTime, 0.0);
    float height = clamp(0.10 + look.y, -0.20, 0.9);
    vec3 eye = vec3(sin(look.x) * cos(height), sin(height), -cos(look.x) * cos(height)) * 3.1;
    vec3 forward = normalize(vec3(0.0, 0.02, 0.0) - eye);
    vec3 right = normalize(cross(vec3(0.0, 1.0, 0.0), forward));
    vec3 up = cross(forward, right);
    vec3 ray = normalize(p.x * right + p.y * up + 1.45 * forward);
    float pixel = 0.75 / iResolution.y;

    float cover;
    vec3 object = march(eye, ray, pixel, cover);

    // Behind the ring: the wall, or the polished floor, which mirrors the room and dims under the ring.
    vec3 behind = room(ray) * 0.55;
    if (ray.y < 0.0) {
        float t = (FLOOR - eye.y) / ray.y;
        vec3 at = eye + ray * t;
        vec3 down = vec3(ray.x, -ray.y, ray.z);
        vec2 tile = abs(fract(at.xz * 1.4) - 0.5);
        float soft = clamp(t * pixel * 5.0, 0.004, 0.4);
        float joint = smoothstep(0.492 - soft, 0.5, max(tile.x, tile.y)) * exp(-t * 0.18);
        float mirror = 0.10 + 0.65 * pow(1.0 - abs(ray.y), 3.0);
        float shade = 1.0 - 0.75 * exp(-dot(at.xz, at.xz) * 1.1);
        float pool = exp(-dot(at.xz, at.xz) * 0.16);
        vec3 stone = vec3(0.060, 0.045, 0.085) * pool * (1.0 - 0.5 * joint);
        vec3 ground = room(down) * mirror * (1.0 - 0.6 * joint) + stone;
        behind = mix(behind, ground * (0.35 + 0.65 * shade), smoothstep(0.0, 0.035, -ray.y));
    }
    vec3 color = mix(behind, object, cover);

    color = color * (1.0 + color * 0.30) / (1.0 + color * 0.85);
    color = pow(color, vec3(0.52));
    vec2 uv = fragCoord / iResolution.xy;
    color *= 0.60 + 0.40 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.3);
    fragColor = vec4(color, 1.0);
}
