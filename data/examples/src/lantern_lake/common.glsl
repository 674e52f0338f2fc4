// What the other stages share.

const float HORIZON = -0.17; // height of the water line; the picture goes from -0.5 to 0.5

// A number from 0 to 1 that looks random and depends only on n.
float hash1(float n)
{
    return fract(sin(n * 127.1) * 43758.5453);
}

// The same for a point of a grid.
float hash2(vec2 p)
{
    p = fract(p * vec2(0.1031, 0.1173));
    p += dot(p, p.yx + 33.33);
    return fract((p.x + p.y) * p.x * 7.13);
}
