#include "app/RenderOptions.h"

#include <cmath>
#include <optional>

#include "recording/FramePath.h"

namespace pixelgrove {

namespace {

constexpr int kMostFrames = 10'000'000;
constexpr int kMostJobs = 256;
constexpr int kLargestSide = 16384;

std::optional<float> ParseFloat(const QString& text) {
    bool good = false;
    const float value = text.toFloat(&good);
    if (!good || !std::isfinite(value)) return std::nullopt;
    return value;
}

bool ParseSize(const QString& text, RenderOptions& options) {
    const QStringList parts = text.split(QLatin1Char('x'), Qt::KeepEmptyParts, Qt::CaseInsensitive);
    if (parts.size() != 2) return false;
    bool goodWidth = false;
    bool goodHeight = false;
    const int width = parts[0].toInt(&goodWidth);
    const int height = parts[1].toInt(&goodHeight);
    if (!goodWidth || !goodHeight || width < 1 || height < 1 || width > kLargestSide ||
        height > kLargestSide) {
        return false;
    }
    options.width = width;
    options.height = height;
    return width + height >= 3;  // the engine draws nothing smaller
}

uint32_t ParseStage(const QString& text) {
    for (uint32_t id = kStageBufferA; id <= kStageImage; ++id) {
        if (StageName(id).compare(text, Qt::CaseInsensitive) == 0) return id;
    }
    return kStageNone;
}

bool ParseSet(const QString& text, RenderOptions& options) {
    const qsizetype equals = text.indexOf(QLatin1Char('='));
    if (equals < 1) return false;
    const QString value = text.mid(equals + 1).trimmed();
    if (value.isEmpty()) return false;
    options.values.emplace_back(text.left(equals).trimmed(), value);
    return true;
}

// A whole number from 1 on, without a sign.
bool ParseCount(const QString& text, int most, int& count) {
    bool good = false;
    count = text.toInt(&good);
    return good && count >= 1 && count <= most;
}

struct ValueOption {
    const char* name;
    const char* takes;  // for the message about what it doesn't
    bool (*read)(const QString& value, RenderOptions& options);
};

constexpr ValueOption kValueOptions[] = {
    {"--pick", "a shader's id",
     [](const QString& value, RenderOptions& options) {
         options.pick = value;
         return !value.isEmpty();
     }},
    {"--frames", "a number from 1 to 10000000",
     [](const QString& value, RenderOptions& options) {
         return ParseCount(value, kMostFrames, options.frames);
     }},
    {"--first", "a number from 1 to 10000000",
     [](const QString& value, RenderOptions& options) {
         return ParseCount(value, kMostFrames, options.first);
     }},
    {"--start", "a number",
     [](const QString& value, RenderOptions& options) {
         const std::optional<float> start = ParseFloat(value);
         options.start = start.value_or(0.0f);
         return start.has_value();
     }},
    {"--speed", "a number from -1 to 1",
     [](const QString& value, RenderOptions& options) {
         const std::optional<float> speed = ParseFloat(value);
         options.speed = speed.value_or(0.0f);
         // The range of the workbench's control of that name.
         return speed && *speed >= -1.0f && *speed <= 1.0f;
     }},
    {"--size", "WIDTHxHEIGHT, each from 1 to 16384 and one above 1",
     [](const QString& value, RenderOptions& options) { return ParseSize(value, options); }},
    {"--stage", "the name of a stage that is drawn, such as \"Buffer A\"",
     [](const QString& value, RenderOptions& options) {
         options.stage = ParseStage(value);
         return options.stage != kStageNone;
     }},
    {"--print-source", "the name of a stage that is drawn, such as \"Buffer A\"",
     [](const QString& value, RenderOptions& options) {
         options.printSource = ParseStage(value);
         return options.printSource != kStageNone;
     }},
    {"--set", "NAME=VALUE",
     [](const QString& value, RenderOptions& options) { return ParseSet(value, options); }},
    {"--rate", "frames a second from 0.01 to 10000, as 60, 59.94 or 30000/1001",
     [](const QString& value, RenderOptions& options) {
         const std::optional<FrameRate> rate = ParseFrameRate(value);
         options.rate = rate.value_or(FrameRate());
         options.hasRate = rate.has_value();
         return options.hasRate;
     }},
    {"--date", "a local time such as 2026-11-23T12:00:00",
     [](const QString& value, RenderOptions& options) {
         options.date = ParseDate(value);
         return options.date.has_value();
     }},
    {"--audio", "a sound file",
     [](const QString& value, RenderOptions& options) {
         options.audio = value;
         return !value.isEmpty();
     }},
    {"--out", "a folder",
     [](const QString& value, RenderOptions& options) {
         options.outFolder = value;
         return !value.isEmpty();
     }},
    {"--format", "a file name with a number field, such as frame-%04d.png",
     [](const QString& value, RenderOptions& options) {
         options.format = value;
         return !value.isEmpty() && FormatNumber(value, 1).has_value();
     }},
    {"--format-errors", "plain or gcc",
     [](const QString& value, RenderOptions& options) {
         options.gccErrors = value == QLatin1String("gcc");
         return options.gccErrors || value == QLatin1String("plain");
     }},
    {"--jobs", "a number from 1 to 256",
     [](const QString& value, RenderOptions& options) { return ParseCount(value, kMostJobs, options.jobs); }},
};

const ValueOption* FindValueOption(const QString& name) {
    for (const ValueOption& option : kValueOptions)
        if (name == QLatin1String(option.name)) return &option;
    return nullptr;
}

// The form behind --pipe, which may be left out.
std::optional<PipeForm> PipeFormOf(const QString& text) {
    if (text == QLatin1String("rgb24")) return PipeForm::Rgb24;
    if (text == QLatin1String("y4m")) return PipeForm::Y4m;
    return std::nullopt;
}

constexpr QLatin1String kPipeForms("rgb24 or y4m");

QString NoValueFor(const QString& name, const QString& value, QLatin1String takes) {
    return QStringLiteral("\"%1\" is no value for %2, which takes %3.").arg(value, name, takes);
}

// What the options say together; empty when it makes sense.
QString Contradiction(const RenderOptions& options, const QStringList& given) {
    if (options.help || options.version) return {};
    if (options.project.isEmpty()) return QStringLiteral("No project given.");
    for (const char* name : {"--out", "--format", "--jobs"}) {
        if (options.pipe != PipeForm::None && given.contains(QLatin1String(name)))
            return QStringLiteral("%1 is for files, and --pipe writes none.").arg(QLatin1String(name));
    }
    if (options.frames > 1 && FormatNumber(options.format, 1) == FormatNumber(options.format, 2))
        return QStringLiteral(
                   "\"%1\" is one name for %2 frames; --format takes a number field, such as %04d.")
            .arg(options.format)
            .arg(options.frames);
    return {};
}

}  // namespace

QString RenderUsage() {
    return QStringLiteral(
        "Usage: pixelgrove-render PROJECT [options]\n"
        "  PROJECT               a project file, or a shader's id on the service\n"
        "  --pick ID             the shader to take from a file of several\n"
        "  --frames N            frames to write (1)\n"
        "  --first N             number of the first of them in the same animation (1)\n"
        "  --start T             shader time before frame 1 (0.1)\n"
        "  --speed S             time step of a frame, -1 to 1 (0.03)\n"
        "  --size WxH            picture size in pixels (640x360)\n"
        "  --stage NAME          stage to write: \"Buffer A\" to \"Buffer D\", \"Cube A\" (its six faces in "
        "a\n"
        "                        row, +X -X +Y -Y +Z -Z), \"Image\" (Image)\n"
        "  --set NAME=VALUE      value of a uniform or a live control; may be given again\n"
        "  --rate R              frames a second, such as 25 or 30000/1001: sets iFrameRate, and\n"
        "                        what --date, --audio and y4m go by (60)\n"
        "  --date TIME           iDate at frame 1, such as 2026-11-23T12:00:00 (the clock's)\n"
        "  --audio FILE          sound file that audio channels hear from frame 1 on\n"
        "  --out DIR             folder for the pictures (.)\n"
        "  --format NAME         file name with one number field (frame-%04d.png)\n"
        "  --jobs N              threads that encode pictures while the next is drawn (1)\n"
        "  --pipe [rgb24|y4m]    write raw frames to stdout instead (rgb24: 3 bytes a pixel, from the\n"
        "                        top left; y4m: YUV4MPEG2, 4:4:4, BT.709, limited range)\n"
        "  --print-source STAGE  write the complete GLSL text of a stage to stdout and end\n"
        "  --list-controls       write the live controls to stdout, one a line, and end\n"
        "  --check               compile only\n"
        "  --format-errors FORM  compile messages as \"Image(4): error: ...\" (plain), or as\n"
        "                        \"FILE:LINE:COLUMN: error: ...\" for editors (gcc)\n"
        "  --help                show this text\n"
        "  --version             show the program's version\n"
        "Exit status: 0 done, 1 the project doesn't compile, 2 wrong usage, or a file or\n"
        "shader that can't be had.\n");
}

ParsedOptions ParseRenderOptions(const QStringList& arguments) {
    ParsedOptions parsed;
    RenderOptions& options = parsed.options;
    QStringList given;
    for (qsizetype i = 0; i < arguments.size() && parsed.error.isEmpty(); ++i) {
        const QString& argument = arguments[i];
        // "--name value" and "--name=value".
        const bool hasOwnValue = argument.startsWith(QLatin1String("--")) && argument.contains(u'=');
        const QString name = hasOwnValue ? argument.section(u'=', 0, 0) : argument;
        const QString value = hasOwnValue ? argument.section(u'=', 1) : arguments.value(i + 1);
        given.append(name);
        if (const ValueOption* option = FindValueOption(name)) {
            if (!hasOwnValue && ++i >= arguments.size())
                parsed.error =
                    QStringLiteral("%1 needs a value: %2.").arg(name, QLatin1String(option->takes));
            else if (!option->read(value, options))
                parsed.error = NoValueFor(name, value, QLatin1String(option->takes));
        } else if (name == QLatin1String("--pipe")) {
            const std::optional<PipeForm> form = PipeFormOf(value);
            options.pipe = form.value_or(PipeForm::Rgb24);
            if (form && !hasOwnValue) ++i;
            if (!form && hasOwnValue) parsed.error = NoValueFor(name, value, kPipeForms);
        } else if (argument == QLatin1String("--list-controls")) {
            options.listControls = true;
        } else if (argument == QLatin1String("--check")) {
            options.checkOnly = true;
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            options.help = true;
        } else if (argument == QLatin1String("--version")) {
            options.version = true;
        } else if (argument.startsWith(u'-')) {
            parsed.error = QStringLiteral("Unknown option %1.").arg(argument);
        } else if (options.project.isEmpty()) {
            options.project = argument;
        } else if (i > 0 && arguments[i - 1] == QLatin1String("--pipe")) {
            parsed.error = NoValueFor(arguments[i - 1], argument, kPipeForms);
        } else {
            parsed.error = QStringLiteral("More than one project: %1 and %2.").arg(options.project, argument);
        }
    }
    if (parsed.error.isEmpty()) parsed.error = Contradiction(options, given);
    return parsed;
}

}  // namespace pixelgrove
