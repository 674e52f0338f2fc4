// Second step of the frame. Channel 0 is Buffer A.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    fragColor = vec4(react(iChannel0, fragCoord, iResolution.xy), 0.0, 1.0);
}
