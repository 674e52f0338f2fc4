// The ink: what it takes from red, green and blue light. It goes where the water goes.
// Channel 0 is Buffer A, the water; channel 1 is this buffer's own last frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    if (iFrame < 2) {
        fragColor = vec4(0.0);
        return;
    }
    vec2 pixel = 1.0 / iResolution.xy;
    vec2 uv = fragCoord * pixel;

    // Half a step back, look at the water there, and then the whole step: whirls stay round that way.
    vec2 half1 = texture(iChannel0, uv).xy * 0.5;
    vec2 from = uv - texture(iChannel0, uv - half1 * pixel).xy * pixel;
    vec3 ink = texture(iChannel1, from).rgb;

    // Each look-up between pixels blurs a little; this sharpens by as much.
    vec3 mean = texture(iChannel1, from + vec2(pixel.x, 0.0)).rgb + texture(iChannel1, from - vec2(pixel.x, 0.0)).rgb
              + texture(iChannel1, from + vec2(0.0, pixel.y)).rgb + texture(iChannel1, from - vec2(0.0, pixel.y)).rgb;
    ink = max(ink + 0.055 * (ink - 0.25 * mean), 0.0);

    vec2 p = place(fragCoord, iResolution.xy);
    for (int n = 0; n < NOZZLES; n++) {
        vec2 d = p - nozzlePlace(n, iTime);
        float pulse = 0.75 + 0.25 * sin(iTime * 2.1 + float(n) * 1.7);
        ink += nozzleInk(n) * exp(-dot(d, d) * 2600.0) * 0.20 * pulse;
    }
    if (iMouse.z > 0.0) {
        vec2 d = p - place(iMouse.xy, iResolution.xy);
        vec3 pour = 0.5 + 0.5 * cos(iTime * 0.7 + vec3(0.0, 2.1, 4.2));
        ink += pour * exp(-dot(d, d) * 1200.0) * 0.30;
    }
    // Fades, so that the bowl never turns black, and is washed off at the rim.
    vec2 rim = min(fragCoord, iResolution.xy - fragCoord);
    ink *= 0.9955 * smoothstep(0.0, 4.0, min(rim.x, rim.y));
    fragColor = vec4(min(ink, 4.0), 1.0);
}
