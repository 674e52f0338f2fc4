// What both stages share.

// The nebula is computed in the lower left quarter of Buffer A only, at half the width and height. It has no
// sharp edges, so nobody sees the difference, and it takes a quarter of the time.
const float SHRINK = 2.0;

float hash(vec2 p)
{
    p = fract(p * vec2(0.1031, 0.1173));
    p += dot(p, p.yx + 33.33);
    return fract((p.x + p.y) * p.x * 7.13);
}

// Direction of the view, from the mouse or slowly turning by itself: x is the turn, y the height.
vec2 viewAngles(vec4 mouse, vec2 size, float time)
{
    if (mouse.z > 0.0) return vec2(6.0, 2.4) * (mouse.xy / size - 0.5);
    return vec2(0.97 + 0.05 * time, 0.22 * sin(time * 0.09));
}

// Turns a vector given in the viewer's axes (right, up, forward) into the world's.
mat3 viewAxes(vec2 angles)
{
    float cx = cos(angles.x), sx = sin(angles.x), cy = cos(angles.y), sy = sin(angles.y);
    return mat3(vec3(cx, 0.0, -sx), vec3(sx * sy, cy, cx * sy), vec3(sx * cy, -sy, cx * cy));
}
