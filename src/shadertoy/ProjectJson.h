// Shader projects as JSON text: one reader and one writer for project files, the service's answers and the
// cache.
//
// Pure functions over records that the caller owns; any thread. Texts are UTF-16, as FromCodePage decodes
// the bytes; shader source inside the project is narrow text in the code page.
//
// Reader and writer are not mirror images, on purpose:
// - the writer gives passes "outputs" and inputs "published"; the reader takes a source by the pass's name
//   and the input's "id" alone;
// - the cube stage is written "Cubemap A" and "Cube A" is read as well, as "Buf A" is for "Buffer A";
// - "music", "musicstream" and "mic" are read as audio and written "audio";
// - tags are joined with ", " and split at "," alone, so the second one on has a leading blank when written;
// - the reader keeps a stage's text where the code page lacks some of it; the writer writes the source alone;
// - mirrored repeat and other wraps without a name are written "clamp", filters without one "linear".
//
// Texts are cut at a zero character. A text that is too long for its field, or a number too large for 64
// bits, leaves its field empty, and reading goes on. The optional warnings get a line for this and for all
// else that the text holds and the records don't: writing them would lose it.
#pragma once

#include <QString>

#include "core/ShaderProject.h"
#include "shadertoy/JsonObject.h"
#include "shadertoy/LoadWarnings.h"

namespace pixelgrove {

// Reads a whole project. False on malformed text or a missing or wrong "Shader", "ver", "info", "renderpass"
// or element of "renderpass"; what was read until then stays in the project, which is cleared first.
// Passes that can't be read are left out; passes of unknown kinds land in slot 0.
bool ReadProjectJson(const QString& text, ShaderProject& project, LoadWarnings* warnings = nullptr);

// Reads "Shader"."info" alone. False when a key is missing or has another type; numbers read until then stay,
// the strings stay empty unless all keys but "tags" were there.
bool ReadInfoJson(const QString& text, ShaderInfo& info, LoadWarnings* warnings = nullptr);

// Reads one element of "renderpass" into a cleared stage. False when the pass is to be dropped. A pass of
// sound gives true and an empty stage. Inputs with a channel outside 0..3 are left out.
bool ReadPassJson(const JsonObject& pass, ShaderStage& stage, LoadWarnings* warnings = nullptr);

// Reads one element of "inputs" into a cleared channel, with sourceStage 0 where it names no stage. False
// when a key is missing or has another type; what was read until then stays, which is enough for use when
// only "internal" is missing. channelIndex is the number in the text and may be outside 0..3: check it.
bool ReadInputJson(const JsonObject& input, ChannelInput& channel);

// Image first, then the others in StageId order, those that exist.
QString WriteProjectJson(const ShaderProject& project);
JsonObject WriteInfoJson(const ShaderInfo& info);
JsonObject WritePassJson(const ShaderStage& stage);
JsonObject WriteInputJson(const ChannelInput& channel);

// Writes the project's text in the code page; what the page lacks is escaped. False when the file can't be
// written, and then an old file stays and the optional reason gets the system's words for it.
bool SaveProjectJson(const QString& path, const ShaderProject& project, QString* reason = nullptr);

}  // namespace pixelgrove
