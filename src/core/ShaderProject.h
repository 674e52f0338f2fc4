// ShaderProject: the running form of a project, and the form that a project file is read into.
//
// A record without behaviour. The one inside a RenderContext belongs to the render thread while a run
// lives; temporary ones belong to whoever made them.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>

#include "core/Stages.h"

namespace pixelgrove {

// One shader's descriptive record. The comments give the capacity in UTF-16 units, terminating zero
// included: a text that doesn't fit leaves its field empty.
struct ShaderInfo {
    QString id;    // 20
    QString date;  // 32
    uint32_t viewed = 0;
    QString name;         // 128
    QString username;     // 64
    QString description;  // 260
    uint32_t likes = 0;
    uint32_t published = 0;
    uint32_t flags = 0;
    uint32_t usePreview = 0;
    QString tags;  // 256, joined with ", "
    uint32_t hasliked = 0;
    uint32_t size = 0;  // bytes of the JSON text plus one; set by the cache
};

struct ShaderStage {
    uint32_t kind = kStageNone;  // StageId; 0 means that the slot is empty
    QByteArray source;           // in the code page; null and empty are the same
    QString text;                // the same as it was read, when the page lacks some of it; else null
    std::array<ChannelInput, kChannelCount> channels;
    QByteArray log;  // last GL info log
    uint32_t program = 0;
    std::array<uint32_t, 2> frameBuffers{};
    std::array<uint32_t, 2> textures{};
    uint32_t writeIndex = 0;  // which of the two is written in the next pass
    std::array<float, kChannelCount> channelTime{};
    std::array<std::array<float, 3>, kChannelCount> channelResolution{};
};

struct ShaderProject {
    float version = 0.0f;
    ShaderInfo info;
    std::array<ShaderStage, kStageCount> stages;
};

}  // namespace pixelgrove
