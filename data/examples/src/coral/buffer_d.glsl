// Two slow companions of the pattern, for the light in Image:
// x: the coral blurred far and softly; a blur of a blur of a blur spreads with every frame.
// y: how long coral has been here, from 0 to 1.
// Channel 0 is Buffer C, channel 1 this buffer's own last frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    vec2 uv = fragCoord / iResolution.xy;
    float coral = texture(iChannel0, uv).y;
    if (iFrame < 2) {
        fragColor = vec4(coral, 0.0, 0.0, 1.0);
        return;
    }
    vec2 e = 2.5 / iResolution.xy;
    float around = texture(iChannel1, uv + e * vec2(1.0, 0.4)).x + texture(iChannel1, uv + e * vec2(-0.4, 1.0)).x
                 + texture(iChannel1, uv - e * vec2(1.0, 0.4)).x + texture(iChannel1, uv - e * vec2(-0.4, 1.0)).x;
    float age = texelFetch(iChannel1, ivec2(fragCoord), 0).y;
    float blurred = mix(around * 0.25, coral, 0.10);
    age = mix(age, smoothstep(0.10, 0.25, coral), 0.012);
    fragColor = vec4(blurred, age, 0.0, 1.0);
}
