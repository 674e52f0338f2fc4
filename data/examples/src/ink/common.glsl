// What the stages of the fluid share. Lengths are in pixels, speeds in pixels a frame.

const int NOZZLES = 4;

// Nozzle n glides on a path of its own and pours while it moves.
vec2 nozzlePlace(int n, float time)
{
    float k = float(n);
    float a = time * (0.33 + 0.05 * k) + k * 1.5708;
    return vec2(0.62 * sin(a + 0.6 * sin(a * 0.37 + k)), 0.33 * sin(a * 1.31 + k * 2.1));
}

// Direction and strength of its jet, which turns slowly.
vec2 nozzleJet(int n, float time)
{
    float k = float(n);
    float a = time * 0.45 + k * 2.2 + 1.9 * sin(time * 0.9 + k);
    return vec2(cos(a), sin(a));
}

// Ink is kept as what it takes away from white light: red ink takes green and blue.
vec3 nozzleInk(int n)
{
    if (n == 0) return vec3(0.10, 0.95, 0.70); // crimson
    if (n == 1) return vec3(1.00, 0.42, 0.08); // ultramarine
    if (n == 2) return vec3(0.05, 0.38, 1.00); // amber
    return vec3(0.95, 0.15, 0.42);             // sea green
}

// Where a pixel lies: the shorter side of the picture goes from -0.5 to 0.5.
vec2 place(vec2 fragCoord, vec2 size)
{
    return (fragCoord - 0.5 * size) / size.y;
}
