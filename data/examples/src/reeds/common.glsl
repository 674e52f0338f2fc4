// What both stages share.

const int REEDS = 56;
const float WATER = -0.20; // height of the water line; the picture goes from -0.5 to 0.5

// A number from 0 to 1 that looks random and depends only on n.
float hash(float n)
{
    return fract(sin(n * 91.345) * 47453.5453);
}
