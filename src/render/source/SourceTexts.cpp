#include "render/source/SourceTexts.h"

namespace pixelgrove {

// `char` and `packed` are reserved words of GLSL that shaders written for browsers use as names.
// st_AssertColor is declared for GLSL 4.20 and newer only, while its users are not guarded: an older
// compiler says so in its log.
QByteArrayView PrefixText() {
    return R"glsl(#define HW_PERFORMANCE 1
#define char char_sYjan77j
#define packed packed_sYjan77j
uniform vec3      iResolution;           // viewport resolution (in pixels)
uniform float     iTime;                 // shader playback time (in seconds)
uniform float     iTimeDelta;            // render time (in seconds)
uniform int       iFrame;                // shader playback frame
uniform float     iFrameRate;            // frames per second
uniform float     iChannelTime[4];       // channel playback time (in seconds)
uniform vec3      iChannelResolution[4]; // channel resolution (in pixels)
uniform vec4      iMouse;                // mouse pixel coords. xy: current (if MLB down), zw: click
uniform vec4      iDate;                 // (year, month, day, time in seconds)
uniform float     iSampleRate;           // sound sample rate (i.e., 44100)

#if __VERSION__ >= 420
    out vec4 st_FragColor;
    vec4 st_AssertColor = vec4(1e20);
    #define gl_FragColor st_FragColor
#endif

void st_assert(bool cond, int v) {
    if (!cond) {
        if (v == 0) st_AssertColor.x = -1.0;
        else if (v == 1) st_AssertColor.y = -1.0;
        else if (v == 2) st_AssertColor.z = -1.0;
        else st_AssertColor.w = -1.0;
    }
}

void st_assert(bool cond) {
    if (!cond) st_AssertColor.x = -1.0;
}
)glsl";
}

QByteArrayView ImageFooterText() {
    return R"glsl(void main(void)
{
    vec4 color = vec4(0.0);
    mainImage(color, gl_FragCoord.xy);
    if (st_AssertColor.x < 0.0) color = vec4(1.0, 0.0, 0.0, 1.0);
    if (st_AssertColor.y < 0.0) color = vec4(0.0, 1.0, 0.0, 1.0);
    if (st_AssertColor.z < 0.0) color = vec4(0.0, 0.0, 1.0, 1.0);
    if (st_AssertColor.w < 0.0) color = vec4(1.0, 1.0, 0.0, 1.0);
    gl_FragColor = color;
}
)glsl";
}

QByteArrayView CubeFooterText() {
    return R"glsl(uniform vec3 cmCornerVertices[5];

void main(void)
{
    vec4 color = vec4(1e20);
    vec3 ro = cmCornerVertices[4];
    vec2 uv = gl_FragCoord.xy / iResolution.xy;
    vec3 rd = normalize( mix( mix( cmCornerVertices[0], cmCornerVertices[1], uv.x ),
                              mix( cmCornerVertices[3], cmCornerVertices[2], uv.x ), uv.y ) - ro );
    mainCubemap(color, gl_FragCoord.xy, ro, rd);
    gl_FragColor = color;
}
)glsl";
}

}  // namespace pixelgrove
