// Frame paths: the file that each recorded frame goes to, by a format that the user gave.
//
// The format is text of the user's and never reaches the C library's formatter. Pure; any thread.
#pragma once

#include <QString>
#include <cstdint>
#include <optional>

#include "recording/RecorderSettings.h"

namespace pixelgrove {

// The number in place of the format's one number field: '%', flags among "-+ #0", a width, a precision, and
// one of d, i, u, x, X, o, c, as in the C library; the number is never negative, and c is the character of
// that code. "%%" is a percent sign. A format without a field is its own result. Nothing when there is more
// than one field, when anything else follows a '%', when c has no character, or when the text would pass
// RecorderSettings::kMaxPathLength.
std::optional<QString> FormatNumber(const QString& format, uint32_t number);

// Folder without the separators at its end, a separator and format, the number filled in; fields of the
// folder count too. Nothing as above.
std::optional<QString> BuildFramePath(const FramePathTemplate& path, uint32_t number);

// What the number gives, or why it gives nothing: the user's text either way.
struct FramePathSample {
    bool isGood = false;
    QString text;
};
FramePathSample PreviewFramePath(const FramePathTemplate& path, uint32_t number);

}  // namespace pixelgrove
