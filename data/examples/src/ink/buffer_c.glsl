// The stain: ink that settles on the paper under the water and stays there a while.
// Channel 0 is Buffer B, the ink; channel 1 is this buffer's own last frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    if (iFrame < 2) {
        fragColor = vec4(0.0);
        return;
    }
    vec2 pixel = 1.0 / iResolution.xy;
    vec2 uv = fragCoord * pixel;
    vec3 ink = texture(iChannel0, uv).rgb;
    // Wet paper lets the stain creep: a mean of four neighbours, mixed in softly.
    vec3 creep = 0.25 * (texture(iChannel1, uv + vec2(1.5, 0.5) * pixel).rgb
                       + texture(iChannel1, uv - vec2(1.5, 0.5) * pixel).rgb
                       + texture(iChannel1, uv + vec2(-0.5, 1.5) * pixel).rgb
                       + texture(iChannel1, uv - vec2(-0.5, 1.5) * pixel).rgb);
    vec3 stain = mix(texelFetch(iChannel1, ivec2(fragCoord), 0).rgb, creep, 0.5);
    fragColor = vec4(mix(stain, ink, 0.009), 1.0);
}
