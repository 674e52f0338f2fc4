// The room, seen from its middle in all directions. This stage runs for all six sides of a cube of 1024 by 1024
// pixels in every frame, ten times as many pixels as a small window has: so it has to be short.
//
// rd is the direction that the pixel looks in; y is up. A look-up in the cube with (x, y, z) finds the ray
// (x, -y, -z), which Image takes into account.

// A straight tube of light across the plane "height = constant": bright line with a soft glow.
float tube(float distance, float width)
{
    return width / (width + distance * distance * 60.0);
}

void mainCubemap(out vec4 fragColor, in vec2 fragCoord, in vec3 ro, in vec3 rd)
{
    float up = rd.y;
    vec3 color = mix(vec3(0.010, 0.012, 0.030), vec3(0.040, 0.022, 0.075), up * 0.5 + 0.5);

    // Where the ray meets the ceiling (or the floor): two rows of tubes that cross there.
    float flatness = 1.0 / (abs(up) + 0.18);
    vec2 plan = rd.xz * flatness;
    float ceiling = max(up, 0.0);
    color += vec3(1.00, 0.16, 0.42) * tube(abs(plan.x) - 0.75, 0.050) * ceiling * 3.0;
    color += vec3(0.12, 0.62, 1.00) * tube(abs(plan.y) - 0.55, 0.040) * ceiling * 3.0;

    // A warm soft box above, slightly off the middle.
    vec2 box = abs(plan - vec2(0.05, -0.02)) - vec2(0.42, 0.24);
    float panel = step(0.0, up) * smoothstep(0.04, -0.04, max(box.x, box.y));
    color += vec3(1.55, 1.35, 1.12) * (0.75 + 0.9 * plan.x) * panel;

    // Glowing seam where wall meets floor, and standing lamps that wander round the room.
    color += vec3(1.00, 0.42, 0.10) * tube(up + 0.10, 0.012) * 0.75;
    float wander = rd.x * sin(iTime * 0.35) + rd.z * cos(iTime * 0.35);
    color += vec3(0.10, 0.95, 0.75) * tube(wander - 0.55, 0.016) * smoothstep(0.75, 0.25, abs(up - 0.20));
    fragColor = vec4(color, 1.0);
}
