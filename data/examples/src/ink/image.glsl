// Ink in water: light goes through the ink to the paper and comes back.
//
// Channel 0 is Buffer B, the floating ink; channel 1 is Buffer C, the stain on the paper. Light that meets ink of
// density d comes through with exp(-d) of its strength, for red, green and blue each. So inks mix as inks do.

uniform float Density = 1.0; // ink: density [0.2..3.0, 1.0]
uniform float Shine = 1.0;   // light: strength of the reflections [0.0..2.0, 1.0]
uniform float Jet = 1.0;     // water: strength of the jets, for Buffer A [0.0..2.0, 1.0]
uniform float Swirl = 1.0;   // water: how long whirls live, for Buffer A [0.0..2.0, 1.0]

float hash(vec2 p)
{
    p = fract(p * vec2(0.1031, 0.1173));
    p += dot(p, p.yx + 33.33);
    return fract((p.x + p.y) * p.x * 7.13);
}

// Smooth noise: random numbers at the corners of a grid, blended in between.
float noise(vec2 p)
{
    vec2 cell = floor(p);
    vec2 f = p - cell;
    f = f * f * (3.0 - 2.0 * f);
    float low = mix(hash(cell), hash(cell + vec2(1.0, 0.0)), f.x);
    float high = mix(hash(cell + vec2(0.0, 1.0)), hash(cell + vec2(1.0, 1.0)), f.x);
    return mix(low, high, f.y);
}

float thickness(vec2 uv)
{
    return dot(texture(iChannel0, uv).rgb, vec3(0.4));
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 uv = fragCoord / iResolution.xy;
    vec2 e = 1.5 / iResolution.xy;
    vec3 ink = texture(iChannel0, uv).rgb;

    // Thick ink stands up a little from the water; its slope catches the light and bends the view.
    vec2 slope = vec2(thickness(uv - vec2(e.x, 0.0)) - thickness(uv + vec2(e.x, 0.0)),
                      thickness(uv - vec2(0.0, e.y)) - thickness(uv + vec2(0.0, e.y)));
    vec3 normal = normalize(vec3(slope * 1.1, 1.0));

    // The shadow of the ink falls on the paper a little to the lower right.
    vec2 fall = vec2(7.0, -9.0) / iResolution.y * vec2(iResolution.y / iResolution.x, 1.0);
    vec3 shadow = texture(iChannel0, uv - fall).rgb;
    vec3 stain = texture(iChannel1, uv + slope * 0.02).rgb;

    vec2 grain = fragCoord * 360.0 / iResolution.y;
    float fibre = noise(grain * 0.55) * 0.5 + noise(grain * vec2(0.16, 0.9) + 7.0) * 0.5;
    float blotch = noise(grain * 0.017);
    vec3 paper = vec3(0.985, 0.955, 0.895) * (0.955 + 0.045 * fibre + 0.03 * blotch);
    vec3 lightThrough = exp(-(ink * 1.15 + stain * 0.75 + shadow * 0.22) * Density);
    vec3 color = paper * lightThrough;

    vec3 lamp = normalize(vec3(-0.5, 0.7, 0.75));
    color *= 0.90 + 0.16 * dot(normal, lamp) + 0.10 * normal.y;
    float wet = smoothstep(0.02, 0.30, dot(ink, vec3(0.4)));
    float spark = pow(max(dot(normalize(lamp + vec3(0.0, 0.0, 1.0)), normal), 0.0), 90.0);
    color += vec3(1.0, 0.97, 0.92) * spark * wet * 0.55 * Shine * smoothstep(0.05, 0.35, length(slope));

    vec2 rim = uv * (1.0 - uv);
    color *= 0.80 + 0.20 * pow(16.0 * rim.x * rim.y, 0.30);
    fragColor = vec4(pow(color, vec3(0.95)), 1.0);
}
