// The light of the keys. It spreads through the water and dies away.
// Channel 0 is the keyboard, channel 1 this buffer's own last frame.

void mainImage(out vec4 fragColor, in vec2 fragCoord)
{
    if (iFrame < 2) {
        fragColor = vec4(0.0);
        return;
    }
    vec2 uv = fragCoord / iResolution.xy;
    vec2 e = 4.5 * iResolution.y / 360.0 / iResolution.xy;
    vec3 light = 0.25 * (texture(iChannel1, uv + e * vec2(1.0, 0.4)).rgb
                       + texture(iChannel1, uv - e * vec2(1.0, 0.4)).rgb
                       + texture(iChannel1, uv + e * vec2(-0.4, 1.0)).rgb
                       + texture(iChannel1, uv - e * vec2(-0.4, 1.0)).rgb);
    light *= 0.972;

    vec2 p = (fragCoord - 0.5 * iResolution.xy) / iResolution.y;
    Key key = keyAt(p);
    vec2 d = abs(p - key.center) - KEY_HALF + 0.02;
    float tile = smoothstep(0.012, -0.012, length(max(d, 0.0)) - 0.02);
    light += keyColor(key.center) * tile * keyDown(iChannel0, key.code, iTime) * 0.42;
    fragColor = vec4(min(light, 6.0), 1.0);
}
