// Of what every shader is given without declaring it, of what it has to define, and of types and keywords
// that have something to say here.
#include "ui/text/WordHelp.h"

namespace pixelgrove {

namespace {

constexpr const char* kPrecisionText = "Has no effect: the drivers of desktops compute with all of a float.";
constexpr const char* kChannelText =
    "What the channel reads: a picture, a cubemap, a volume, a buffer, the keyboard, the camera or sound. "
    "Its kind of sampler follows that.";

constexpr WordHelp kInputRows[] = {
    {"iResolution", "uniform vec3 iResolution",
     "The size of the picture in pixels, in Cube A that of a face; z is 1."},
    {"iTime", "uniform float iTime",
     "The time of the frame. It counts frames, not the clock: each adds the live control Speed, 0.03 unless "
     "you set it."},
    {"iTimeDelta", "uniform float iTimeDelta", "What this frame has added to iTime."},
    {"iFrame", "uniform int iFrame",
     "The number of the frame, from 0. The first two frames of a run have 0, and so have those after a "
     "change of the picture's size."},
    {"iFrameRate", "uniform float iFrameRate", "Frames in a second, on average since Play."},
    {"iChannelTime", "uniform float iChannelTime[4]", "The same as iTime, for each channel."},
    {"iChannelResolution", "uniform vec3 iChannelResolution[4]",
     "The size of what each channel reads; z is 1 but for volumes. Of a buffer it is the picture's at Play."},
    {"iMouse", "uniform vec4 iMouse",
     "In xy where the mouse is or was last while the left button is down, in zw where that was pressed. z is "
     "below 0 while the button is up, w is above 0 in the first frame of a press alone."},
    {"iDate", "uniform vec4 iDate", "Year, month from 1, day of the month, seconds since midnight."},
    {"iSampleRate", "uniform float iSampleRate",
     "Samples of sound in a second, where stages make sound. None do here, and it is 0."},
    {"iChannel0", "uniform sampler2D iChannel0", kChannelText},
    {"iChannel1", "uniform sampler2D iChannel1", kChannelText},
    {"iChannel2", "uniform sampler2D iChannel2", kChannelText},
    {"iChannel3", "uniform sampler2D iChannel3", kChannelText},
    {"mainImage", "void mainImage(out vec4 fragColor, in vec2 fragCoord)",
     "What Image and the buffers have to define: called for each pixel, whose middle is at fragCoord; (0.5, "
     "0.5) is the lower left one."},
    {"mainCubemap", "void mainCubemap(out vec4 fragColor, in vec2 fragCoord, in vec3 rayOri, in vec3 rayDir)",
     "What Cube A has to define: called for each pixel of each face, with the ray through it."},
    {"st_assert", "void st_assert(bool condition)\nvoid st_assert(bool condition, int colour)",
     "Paints the pixel of Image red where the condition is false; with 1, 2 or 3 green, blue or yellow."},
    {"gl_FragCoord", "vec4 gl_FragCoord",
     "In xy the pixel's middle, counted from the lower left corner: what mainImage gets as fragCoord."},
    {"gl_FragColor", "vec4 gl_FragColor",
     "The pixel's colour. What mainImage gives back takes its place afterwards."},
};

constexpr WordHelp kKeywordRows[] = {
    {"vec2", "vec2(float)   vec2(float, float)",
     "Two floats, in xy, rg or st. A single number goes into both."},
    {"vec3", "vec3(float)   vec3(vec2, float)   vec3(float, float, float)",
     "Three floats, in xyz, rgb or stp. A single number goes into all."},
    {"vec4", "vec4(float)   vec4(vec3, float)   vec4(vec2, vec2)",
     "Four floats, in xyzw, rgba or stpq. A single number goes into all."},
    {"mat2", "mat2(float)   mat2(vec2, vec2)",
     "Two columns of two floats; m[0] is the first column. A single number goes along the diagonal."},
    {"mat3", "mat3(float)   mat3(vec3, vec3, vec3)",
     "Three columns of three floats; m[0] is the first column. A single number goes along the diagonal."},
    {"mat4", "mat4(float)   mat4(vec4, vec4, vec4, vec4)",
     "Four columns of four floats; m[0] is the first column. A single number goes along the diagonal."},
    {"int", "int(x)", "A whole number of 32 bits. Of a float it takes what stands before the point."},
    {"uint", "uint(x)",
     "A whole number from 0, of 32 bits; written with a u, as in 7u. Sums wrap around. Undefined for a float "
     "below 0."},
    {"bool", "bool(x)", "true or false; of a number, whether it isn't 0."},
    {"double", "double(x)", "A number of 64 bits. Slow on most graphics cards."},
    {"sampler2D", "uniform sampler2D name",
     "What texture and its kin read. A function may take one as a parameter; it can't be a variable."},
    {"samplerCube", "uniform samplerCube name", "Six pictures around a point, read by direction."},
    {"sampler3D", "uniform sampler3D name", "A volume, read by three coordinates from 0 to 1."},
    {"in", "in float x", "A parameter that the function gets a copy of, as is usual."},
    {"out", "out float x",
     "A parameter that the function gives back. Undefined until the function has set it."},
    {"inout", "inout float x", "A parameter that the function gets and gives back."},
    {"const", "const float name = 1.0", "Never changes. As a parameter: the function can't set it."},
    {"uniform", "uniform float name; // branch: label [0.0..1.0, 0.5]",
     "The same for all pixels of a frame. In Image, with such a comment, it is a live control."},
    {"discard", "discard;",
     "Ends the pixel without a colour: what its picture of the frame before the last had there stays."},
    {"precise", "precise float x",
     "Computed just as it is written, without shortcuts that would change the last bits."},
    {"highp", "highp float x", kPrecisionText},
    {"mediump", "mediump float x", kPrecisionText},
    {"lowp", "lowp float x", kPrecisionText},
    {"precision", "precision highp float;", kPrecisionText},
    {"switch", "switch (n) { case 0: break; default: }",
     "Goes to the case of that whole number and on from there; break ends it."},
    {"struct", "struct Name { float x; vec3 y; };",
     "A type of several members. Name(x, y) makes one, and = copies it."},
    {"#define", "#define NAME text   #define NAME(x) text",
     "Puts the text in the place of the name from here on. In Image, with a comment such as // label [0..9, "
     "4], it is a live control."},
    {"#ifdef", "#ifdef NAME", "What follows up to #else or #endif counts where there is a #define NAME."},
    {"#ifndef", "#ifndef NAME", "What follows up to #else or #endif counts where there is no #define NAME."},
    {"#if", "#if EXPRESSION",
     "What follows up to #else or #endif counts where the expression of whole numbers isn't 0."},
};

}  // namespace

std::span<const WordHelp> InputHelp() {
    return kInputRows;
}

std::span<const WordHelp> KeywordHelp() {
    return kKeywordRows;
}

}  // namespace pixelgrove
