#include "ui/text/GlslWords.h"

#include <QStringList>
#include <algorithm>

namespace pixelgrove {

namespace {

constexpr const char* kPrecisionWords = "lowp mediump highp precision";

constexpr const char* kPreprocessorWords =
    "#define #elif #else #elseif #endif #error #extension #if #ifdef #ifndef #line #pragma #undef "
    "#version";

constexpr const char* kTypes =
    "void bool int uint float double vec2 vec3 vec4 dvec2 dvec3 dvec4 bvec2 bvec3 bvec4 ivec2 ivec3 "
    "ivec4 uvec2 uvec3 uvec4 mat2 mat3 mat4 mat2x2 mat2x3 mat2x4 mat3x2 mat3x3 mat3x4 mat4x2 mat4x3 "
    "mat4x4 dmat2 dmat3 dmat4 dmat2x2 dmat2x3 dmat2x4 dmat3x2 dmat3x3 dmat3x4 dmat4x2 dmat4x3 dmat4x4 "
    "sampler1D sampler2D sampler3D samplerCube sampler1DShadow sampler2DShadow samplerCubeShadow "
    "sampler1DArray sampler2DArray sampler1DArrayShadow sampler2DArrayShadow isampler1D isampler2D "
    "isampler3D isamplerCube isampler1DArray isampler2DArray usampler1D usampler2D usampler3D "
    "usamplerCube usampler1DArray usampler2DArray sampler2DRect sampler2DRectShadow isampler2DRect "
    "usampler2DRect samplerBuffer isamplerBuffer usamplerBuffer sampler2DMS isampler2DMS usampler2DMS "
    "sampler2DMSArray isampler2DMSArray usampler2DMSArray samplerCubeArray samplerCubeArrayShadow "
    "isamplerCubeArray usamplerCubeArray image1D iimage1D uimage1D image2D iimage2D uimage2D image3D "
    "iimage3D uimage3D image2DRect iimage2DRect uimage2DRect imageCube iimageCube uimageCube "
    "imageBuffer iimageBuffer uimageBuffer image1DArray iimage1DArray uimage1DArray image2DArray "
    "iimage2DArray uimage2DArray imageCubeArray iimageCubeArray uimageCubeArray image2DMS iimage2DMS "
    "uimage2DMS image2DMSArray iimage2DMSArray uimage2DMSArray";

constexpr const char* kQualifiers =
    "coherent volatile restrict readonly writeonly struct uniform atomic_uint layout centroid flat "
    "smooth noperspective sample invariant true false in out inout precise const if else switch case "
    "default for while do break continue discard return";

constexpr const char* kFunctions =
    "radians degrees sin cos tan asin acos atan sinh cosh tanh asinh acosh atanh pow exp log exp2 "
    "log2 sqrt inversesqrt abs sign floor trunc round roundEven ceil fract mod modf min max clamp mix "
    "step smoothstep isnan isinf floatBitsToInt floatBitsToUint intBitsToFloat uintBitsToFloat fma "
    "frexp ldexp packUnorm2x16 packUnorm4x8 packSnorm4x8 unpackUnorm2x16 unpackUnorm4x8 "
    "unpackSnorm4x8 packHalf2x16 unpackHalf2x16 packDouble2x32 unpackDouble2x32 length distance dot "
    "cross normalize faceforward reflect refract matrixCompMult outerProduct transpose determinant "
    "inverse lessThan lessThanEqual greaterThan greaterThanEqual equal notEqual any all not uaddCarry "
    "usubBorrow umulExtended imulExtended bitfieldExtract bitfieldInsert bitfieldReverse bitCount "
    "findLSB findMSB textureSize textureQueryLod textureQueryLevels textureSamples texture "
    "textureProj textureLod textureOffset texelFetch texelFetchOffset textureProjOffset "
    "textureLodOffset textureProjLod textureProjLodOffset textureGrad textureGradOffset "
    "textureProjGrad textureProjGradOffset textureGather textureGatherOffset textureGatherOffsets "
    "texture1D texture1DProj texture1DLod texture1DProjLod texture2D texture2DProj texture2DLod "
    "texture2DProjLod texture3D texture3DProj texture3DLod texture3DProjLod textureCube "
    "textureCubeLod shadow1D shadow2D shadow1DProj shadow2DProj shadow1DLod shadow2DLod "
    "shadow1DProjLod atomicCounterIncrement atomicCounterDecrement atomicCounter atomicCounterAdd "
    "atomicCounterSubtract atomicCounterMin atomicCounterMax atomicCounterAnd atomicCounterOr "
    "atomicCounterXor atomicCounterExchange atomicCounterCompSwap atomicAdd atomicMin atomicMax "
    "atomicAnd atomicOr atomicXor atomicExchange atomicCompSwap imageSize imageSamples imageLoad "
    "imageStore imageAtomicAdd imageAtomicMin imageAtomicMax imageAtomicAnd imageAtomicOr "
    "imageAtomicXor imageAtomicExchange imageAtomicCompSwap dFdx dFdy dFdxFine dFdyFine dFdxCoarse "
    "dFdyCoarse fwidth fwidthFine fwidthCoarse interpolateAtCentroid interpolateAtSample "
    "interpolateAtOffset noise1 noise2 noise3 noise4 barrier memoryBarrier memoryBarrierAtomicCounter "
    "memoryBarrierBuffer memoryBarrierShared memoryBarrierImage groupMemoryBarrier subpassLoad "
    "anyInvocation allInvocations allInvocationsEqual";

std::vector<KeywordRow> MakeRows() {
    const std::pair<const char*, uint32_t> groups[] = {
        {kPrecisionWords, word_colours::kPrecision},
        {kPreprocessorWords, word_colours::kPreprocessor},
        {kTypes, word_colours::kType},
        {kQualifiers, word_colours::kQualifier},
        {kFunctions, word_colours::kFunction},
    };
    std::vector<KeywordRow> rows = {
        {QStringLiteral("//"), word_colours::kComment, KeywordKind::LineComment},
        {QStringLiteral("/*"), word_colours::kComment, KeywordKind::BlockComment},
    };
    for (const auto& [words, colour] : groups)
        for (const QString& word : QString::fromLatin1(words).split(u' '))
            rows.push_back({word, colour, KeywordKind::Word});
    std::ranges::sort(rows, {}, &KeywordRow::word);
    return rows;
}

}  // namespace

const std::vector<KeywordRow>& KeywordRows() {
    static const std::vector<KeywordRow> rows = MakeRows();
    return rows;
}

std::optional<uint32_t> WordColour(QStringView word) {
    if (word.size() >= kMaxWordLength) return std::nullopt;
    const std::vector<KeywordRow>& rows = KeywordRows();
    const auto row = std::lower_bound(rows.begin(), rows.end(), word,
                                      [](const KeywordRow& a, QStringView b) { return a.word < b; });
    if (row == rows.end() || row->word != word) return std::nullopt;
    return row->colour;
}

}  // namespace pixelgrove
