// Nebula: the enlarged cloud of Buffer A with sharp stars behind and inside.
// Channel 0 is Buffer A.

uniform float Exposure = 1.0; // camera: brightness [0.2..3.0, 1.0]
uniform float Stars = 1.0;    // camera: brightness of the stars [0.0..3.0, 1.0]
uniform float Color = 1.12;   // camera: amount of colour [0.0..2.5, 1.12]

// Stars of one size: one in each cell of a grid on the sky.
vec3 starField(vec3 d, float cells, float rarity)
{
    // Project the direction on the side of a cube that it points to.
    vec3 a = abs(d);
    vec2 uv = a.x > a.y && a.x > a.z ? d.yz / a.x : a.y > a.z ? d.zx / a.y + 7.0 : d.xy / a.z + 13.0;
    vec2 cell = floor(uv * cells);
    vec2 f = fract(uv * cells) - 0.5;
    float luck = hash(cell + cells);
    vec2 spot = 0.62 * (vec2(hash(cell + 5.2), hash(cell + 9.4)) - 0.5);
    float bright = pow(luck, rarity);
    float spread = length(f - spot) * iResolution.y / cells * 1.15;
    float warm = hash(cell + 2.7);
    vec3 tint = mix(vec3(0.60, 0.76, 1.0), vec3(1.0, 0.78, 0.55), warm * warm);
    return tint * bright * exp(-spread * spread * (1.3 - 0.8 * bright)) * 2.2;
}

// A bright star near the viewer's focus: core, halo and four rays from the struts of the telescope.
vec3 brightStar(vec2 d, vec3 tint, float power)
{
    float r2 = dot(d, d);
    vec2 a = abs(mat2(0.966, 0.259, -0.259, 0.966) * d);
    float rays = exp(-a.x * 420.0) / (1.0 + a.y * 60.0) + exp(-a.y * 420.0) / (1.0 + a.x * 60.0);
    rays *= smoothstep(0.20, 0.0, a.x + a.y);
    float core = exp(-r2 * 60000.0 / power);
    return (tint * (0.00045 * power / (r2 + 0.0006) + rays * 0.75 * power) + vec3(1.0) * core * 3.0);
}

// Where a point of the world stands in the picture; z is its distance.
vec3 project(vec3 at, mat3 axes)
{
    vec3 v = at * axes - vec3(0.0, 0.0, -2.35);
    return vec3(v.xy / v.z * 1.15, v.z);
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 uv = fragCoord / iResolution.xy;
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    mat3 axes = viewAxes(viewAngles(iMouse, iResolution.xy, iTime));
    vec3 ray = axes * normalize(vec3(p, 1.15));

    // Four look-ups a little apart hide the pixels of the small picture.
    vec2 small = floor(iResolution.xy / SHRINK);
    vec2 at = fragCoord / SHRINK;
    vec2 e = vec2(0.45, -0.45);
    vec2 low = vec2(0.5);
    vec2 high = small - 0.5;
    vec4 cloud = 0.25 * (texture(iChannel0, clamp(at + e.xx, low, high) / iResolution.xy)
                       + texture(iChannel0, clamp(at + e.xy, low, high) / iResolution.xy)
                       + texture(iChannel0, clamp(at + e.yx, low, high) / iResolution.xy)
                       + texture(iChannel0, clamp(at + e.yy, low, high) / iResolution.xy));

    vec3 stars = starField(ray, 24.0, 26.0) + 0.5 * starField(ray.zxy, 55.0, 17.0);
    vec3 color = cloud.rgb + Stars * stars * cloud.a * cloud.a;
    color += vec3(0.010, 0.012, 0.026);

    // Three young stars in the hollow.
    vec3 s1 = project(vec3(0.05, 0.06, 0.0), axes);
    vec3 s2 = project(vec3(-0.24, -0.10, 0.18), axes);
    vec3 s3 = project(vec3(0.22, -0.19, -0.20), axes);
    float through = 0.35 + 0.65 * cloud.a;
    color += Stars * through * brightStar(p - s1.xy, vec3(0.62, 0.80, 1.0), 1.25);
    color += Stars * through * brightStar(p - s2.xy, vec3(1.0, 0.78, 0.55), 0.55);
    color += Stars * through * brightStar(p - s3.xy, vec3(0.72, 0.85, 1.0), 0.40);

    color = 1.0 - exp(-color * 1.35 * Exposure);
    color = pow(color, vec3(0.82));
    color = mix(vec3(dot(color, vec3(0.3, 0.55, 0.15))), color, Color);
    color *= 0.70 + 0.30 * pow(16.0 * uv.x * uv.y * (1.0 - uv.x) * (1.0 - uv.y), 0.25);
    color += (hash(fragCoord + 0.5) - 0.5) / 255.0;
    fragColor = vec4(color, 1.0);
}
