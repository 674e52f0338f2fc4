// Enamel coral: the pattern as a glazed relief.
//
// Channel 0 is Buffer C, the pattern; channel 1 is Buffer D, its blur and its age. The slope of the pattern gives
// the direction in which the surface faces, and that is all that light needs to know.

uniform float Relief = 1.0; // surface: height [0.0..3.0, 1.0]
uniform float Gloss = 1.0;  // surface: strength of the highlights [0.0..2.0, 1.0]
uniform float Gilt = 1.0;   // surface: gold along the edges [0.0..1.25, 1.0]
uniform float Age = 0.0;    // colour: how old the coral looks at least [0.0..1.0, 0.0]

float height(vec2 uv)
{
    // Flat tops with round edges look like glaze that ran and set.
    return smoothstep(0.08, 0.36, texture(iChannel0, uv).y);
}

// A small studio: warm window above, cool strip at the side, dark floor.
vec3 studio(vec3 d)
{
    vec3 light = mix(vec3(0.02, 0.03, 0.05), vec3(0.20, 0.26, 0.34), smoothstep(-0.2, 0.9, d.y));
    float window = smoothstep(0.30, 0.22, abs(d.x + 0.25)) * smoothstep(0.30, 0.22, abs(d.y - 0.52));
    window *= 0.35 + 0.65 * smoothstep(0.010, 0.022, min(abs(d.x + 0.25), abs(d.y - 0.52))); // its glazing bars
    float strip = smoothstep(0.10, 0.04, abs(d.x - 0.66));
    return light + window * vec3(2.6, 2.3, 1.9) + strip * vec3(0.35, 0.6, 0.9);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 uv = fragCoord / iResolution.xy;
    vec2 e = vec2(1.1) / iResolution.xy;
    float h = height(uv);
    float right = height(uv + vec2(e.x, 0.0));
    float left = height(uv - vec2(e.x, 0.0));
    float up = height(uv + vec2(0.0, e.y));
    float down = height(uv - vec2(0.0, e.y));
    vec2 around = texture(iChannel1, uv).xy;

    vec3 normal = normalize(vec3(vec2(left - right, down - up) * 0.85 * Relief, 0.75));
    // A pillow-like bulge of the blurred pattern bends the wide highlights.
    vec2 w = 7.0 / iResolution.xy;
    vec2 bulge = vec2(texture(iChannel1, uv - vec2(w.x, 0.0)).x - texture(iChannel1, uv + vec2(w.x, 0.0)).x,
                      texture(iChannel1, uv - vec2(0.0, w.y)).x - texture(iChannel1, uv + vec2(0.0, w.y)).x);
    normal = normalize(normal + vec3(bulge * 2.0 * Relief * h, 0.0));

    // Colours: a dark glazed ground; coral that goes from pale at its growing tips to deep red where it is old.
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    float r = length(p);
    vec3 ground = mix(vec3(0.012, 0.150, 0.180), vec3(0.014, 0.030, 0.110), smoothstep(0.0, 0.85, r));
    vec3 young = vec3(1.0, 0.80, 0.50);
    vec3 grown = mix(vec3(1.00, 0.36, 0.10), vec3(0.90, 0.07, 0.16), smoothstep(0.05, 0.45, r));
    grown = mix(grown, vec3(0.42, 0.05, 0.36), smoothstep(0.40, 0.95, r));
    vec3 coral = mix(young, grown, smoothstep(0.05, 0.75, max(around.y, Age)));
    vec3 color = mix(ground, coral, h);

    vec3 lamp = normalize(vec3(-0.45, 0.65, 0.62));
    float diffuse = max(dot(normal, lamp), 0.0);
    float shade = mix(0.25 + 0.75 * smoothstep(0.34, 0.02, around.x), 1.0, h); // hollows see less of the sky
    // The wall of the relief throws a short shadow.
    float wall = height(uv + lamp.xy * 4.5 / iResolution.y * vec2(iResolution.y / iResolution.x, 1.0));
    float shadow = 1.0 - 0.55 * max(wall - h, 0.0);
    vec3 lit = color * (0.18 + 1.15 * diffuse * shadow) * shade;

    // Gold runs along the edge of the glaze.
    float edge = smoothstep(0.10, 0.45, h) * smoothstep(0.92, 0.55, h);
    vec3 mirror = reflect(normalize(vec3(p * 0.35, -1.0)), normal);
    vec3 seen = studio(mirror);
    vec3 gold = vec3(1.0, 0.72, 0.32) * (0.20 + 1.3 * seen + 0.7 * diffuse * shadow);
    lit = mix(lit, gold, 0.80 * Gilt * edge);

    float fresnel = 0.045 + 0.55 * pow(1.0 - normal.z, 3.0);
    lit += seen * fresnel * Gloss * (1.0 - 0.8 * min(Gilt, 1.0) * edge);

    vec3 result = 1.0 - exp(-lit * 1.75);
    result = pow(result, vec3(0.66));
    float corner = 16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y);
    fragColor = vec4(result * (0.55 + 0.45 * pow(corner, 0.25)), 1.0);
}
