// The command line of pixelgrove-render, parsed. Pure.
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <optional>
#include <utility>
#include <vector>

#include "app/FrameClock.h"
#include "core/Stages.h"

namespace pixelgrove {

// What goes to standard output instead of files.
enum class PipeForm { None, Rgb24, Y4m };

struct RenderOptions {
    QString project;
    QString pick;    // the id of one of several shaders in the project's file, or '#' and its place from 1
    int frames = 1;  // how many are written
    int first = 1;   // the number of the first of them
    float start = 0.1f;
    float speed = 0.03f;
    int width = 640;
    int height = 360;
    uint32_t stage = kStageImage;
    std::vector<std::pair<QString, QString>> values;  // --set
    QString outFolder = QStringLiteral(".");
    QString format = QStringLiteral("frame-%04d.png");
    PipeForm pipe = PipeForm::None;
    int jobs = 1;
    FrameRate rate;
    bool hasRate = false;  // it was given
    std::optional<QDateTime> date;
    QString audio;
    uint32_t printSource = kStageNone;
    bool listControls = false;
    bool checkOnly = false;
    bool gccErrors = false;  // messages in the form of core/ProblemLines.h
    bool help = false;
    bool version = false;
};

struct ParsedOptions {
    RenderOptions options;
    QString error;  // empty when the command line is good
};

// arguments without the program's name.
ParsedOptions ParseRenderOptions(const QStringList& arguments);

QString RenderUsage();

}  // namespace pixelgrove
