// What both stages share: where the stones lie.

// Two numbers from 0 to 1 that look random and depend only on the stone.
vec2 chance(vec2 stone)
{
    vec3 p = fract(stone.xyx * vec3(0.1031, 0.1030, 0.0973));
    p += dot(p, p.yzx + 33.33);
    return fract((p.xx + p.yz) * p.zy);
}

// The middle of a stone, in stones from the lower left corner.
vec2 middle(vec2 stone)
{
    return stone + 0.5 + 0.62 * (chance(stone) - 0.5);
}
