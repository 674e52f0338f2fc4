// The reaction. Two substances live in every pixel: food in x, coral in y. Coral turns food into more coral
// (the product food * coral * coral), food is fed in everywhere, coral dies off. Both spread to their
// neighbours, food twice as fast. That is all; the patterns come by themselves.

const float SPREAD_FOOD = 1.0;
const float SPREAD_CORAL = 0.5;

// How much more of both there is around the pixel than in it.
vec2 spread(sampler2D field, ivec2 at, ivec2 size, vec2 here)
{
    ivec2 low = max(at - 1, ivec2(0));
    ivec2 high = min(at + 1, size - 1);
    vec2 sides = texelFetch(field, ivec2(low.x, at.y), 0).xy + texelFetch(field, ivec2(high.x, at.y), 0).xy
               + texelFetch(field, ivec2(at.x, low.y), 0).xy + texelFetch(field, ivec2(at.x, high.y), 0).xy;
    vec2 corners = texelFetch(field, low, 0).xy + texelFetch(field, high, 0).xy
                 + texelFetch(field, ivec2(low.x, high.y), 0).xy + texelFetch(field, ivec2(high.x, low.y), 0).xy;
    return 0.2 * sides + 0.05 * corners - here;
}

// One step in time. Feed and kill rates differ a little over the picture, so that it holds mazes, worms and dots.
vec2 react(sampler2D field, vec2 fragCoord, vec2 size)
{
    ivec2 at = ivec2(fragCoord);
    vec2 here = texelFetch(field, at, 0).xy;
    vec2 p = (fragCoord - 0.5 * size) / size.y;
    float r = length(p);
    float feed = mix(0.037, 0.0545, smoothstep(0.10, 0.75, r + 0.10 * sin(5.0 * atan(p.y, p.x))));
    float kill = mix(0.0600, 0.0625, smoothstep(0.10, 0.75, r));
    float eaten = here.x * here.y * here.y;
    vec2 change = vec2(SPREAD_FOOD, SPREAD_CORAL) * spread(field, at, ivec2(size), here);
    change += vec2(-eaten + feed * (1.0 - here.x), eaten - (feed + kill) * here.y);
    return clamp(here + change, 0.0, 1.0);
}
