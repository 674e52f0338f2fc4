// Third step of the frame. Channel 0 is Buffer B. Buffer A reads the result in the next frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    fragColor = vec4(react(iChannel0, fragCoord, iResolution.xy), 0.0, 1.0);
}
