// Marches one ray for each pixel through the cloud and adds up what it meets.
//
// Channel 0 is media/cloud.bin, a cube of densities that repeats in all directions. Channel 1 is this buffer's own
// last frame. Steps are few; each frame starts them at another place, and blending with the last frame smooths
// what a single frame would show as layers.

const int STEPS = 32;
const float NEAR = 0.9;
const float FAR = 3.9;

// Density of gas in x and of dark dust in y.
vec2 gas(vec3 p)
{
    float r = length(p * vec3(0.95, 1.20, 1.0));
    float broad = texture(iChannel0, p * 0.33 + vec3(0.13, 0.40, 0.02)).r;
    vec3 bent = p + 0.30 * (broad - 0.5) * vec3(1.0, -0.7, 0.6);
    float middle = texture(iChannel0, bent * 0.83 + vec3(0.0, 0.0, 0.004 * iTime)).r;
    float fine = texture(iChannel0, bent.zxy * 2.1 + vec3(0.31, 0.0, 0.006 * iTime)).r;
    // Filaments: where a noise crosses its middle value it makes thin sheets.
    float sheet = 1.0 - abs(2.0 * middle - 0.92);
    sheet *= sheet * sheet;
    // A hollow in the middle, blown free by the stars; wisps that thin out towards the rim.
    float shell = smoothstep(0.10, 0.62, r + 0.25 * (middle - 0.5)) * smoothstep(1.75, 0.60, r + 0.9 * (broad - 0.5));
    float density = max(sheet * 0.85 + broad * 0.55 + fine * 0.50 - 1.02, 0.0) * shell;
    float dust = smoothstep(0.47, 0.25, broad + 0.25 * (fine - 0.5)) * smoothstep(0.35, 0.65, middle) * shell;
    return vec2(density * 5.0, dust * 2.6);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 size = floor(iResolution.xy / SHRINK);
    bool isInside = fragCoord.x < size.x + 2.0 && fragCoord.y < size.y + 2.0;
    vec2 p = (fragCoord - 0.5 * size) / size.y;
    vec2 angles = viewAngles(iMouse, iResolution.xy, iTime);
    mat3 axes = viewAxes(angles);
    vec3 eye = axes * vec3(0.0, 0.0, -2.35);
    vec3 ray = axes * normalize(vec3(p, 1.15));

    float stride = (FAR - NEAR) / float(STEPS);
    float start = fract(hash(fragCoord) + float(iFrame % 64) * 0.618034);
    vec3 light = vec3(0.0);
    float clear = 1.0; // how much of what is further back still comes through
    int steps = isInside ? STEPS : 0;
    for (int i = 0; i < steps; i++) {
        vec3 at = eye + ray * (NEAR + (float(i) + start) * stride);
        vec2 here = gas(at);
        float r = length(at);
        // Gas glows in the colour of what excites it: blue-green oxygen close in, red hydrogen further out.
        vec3 inner = vec3(0.18, 0.85, 1.00);
        vec3 outer = vec3(1.00, 0.16, 0.26);
        vec3 glow = mix(inner, vec3(0.72, 0.28, 0.95), smoothstep(0.35, 0.80, r));
        glow = mix(glow, outer, smoothstep(0.70, 1.25, r));
        glow = mix(glow, vec3(1.0, 0.55, 0.22), smoothstep(1.15, 1.75, r));
        float lit = 0.16 + 1.0 / (0.22 + 2.6 * r * r);
        light += clear * glow * here.x * lit * stride * 3.1;
        clear *= exp(-(here.x * 0.75 + here.y * 3.0) * stride * 2.0);
        if (clear < 0.02) break;
    }
    // The stars' own veil of light in the middle.
    float closest = length(cross(ray, eye));
    light += vec3(0.45, 0.62, 1.0) * 0.012 / (0.02 + closest * closest) * (0.3 + 0.7 * clear);

    vec4 now = vec4(light, clear);
    vec4 last = texelFetch(iChannel1, ivec2(fragCoord), 0);
    fragColor = iFrame < 2 ? now : mix(last, now, iMouse.z > 0.0 ? 0.35 : 0.12);
}
