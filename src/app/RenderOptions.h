// The command line of pixelgrove-render, parsed. Pure.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "core/Stages.h"

namespace pixelgrove {

struct RenderOptions {
    QString project;
    int frames = 1;
    float start = 0.1f;
    float speed = 0.03f;
    int width = 640;
    int height = 360;
    uint32_t stage = kStageImage;
    std::vector<std::pair<QString, QString>> values;  // --set
    QString outFolder = QStringLiteral(".");
    QString format = QStringLiteral("frame-%04d.png");
    uint32_t printSource = kStageNone;
    bool listControls = false;
    bool checkOnly = false;
    bool help = false;
};

struct ParsedOptions {
    RenderOptions options;
    QString error;  // empty when the command line is good
};

// arguments without the program's name.
ParsedOptions ParseRenderOptions(const QStringList& arguments);

QString RenderUsage();

// Replaces the one number field of a frame name format: %d, or %4d and %04d with a width of 1 to 9. %% is a
// percent sign. Nothing when there is no field or more than one, or another letter follows a percent sign.
std::optional<QString> FormatFrameName(const QString& format, int number);

}  // namespace pixelgrove
