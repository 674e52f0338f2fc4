// Mosaic: the stones are the cells of a Voronoi pattern. Channel 0 has a colour for each of them.
//
// Every stone leans a little in its own direction, so each one throws the light back from somewhere else.

uniform float Stones = 46.0; // stones: from bottom to top [16.0..110.0, 46.0]
uniform float Glide = 0.08;  // stones: pace of their colours [0.01..1.0, 0.08]
uniform float Joint = 0.075; // stones: width of the joints [0.0..0.2, 0.075]
uniform float Lean = 0.5;    // light: how much the stones lean [0.0..1.5, 0.5]
uniform float Shine = 1.0;   // light: shine of the glass [0.0..3.0, 1.0]
uniform float Gold = 0.6;    // light: gold in bright stones [0.0..1.0, 0.6]

vec3 glass(vec3 color, vec2 luck)
{
    // Glass comes in few strengths of colour: strong ones, in steps, none like its neighbour.
    float grey = dot(color, vec3(0.30, 0.59, 0.11));
    color = grey + (color - grey) * 1.35;
    color = floor(clamp(color, 0.0, 1.0) * 9.0 + 0.25 + 0.5 * luck.x) / 9.0;
    return color * (0.86 + 0.28 * luck.y);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 p = fragCoord / iResolution.y * Stones;
    vec2 cell = floor(p);

    // The nearest stone, then the distance to the line between it and the next one.
    vec2 stone = cell;
    vec2 toStone = vec2(9.0);
    for (int i = 0; i < 9; i++) {
        vec2 other = cell + vec2(i % 3, i / 3) - 1.0;
        vec2 way = middle(other) - p;
        if (dot(way, way) < dot(toStone, toStone)) {
            toStone = way;
            stone = other;
        }
    }
    float edge = 9.0;
    vec2 slope = vec2(0.0);
    for (int i = 0; i < 25; i++) {
        vec2 other = stone + vec2(i % 5, i / 5) - 2.0;
        vec2 way = middle(other) - p;
        vec2 along = way - toStone;
        if (dot(along, along) < 1e-5) continue;
        float d = dot(0.5 * (toStone + way), normalize(along));
        if (d < edge) {
            edge = d;
            slope = normalize(along);
        }
    }

    vec2 luck = chance(stone + 17.0);
    vec2 last = vec2(Stones * iResolution.x / iResolution.y, Stones);
    vec3 color = glass(texelFetch(iChannel0, ivec2(clamp(stone, vec2(0.0), last)), 0).rgb, luck);
    float grey = dot(color, vec3(0.30, 0.59, 0.11));
    float isGold = Gold * smoothstep(0.62, 0.80, grey) * step(0.45, luck.x);
    color = mix(color, vec3(0.96, 0.70, 0.26) * (0.55 + 0.6 * grey), isGold);

    // Round edges: near the joint the surface falls off towards it.
    float round = smoothstep(Joint + 0.16, Joint, edge);
    vec2 tilt = (chance(stone + 5.0) - 0.5) * Lean + slope * round * 0.9;
    vec3 normal = normalize(vec3(tilt, 1.0));

    vec2 lamp = iMouse.z > 0.0 ? iMouse.xy / iResolution.y : vec2(0.5 * iResolution.x / iResolution.y, 0.62)
              + vec2(0.55 * cos(iTime * 0.31), 0.28 * sin(iTime * 0.47));
    vec3 toLamp = normalize(vec3(lamp - fragCoord / iResolution.y, 0.55));
    vec3 toEye = normalize(vec3((0.5 * iResolution.xy - fragCoord) / iResolution.y, 1.6));
    float lit = max(dot(normal, toLamp), 0.0);
    float mirror = pow(max(dot(normal, normalize(toLamp + toEye)), 0.0), 90.0);
    float grain = 0.97 + 0.06 * chance(floor(p * 9.0)).x;
    vec3 stoneLight = color * grain * (0.38 + 0.82 * lit)
                    + mix(vec3(1.0, 0.97, 0.90), color * 1.8, isGold) * mirror * Shine * (0.55 + isGold);

    // Mortar, darker beside the stones, which stand a little higher.
    vec3 mortar = vec3(0.23, 0.20, 0.18) * (0.55 + 0.35 * toLamp.z) * (0.9 + 0.2 * chance(floor(p * 14.0)).y);
    mortar *= 0.55 + 0.45 * smoothstep(Joint, 0.0, edge);
    float soft = 0.6 * Stones / iResolution.y;
    vec3 light = mix(mortar, stoneLight, smoothstep(Joint - soft, Joint + soft, edge));

    vec2 uv = fragCoord / iResolution.xy - 0.5;
    light *= 1.0 - 0.55 * dot(uv, uv);
    fragColor = vec4(pow(light, vec3(0.92)), 1.0);
}
