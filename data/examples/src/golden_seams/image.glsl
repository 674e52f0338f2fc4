// Golden seams
//
// The slab is broken into the cells of scattered points: a pixel belongs to the shard whose point is nearest. The
// seam between two shards is where both points are equally near. Space is squeezed around the place of the blow
// before that, so that shards are small there and large at the rim.
//
// Channel 0 is media/marble.png, which repeats without a visible border.

uniform float SeamWidth = 1.0; // gold: width of the seams [0.2..3.0, 1.0]
uniform float Pour = 1.0;      // gold: speed of the pouring [0.1..4.0, 1.0]
uniform float LampHeight = 0.42; // lamp: height over the slab [0.1..1.5, 0.42]
uniform uint Seed = 19u;       // slab: which way it breaks [0..19, 19]

#define METAL GOLD // metal in the seams [@GOLD, ROSE, SILVER, COPPER]

const vec3 GOLD = vec3(1.0, 0.66, 0.24);
const vec3 ROSE = vec3(1.0, 0.52, 0.42);
const vec3 SILVER = vec3(0.86, 0.88, 0.92);
const vec3 COPPER = vec3(0.95, 0.40, 0.20);

const vec2 BLOW = vec2(-0.22, 0.06); // where the slab was hit
const float CELLS = 3.4;

vec2 hash22(vec2 p)
{
    vec3 q = fract(vec3(p.xyx) * vec3(0.1031, 0.1030, 0.0973));
    q += dot(q, q.yzx + 33.33);
    return fract((q.xx + q.yz) * q.zy);
}

// The point of a cell, moved at random from its middle.
vec2 site(vec2 cell)
{
    return cell + 0.5 + 0.78 * (hash22(cell + float(Seed)) - 0.5);
}

struct Crack
{
    float distance; // to the middle of the seam, in cells
    vec2 across;    // the direction from there to this pixel
    vec2 shard;     // a number pair that names the shard
};

Crack crackAt(vec2 p)
{
    vec2 home = floor(p);
    vec2 nearest = vec2(0.0);
    vec2 toNearest = vec2(0.0);
    float best = 1e9;
    for (int j = -1; j <= 1; j++) {
        for (int i = -1; i <= 1; i++) {
            vec2 cell = home + vec2(float(i), float(j));
            vec2 d = site(cell) - p;
            float square = dot(d, d);
            if (square < best) {
                best = square;
                nearest = cell;
                toNearest = d;
            }
        }
    }
    // The distance to the line that halves the way between both points. The closest such line is the seam.
    Crack crack = Crack(1e9, vec2(0.0), nearest);
    for (int j = -1; j <= 1; j++) {
        for (int i = -1; i <= 1; i++) {
            if (i == 0 && j == 0) continue;
            vec2 d = site(nearest + vec2(float(i), float(j))) - p;
            vec2 way = normalize(d - toNearest);
            float distance = dot(0.5 * (d + toNearest), way);
            if (distance < crack.distance) {
                crack.distance = distance;
                crack.across = -way;
            }
        }
    }
    return crack;
}

