// What the files of the project reader share with each other, the writer and the converter:
// ProjectJsonReader.cpp reads a project and its passes, ProjectInfoReader.cpp its info,
// ProjectInputReader.cpp the inputs of a pass.
//
// For this folder alone. Pure functions; any thread.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "core/ShaderProject.h"
#include "shadertoy/JsonNames.h"
#include "shadertoy/JsonObject.h"
#include "shadertoy/LoadWarnings.h"

namespace pixelgrove {

// The value of that row; 0 without one.
template <typename Table>
uint32_t ValueOf(const Table& table, const QString& text) {
    for (const JsonName& row : table) {
        if (row.text == text) return row.value;
    }
    return 0;
}

void Warn(LoadWarnings* warnings, const QString& sentence);

// All texts of the records are zero-terminated in meaning.
QString UntilZero(const QString& text);

// Empty, with a warning, when it doesn't fit; what says which text it is. capacity counts the terminating
// zero.
QString FittingText(const QString& text, qsizetype capacity, const QString& what, LoadWarnings* warnings);

// JSON text with what the code page lacks written as escapes, which every reader resolves: it can only stand
// in strings. Names of local files would lead nowhere otherwise.
QString WithEscapes(const QString& json);

// Nothing for a number that 64 bits don't hold.
std::optional<int64_t> Truncated(double number);

// Reads "info" into the cleared record, as ReadInfoJson says.
bool ReadInfo(const JsonObject& source, ShaderInfo& info, LoadWarnings* warnings);

// Reads the inputs of a pass into its channels; false when an element is no object.
bool ReadInputs(const JsonArray& inputs, ShaderStage& stage, LoadWarnings* warnings);

}  // namespace pixelgrove
