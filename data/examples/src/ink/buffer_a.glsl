// The moving water: x and y are the velocity, z is the pressure, w the spin.
// Channel 0 is this buffer's own last frame.
//
// Water keeps its velocity as it moves, so each pixel asks where its water was a frame ago and takes the velocity
// from there. Water can't be squeezed: where it runs together, pressure rises, and pressure pushes it apart.

uniform float Jet = 1.0;   // set by the controls of the same names in Image
uniform float Swirl = 1.0;

// A push towards "jet", strongest at d = 0, whose water flows back on both sides: nothing gathers, nothing parts.
// It is the curl of a hill-shaped function, and a curl never gathers.
vec2 push(vec2 d, vec2 jet, float narrow)
{
    float hill = exp(-dot(d, d) * narrow);
    float across = jet.x * d.y - jet.y * d.x;
    return hill * (jet - 2.0 * narrow * across * vec2(d.y, -d.x));
}

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    if (iFrame < 2) {
        fragColor = vec4(0.0);
        return;
    }
    vec2 size = iResolution.xy;
    vec2 pixel = 1.0 / size;
    vec2 uv = fragCoord * pixel;

    vec4 here = texture(iChannel0, uv);
    vec4 right = texture(iChannel0, uv + vec2(pixel.x, 0.0));
    vec4 left = texture(iChannel0, uv - vec2(pixel.x, 0.0));
    vec4 up = texture(iChannel0, uv + vec2(0.0, pixel.y));
    vec4 down = texture(iChannel0, uv - vec2(0.0, pixel.y));

    vec2 velocity = texture(iChannel0, uv - here.xy * pixel).xy;

    // Pressure: the neighbours' mean, and more where water runs together. One round a frame is enough to look at.
    float gathering = 0.5 * (right.x - left.x + up.y - down.y);
    float pressure = 0.25 * (right.z + left.z + up.z + down.z) - 0.24 * gathering;
    pressure *= 0.998;
    velocity -= 0.5 * vec2(right.z - left.z, up.z - down.z);

    // Small whirls die out on a grid. This gives them back some of their spin: push across the slope of the spin.
    float spin = 0.5 * (right.y - left.y - up.x + down.x);
    vec2 slope = 0.5 * vec2(abs(right.w) - abs(left.w), abs(up.w) - abs(down.w));
    slope /= length(slope) + 0.0005;
    velocity += 0.13 * Swirl * spin * vec2(slope.y, -slope.x);

    // The jets of the nozzles.
    vec2 p = place(fragCoord, size);
    float scale = size.y / 360.0;
    for (int n = 0; n < NOZZLES; n++) {
        vec2 d = p - nozzlePlace(n, iTime);
        velocity += push(d, nozzleJet(n, iTime), 420.0) * 0.27 * Jet * scale;
    }

    // The mouse drags water along. iMouse.zw remembers where the button went down; with it held, the pull goes
    // from there to the pointer, no faster than a jet.
    if (iMouse.z > 0.0) {
        vec2 d = p - place(iMouse.xy, size);
        vec2 pull = (iMouse.xy - abs(iMouse.zw)) / size.y;
        pull /= max(length(pull) * 1.5, 0.25);
        velocity += push(d, pull, 220.0) * 0.9 * scale;
    }

    // Still water at the rim of the bowl, and a little friction everywhere.
    vec2 rim = min(fragCoord, size - fragCoord);
    velocity *= 0.9993 * smoothstep(0.0, 3.0, min(rim.x, rim.y));
    velocity = clamp(velocity, -6.0 * scale, 6.0 * scale);
    fragColor = vec4(velocity, pressure, spin);
}
