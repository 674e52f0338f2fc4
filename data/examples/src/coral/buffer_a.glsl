// First step of the frame. Channel 0 is Buffer C: as C runs after this buffer, it is C of the last frame.
// This buffer also plants the seeds and takes the mouse's paint.

// Seeds stand on a spiral, each one turned by the golden angle, like the florets of a sunflower.
float seeds(vec2 fragCoord)
{
    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    float found = 0.0;
    for (int i = 1; i <= 220; i++) {
        float n = float(i);
        float angle = n * 2.3999632;
        vec2 seed = 0.062 * sqrt(n) * vec2(cos(angle), sin(angle));
        vec2 d = p - seed;
        if (dot(d, d) < 0.00014) found = 1.0;
    }
    return found;
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    // A new buffer holds anything; the first two frames fill both of its textures.
    if (iFrame < 2) {
        fragColor = vec4(1.0, seeds(fragCoord), 0.0, 1.0);
        return;
    }
    vec2 cell = react(iChannel0, fragCoord, iResolution.xy);
    if (iMouse.z > 0.0) {
        float brush = smoothstep(9.0, 4.0, length(fragCoord - iMouse.xy));
        cell.y = max(cell.y, 0.7 * brush);
    }
    fragColor = vec4(cell, 0.0, 1.0);
}
