// Of functions that share memory among pixels. Stages can be written with them, but nothing is bound to
// images and counters here.
#include "ui/text/WordHelp.h"

namespace pixelgrove {

namespace {

constexpr const char* kCompute = "For compute shaders; a fragment shader doesn't compile with it.";

constexpr WordHelp kRows[] = {
    {"atomicCounterIncrement", "uint atomicCounterIncrement(atomic_uint c)",
     "Adds 1 to the counter and returns what it was before. No counter is bound here."},
    {"atomicCounterDecrement", "uint atomicCounterDecrement(atomic_uint c)",
     "Takes 1 from the counter and returns what it is then. No counter is bound here."},
    {"atomicCounter", "uint atomicCounter(atomic_uint c)", "What the counter is. No counter is bound here."},
    {"atomicCounterAdd", "uint atomicCounterAdd(atomic_uint c, uint data)",
     "Adds to the counter and returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterSubtract", "uint atomicCounterSubtract(atomic_uint c, uint data)",
     "Takes from the counter and returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterMin", "uint atomicCounterMin(atomic_uint c, uint data)",
     "The counter becomes the smaller of both; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterMax", "uint atomicCounterMax(atomic_uint c, uint data)",
     "The counter becomes the larger of both; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterAnd", "uint atomicCounterAnd(atomic_uint c, uint data)",
     "The counter keeps the bits that both have; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterOr", "uint atomicCounterOr(atomic_uint c, uint data)",
     "The counter gets the bits of data as well; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterXor", "uint atomicCounterXor(atomic_uint c, uint data)",
     "Turns the counter's bits where data has them; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterExchange", "uint atomicCounterExchange(atomic_uint c, uint data)",
     "The counter becomes data; returns what it was before. From GLSL 4.60 on."},
    {"atomicCounterCompSwap", "uint atomicCounterCompSwap(atomic_uint c, uint compare, uint data)",
     "The counter becomes data where it is compare; returns what it was before. From GLSL 4.60 on."},
    {"atomicAdd", "int atomicAdd(inout int mem, int data)\nuint atomicAdd(inout uint mem, uint data)",
     "Adds to a variable of a buffer block, without another pixel coming between; returns what it was "
     "before."},
    {"atomicMin", "int atomicMin(inout int mem, int data)\nuint atomicMin(inout uint mem, uint data)",
     "The variable of a buffer block becomes the smaller of both; returns what it was before."},
    {"atomicMax", "int atomicMax(inout int mem, int data)\nuint atomicMax(inout uint mem, uint data)",
     "The variable of a buffer block becomes the larger of both; returns what it was before."},
    {"atomicAnd", "int atomicAnd(inout int mem, int data)\nuint atomicAnd(inout uint mem, uint data)",
     "The variable of a buffer block keeps the bits that both have; returns what it was before."},
    {"atomicOr", "int atomicOr(inout int mem, int data)\nuint atomicOr(inout uint mem, uint data)",
     "The variable of a buffer block gets the bits of data as well; returns what it was before."},
    {"atomicXor", "int atomicXor(inout int mem, int data)\nuint atomicXor(inout uint mem, uint data)",
     "Turns the bits of a variable of a buffer block where data has them; returns what it was before."},
    {"atomicExchange",
     "int atomicExchange(inout int mem, int data)\nuint atomicExchange(inout uint mem, uint data)",
     "The variable of a buffer block becomes data; returns what it was before."},
    {"atomicCompSwap",
     "int atomicCompSwap(inout int mem, int compare, int data)\nuint atomicCompSwap(inout uint mem, uint "
     "compare, uint data)",
     "The variable of a buffer block becomes data where it is compare; returns what it was before."},
    {"imageSize", "ivec2 imageSize(gimage2D image)\nivec3 imageSize(gimage3D image)",
     "The image's sides in texels. No image is bound here; channels are samplers."},
    {"imageSamples", "int imageSamples(gimage2DMS image)",
     "How many samples a texel of a multisampled image has. No image is bound here."},
    {"imageLoad", "gvec4 imageLoad(gimage2D image, ivec2 P)",
     "The texel at P; 0 outside the image. No image is bound here; channels are read by texelFetch."},
    {"imageStore", "void imageStore(gimage2D image, ivec2 P, gvec4 data)",
     "Writes the texel at P; nothing outside the image. No image is bound here."},
    {"imageAtomicAdd", "uint imageAtomicAdd(uimage2D image, ivec2 P, uint data)",
     "Adds to the texel; returns what it was before. For ints too. No image is bound here."},
    {"imageAtomicMin", "uint imageAtomicMin(uimage2D image, ivec2 P, uint data)",
     "The texel becomes the smaller of both; returns what it was before. For ints too. No image is bound "
     "here."},
    {"imageAtomicMax", "uint imageAtomicMax(uimage2D image, ivec2 P, uint data)",
     "The texel becomes the larger of both; returns what it was before. For ints too. No image is bound "
     "here."},
    {"imageAtomicAnd", "uint imageAtomicAnd(uimage2D image, ivec2 P, uint data)",
     "The texel keeps the bits that both have; returns what it was before. For ints too. No image is bound "
     "here."},
    {"imageAtomicOr", "uint imageAtomicOr(uimage2D image, ivec2 P, uint data)",
     "The texel gets the bits of data as well; returns what it was before. For ints too. No image is bound "
     "here."},
    {"imageAtomicXor", "uint imageAtomicXor(uimage2D image, ivec2 P, uint data)",
     "Turns the texel's bits where data has them; returns what it was before. For ints too. No image is "
     "bound here."},
    {"imageAtomicExchange", "uint imageAtomicExchange(uimage2D image, ivec2 P, uint data)",
     "The texel becomes data; returns what it was before. For ints and floats too. No image is bound here."},
    {"imageAtomicCompSwap", "uint imageAtomicCompSwap(uimage2D image, ivec2 P, uint compare, uint data)",
     "The texel becomes data where it is compare; returns what it was before. For ints too. No image is "
     "bound here."},
    {"memoryBarrier", "void memoryBarrier()",
     "What this pixel has written to images, buffers and counters is there for others before what it writes "
     "next."},
    {"memoryBarrierAtomicCounter", "void memoryBarrierAtomicCounter()", "memoryBarrier for counters alone."},
    {"memoryBarrierBuffer", "void memoryBarrierBuffer()", "memoryBarrier for buffer blocks alone."},
    {"memoryBarrierImage", "void memoryBarrierImage()", "memoryBarrier for images alone."},
    {"memoryBarrierShared", "void memoryBarrierShared()", kCompute},
    {"groupMemoryBarrier", "void groupMemoryBarrier()", kCompute},
    {"barrier", "void barrier()", kCompute},
    {"subpassLoad", "gvec4 subpassLoad(gsubpassInput subpass)", "Of another API; OpenGL doesn't know it."},
    {"anyInvocation", "bool anyInvocation(bool value)",
     "Whether it is true for one of the pixels that are drawn together. From GLSL 4.60 on."},
    {"allInvocations", "bool allInvocations(bool value)",
     "Whether it is true for all pixels that are drawn together. From GLSL 4.60 on."},
    {"allInvocationsEqual", "bool allInvocationsEqual(bool value)",
     "Whether it is the same for all pixels that are drawn together. From GLSL 4.60 on."},
};

}  // namespace

std::span<const WordHelp> MemoryFunctionHelp() {
    return kRows;
}

}  // namespace pixelgrove