// What a mirror-like surface sees of the room: a dark wall, a bright ceiling, and a long window.
vec3 room(vec3 d)
{
    vec3 light = mix(vec3(0.10, 0.06, 0.04), vec3(0.95, 0.80, 0.62), smoothstep(-0.5, 0.9, d.y));
    float window = smoothstep(0.24, 0.10, abs(d.x - 0.35 * d.y - 0.18));
    return light * 0.55 + window * vec3(1.5, 1.35, 1.1) * smoothstep(-0.6, 0.4, d.y);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    float pixel = 1.0 / iResolution.y;

    // The marble also bends the cracks a little, so that no seam is a ruler's line.
    vec2 bend = texture(iChannel0, p * 0.55 + 0.2).rg - texture(iChannel0, p * 0.55 + vec2(0.7, 0.4)).gb;
    vec2 fromBlow = p - BLOW + 0.035 * bend;
    float reach = length(fromBlow);
    float squeeze = CELLS * pow(reach + 0.02, -0.42);   // cells for a unit of length, more near the blow
    Crack crack = crackAt(fromBlow * squeeze + 40.0);
    float d = crack.distance / (squeeze * 0.80);        // back to lengths of the picture

    // The lamp.
    vec2 lampPlace = iMouse.z > 0.0 ? (iMouse.xy - 0.5 * iResolution.xy) / iResolution.y
                                    : vec2(0.62 * sin(iTime * 0.55), 0.10 + 0.26 * cos(iTime * 0.83));
    vec3 toLamp = vec3(lampPlace - p, LampHeight);
    float far2 = dot(toLamp, toLamp);
    toLamp *= inversesqrt(far2);
    float lamp = 0.62 / (0.35 + far2);
    vec3 view = normalize(vec3(-p * 0.45, 1.0));
    vec3 halfway = normalize(toLamp + view);

    // Stone. Every shard shows another place of the picture and lies a little askew, so that it shines differently.
    vec2 luck = hash22(crack.shard);
    float turn = (luck.x - 0.5) * 0.9;
    vec2 grainPlace = mat2(cos(turn), sin(turn), -sin(turn), cos(turn)) * p * 0.75 + luck * 3.0;
    vec3 stone = texture(iChannel0, grainPlace).rgb;
    stone = stone * stone * (0.85 + 0.5 * luck.y);
    vec3 stoneNormal = normalize(vec3((luck - 0.5) * 0.22, 1.0));
    float edgeRound = exp(-d * 190.0);
    stoneNormal = normalize(stoneNormal - vec3(crack.across * edgeRound * 0.8, 0.0));
    float diffuse = max(dot(stoneNormal, toLamp), 0.0);
    float polish = pow(max(dot(stoneNormal, halfway), 0.0), 130.0);
    vec3 seen = room(reflect(-view, stoneNormal));
    vec3 color = stone * (0.20 + 3.6 * diffuse * lamp) + vec3(1.0, 0.93, 0.82) * polish * lamp * 0.70;
    color += seen * 0.035;
    color *= 1.0 - 0.55 * exp(-d * 120.0); // gold stands above the stone and takes light from it

    // Gold: a round bead along the crack.
    float width = (0.0050 + 0.0040 * smoothstep(0.55, 0.0, reach) + 0.0022 * bend.x) * SeamWidth;
    float across = clamp(d / width, 0.0, 1.0);
    float hammered = texture(iChannel0, p * 4.0 + 0.5).g - texture(iChannel0, p * 4.0 + 0.53).g;
    vec3 goldNormal = vec3(crack.across * across * 0.93, sqrt(1.0 - 0.86 * across * across));
    goldNormal = normalize(goldNormal + vec3(hammered * 0.9, hammered * -0.7, 0.0));
    float goldDiffuse = max(dot(goldNormal, toLamp), 0.0);
    float glint = pow(max(dot(goldNormal, halfway), 0.0), 36.0);
    vec3 gold = METAL * (0.05 + 0.75 * room(reflect(-view, goldNormal)) + 1.1 * goldDiffuse * lamp)
              + vec3(1.0, 0.86, 0.58) * glint * lamp * 3.2;

    // It runs outwards from the blow, glowing where it is still hot. Before it comes the crack is empty and dark.
    float front = 0.10 + 0.19 * Pour * iTime + 0.05 * bend.y;
    float behind = front - reach;
    float heat = exp(-max(behind, 0.0) * 7.0) * smoothstep(1.6, 0.9, front);
    gold += vec3(3.2, 0.75, 0.10) * heat;
    float bead = smoothstep(width + pixel, width - pixel, d);
    float hair = smoothstep(0.0016 + pixel, 0.0016 - pixel * 0.3, d);
    float poured = smoothstep(-0.006, 0.006, behind);
    color = mix(color, vec3(0.004, 0.007, 0.008), hair * (1.0 - poured));
    color = mix(color, gold, bead * poured);
    // Warm light of the hot gold on the stone.
    color += vec3(1.6, 0.42, 0.06) * heat * smoothstep(-0.10, 0.10, behind) * exp(-d * 55.0) * 0.55;

    color = 1.0 - exp(-color * 1.5);
    color = pow(color, vec3(0.62));
    vec2 uv = fragCoord / iResolution.xy;
    color *= 0.50 + 0.50 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.28);
    fragColor = vec4(color, 1.0);
}
