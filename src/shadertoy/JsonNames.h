// Names of the project format that reader and writer share, with the values they stand for.
// What differs between reading and writing stands in the reader's and the writer's own tables.
#pragma once

#include <QString>
#include <array>
#include <cstdint>

#include "core/Stages.h"

namespace pixelgrove {

struct JsonName {
    QStringView text;
    uint32_t value;
};

inline constexpr std::array<JsonName, 3> kFilterNames{{
    {u"linear", gl::kLinear},
    {u"nearest", gl::kNearest},
    {u"mipmap", gl::kLinearMipmapLinear},
}};

// Mirrored repeat has no name in the format.
inline constexpr std::array<JsonName, 2> kWrapNames{{
    {u"clamp", gl::kClampToEdge},
    {u"repeat", gl::kRepeat},
}};

// What passes of buffers and cubes are called.
inline constexpr JsonName kPassNames[] = {
    {u"Buffer A", kStageBufferA}, {u"Buffer B", kStageBufferB}, {u"Buffer C", kStageBufferC},
    {u"Buffer D", kStageBufferD}, {u"Buf A", kStageBufferA},    {u"Buf B", kStageBufferB},
    {u"Buf C", kStageBufferC},    {u"Buf D", kStageBufferD},    {u"Cube A", kStageCubeA},
    {u"Cubemap A", kStageCubeA},
};

// The numbers by which an input names its source.
constexpr int kBufferInputOffset = 255;  // plus the StageId of Buffer A to D
constexpr int kCubeAInputId = 41;
constexpr int kOtherInputId = 666;

}  // namespace pixelgrove
