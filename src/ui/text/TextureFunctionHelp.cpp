// Of functions that read textures.
#include "ui/text/WordHelp.h"

namespace pixelgrove {

namespace {

constexpr const char* kOldColour =
    "An old name that core versions of the language lack; texture and its kin take every sampler.";
constexpr const char* kOldShadow =
    "An old name for a look-up that compares depths; core versions of the language lack it and have texture "
    "for that too.";

constexpr WordHelp kRows[] = {
    {"texture",
     "gvec4 texture(gsampler2D sampler, vec2 P [, float bias])\ngvec4 texture(gsampler3D sampler, vec3 P [, "
     "float bias])\ngvec4 texture(gsamplerCube sampler, vec3 P [, float bias])",
     "The colour at P, where 0 to 1 is the whole picture, by the channel's filter and wrap. A mipmap comes "
     "from how P changes among neighbours: undefined inside branches that not all of them go through."},
    {"textureProj",
     "gvec4 textureProj(gsampler2D sampler, vec3 P [, float bias])\ngvec4 textureProj(gsampler2D sampler, "
     "vec4 P [, float bias])\ngvec4 textureProj(gsampler3D sampler, vec4 P [, float bias])",
     "As texture, with P divided by its last component."},
    {"textureLod",
     "gvec4 textureLod(gsampler2D sampler, vec2 P, float lod)\ngvec4 textureLod(gsampler3D sampler, vec3 P, "
     "float lod)\ngvec4 textureLod(gsamplerCube sampler, vec3 P, float lod)",
     "As texture, from the mipmap of that number: 0 is the whole picture, each next one half as large. Good "
     "inside any branch."},
    {"textureOffset",
     "gvec4 textureOffset(gsampler2D sampler, vec2 P, ivec2 offset [, float bias])\ngvec4 "
     "textureOffset(gsampler3D sampler, vec3 P, ivec3 offset [, float bias])",
     "As texture, so many texels away. The offset is a constant, at least from -8 to 7; beyond what the "
     "driver allows undefined."},
    {"texelFetch",
     "gvec4 texelFetch(gsampler2D sampler, ivec2 P, int lod)\ngvec4 texelFetch(gsampler3D sampler, ivec3 P, "
     "int lod)",
     "The one texel at P of that mipmap, without filter and wrap; (0, 0) is the lower left one. Undefined "
     "outside the picture, and for a mipmap that there isn't."},
    {"texelFetchOffset", "gvec4 texelFetchOffset(gsampler2D sampler, ivec2 P, int lod, ivec2 offset)",
     "As texelFetch at P + offset, which is a constant."},
    {"textureProjOffset", "gvec4 textureProjOffset(gsampler2D sampler, vec3 P, ivec2 offset [, float bias])",
     "textureProj and textureOffset in one."},
    {"textureLodOffset", "gvec4 textureLodOffset(gsampler2D sampler, vec2 P, float lod, ivec2 offset)",
     "textureLod and textureOffset in one."},
    {"textureProjLod", "gvec4 textureProjLod(gsampler2D sampler, vec3 P, float lod)",
     "textureProj and textureLod in one."},
    {"textureProjLodOffset",
     "gvec4 textureProjLodOffset(gsampler2D sampler, vec3 P, float lod, ivec2 offset)",
     "textureProj, textureLod and textureOffset in one."},
    {"textureGrad",
     "gvec4 textureGrad(gsampler2D sampler, vec2 P, vec2 dPdx, vec2 dPdy)\ngvec4 textureGrad(gsampler3D "
     "sampler, vec3 P, vec3 dPdx, vec3 dPdy)\ngvec4 textureGrad(gsamplerCube sampler, vec3 P, vec3 dPdx, "
     "vec3 dPdy)",
     "As texture, with the mipmap that belongs to P changing so from pixel to pixel. Good inside any "
     "branch."},
    {"textureGradOffset",
     "gvec4 textureGradOffset(gsampler2D sampler, vec2 P, vec2 dPdx, vec2 dPdy, ivec2 offset)",
     "textureGrad and textureOffset in one."},
    {"textureProjGrad", "gvec4 textureProjGrad(gsampler2D sampler, vec3 P, vec2 dPdx, vec2 dPdy)",
     "textureProj and textureGrad in one; the changes are those after the division."},
    {"textureProjGradOffset",
     "gvec4 textureProjGradOffset(gsampler2D sampler, vec3 P, vec2 dPdx, vec2 dPdy, ivec2 offset)",
     "textureProj, textureGrad and textureOffset in one."},
    {"textureGather",
     "gvec4 textureGather(gsampler2D sampler, vec2 P [, int component])\ngvec4 textureGather(gsamplerCube "
     "sampler, vec3 P [, int component])",
     "One component, the first unless told, of the four texels around P: in x the upper left, y upper right, "
     "z lower right, w lower left. The component is a constant from 0 to 3."},
    {"textureGatherOffset",
     "gvec4 textureGatherOffset(gsampler2D sampler, vec2 P, ivec2 offset [, int component])",
     "As textureGather, so many texels away; the offset may be any expression."},
    {"textureGatherOffsets",
     "gvec4 textureGatherOffsets(gsampler2D sampler, vec2 P, ivec2 offsets[4] [, int component])",
     "As textureGather, with a constant offset for each of four look-ups, each of which gives its lower left "
     "texel."},
    {"textureSize",
     "ivec2 textureSize(gsampler2D sampler, int lod)\nivec3 textureSize(gsampler3D sampler, int lod)\nivec2 "
     "textureSize(gsamplerCube sampler, int lod)",
     "Width and height of that mipmap in texels, and depth where there is one. Undefined for a mipmap that "
     "there isn't."},
    {"textureQueryLod", "vec2 textureQueryLod(gsampler2D sampler, vec2 P)",
     "In x the mipmap that texture would read at P, in y the one that it would like best before limits are "
     "applied."},
    {"textureQueryLevels", "int textureQueryLevels(gsampler2D sampler)",
     "How many mipmaps there are, the whole picture included; 0 without a complete texture."},
    {"textureSamples", "int textureSamples(gsampler2DMS sampler)",
     "How many samples a texel of a multisampled texture has."},
    {"texture1D", "vec4 texture1D(sampler1D sampler, float coord [, float bias])", kOldColour},
    {"texture1DProj", "vec4 texture1DProj(sampler1D sampler, vec2 coord [, float bias])", kOldColour},
    {"texture1DLod", "vec4 texture1DLod(sampler1D sampler, float coord, float lod)", kOldColour},
    {"texture1DProjLod", "vec4 texture1DProjLod(sampler1D sampler, vec2 coord, float lod)", kOldColour},
    {"texture2D", "vec4 texture2D(sampler2D sampler, vec2 coord [, float bias])", kOldColour},
    {"texture2DProj", "vec4 texture2DProj(sampler2D sampler, vec3 coord [, float bias])", kOldColour},
    {"texture2DLod", "vec4 texture2DLod(sampler2D sampler, vec2 coord, float lod)", kOldColour},
    {"texture2DProjLod", "vec4 texture2DProjLod(sampler2D sampler, vec3 coord, float lod)", kOldColour},
    {"texture3D", "vec4 texture3D(sampler3D sampler, vec3 coord [, float bias])", kOldColour},
    {"texture3DProj", "vec4 texture3DProj(sampler3D sampler, vec4 coord [, float bias])", kOldColour},
    {"texture3DLod", "vec4 texture3DLod(sampler3D sampler, vec3 coord, float lod)", kOldColour},
    {"texture3DProjLod", "vec4 texture3DProjLod(sampler3D sampler, vec4 coord, float lod)", kOldColour},
    {"textureCube", "vec4 textureCube(samplerCube sampler, vec3 coord [, float bias])", kOldColour},
    {"textureCubeLod", "vec4 textureCubeLod(samplerCube sampler, vec3 coord, float lod)", kOldColour},
    {"shadow1D", "vec4 shadow1D(sampler1DShadow sampler, vec3 coord [, float bias])", kOldShadow},
    {"shadow2D", "vec4 shadow2D(sampler2DShadow sampler, vec3 coord [, float bias])", kOldShadow},
    {"shadow1DProj", "vec4 shadow1DProj(sampler1DShadow sampler, vec4 coord [, float bias])", kOldShadow},
    {"shadow2DProj", "vec4 shadow2DProj(sampler2DShadow sampler, vec4 coord [, float bias])", kOldShadow},
    {"shadow1DLod", "vec4 shadow1DLod(sampler1DShadow sampler, vec3 coord, float lod)", kOldShadow},
    {"shadow2DLod", "vec4 shadow2DLod(sampler2DShadow sampler, vec3 coord, float lod)", kOldShadow},
    {"shadow1DProjLod", "vec4 shadow1DProjLod(sampler1DShadow sampler, vec4 coord, float lod)", kOldShadow},
    {"shadow2DProjLod", "vec4 shadow2DProjLod(sampler2DShadow sampler, vec4 coord, float lod)", kOldShadow},
};

}  // namespace

std::span<const WordHelp> TextureFunctionHelp() {
    return kRows;
}

}  // namespace pixelgrove
