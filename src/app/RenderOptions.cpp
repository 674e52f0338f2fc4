#include "app/RenderOptions.h"

#include <cmath>

namespace pixelgrove {

namespace {

constexpr int kMostFrames = 10'000'000;
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

bool ParseValue(const QString& name, const QString& value, RenderOptions& options) {
    if (name == QLatin1String("--frames")) {
        bool good = false;
        options.frames = value.toInt(&good);
        return good && options.frames >= 1 && options.frames <= kMostFrames;
    }
    if (name == QLatin1String("--start")) {
        const std::optional<float> start = ParseFloat(value);
        options.start = start.value_or(0.0f);
        return start.has_value();
    }
    if (name == QLatin1String("--speed")) {
        const std::optional<float> speed = ParseFloat(value);
        options.speed = speed.value_or(0.0f);
        // The range of the workbench's control of that name.
        return speed && *speed >= -1.0f && *speed <= 1.0f;
    }
    if (name == QLatin1String("--size")) return ParseSize(value, options);
    if (name == QLatin1String("--stage")) {
        options.stage = ParseStage(value);
        return options.stage != kStageNone;
    }
    if (name == QLatin1String("--print-source")) {
        options.printSource = ParseStage(value);
        return options.printSource != kStageNone;
    }
    if (name == QLatin1String("--set")) return ParseSet(value, options);
    if (name == QLatin1String("--out")) {
        options.outFolder = value;
        return !value.isEmpty();
    }
    if (name == QLatin1String("--format")) {
        options.format = value;
        return FormatFrameName(value, 1).has_value();
    }
    return false;
}

bool TakesValue(const QString& name) {
    static const QStringList names = {
        QStringLiteral("--frames"), QStringLiteral("--start"),        QStringLiteral("--speed"),
        QStringLiteral("--size"),   QStringLiteral("--stage"),        QStringLiteral("--set"),
        QStringLiteral("--out"),    QStringLiteral("--print-source"), QStringLiteral("--format")};
    return names.contains(name);
}

}  // namespace

QString RenderUsage() {
    return QStringLiteral(
        "Usage: pixelgrove-render PROJECT [options]\n"
        "  PROJECT               a project file, or a shader's id on the service\n"
        "  --frames N            frames to write (1)\n"
        "  --start T             shader time before the first frame (0.1)\n"
        "  --speed S             time step of a frame, -1 to 1 (0.03)\n"
        "  --size WxH            picture size in pixels (640x360)\n"
        "  --stage NAME          stage to write: \"Buffer A\" to \"Buffer D\", \"Cube A\" (its six faces in "
        "a\n"
        "                        row, +X -X +Y -Y +Z -Z), \"Image\" (Image)\n"
        "  --set NAME=VALUE      value of a uniform or a live control; may be given again\n"
        "  --out DIR             folder for the pictures (.)\n"
        "  --format NAME         file name with one number field (frame-%04d.png)\n"
        "  --print-source STAGE  write the complete GLSL text of a stage to stdout and end\n"
        "  --list-controls       write the live controls to stdout, one a line, and end\n"
        "  --check               compile only\n"
        "Exit status: 0 done, 1 the project doesn't compile, 2 wrong usage, or a file or\n"
        "shader that can't be had.\n");
}

ParsedOptions ParseRenderOptions(const QStringList& arguments) {
    ParsedOptions parsed;
    RenderOptions& options = parsed.options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        QString name = arguments[i];
        if (name == QLatin1String("--list-controls")) {
            options.listControls = true;
        } else if (name == QLatin1String("--check")) {
            options.checkOnly = true;
        } else if (name == QLatin1String("--help") || name == QLatin1String("-h")) {
            options.help = true;
        } else if (TakesValue(name)) {
            if (i + 1 >= arguments.size()) {
                parsed.error = QStringLiteral("%1 needs a value.").arg(name);
                return parsed;
            }
            const QString& value = arguments[++i];
            if (!ParseValue(name, value, options)) {
                parsed.error = QStringLiteral("\"%1\" is no value for %2.").arg(value, name);
                return parsed;
            }
        } else if (name.startsWith(QLatin1String("--"))) {
            parsed.error = QStringLiteral("Unknown option %1.").arg(name);
            return parsed;
        } else if (options.project.isEmpty()) {
            options.project = name;
        } else {
            parsed.error = QStringLiteral("More than one project: %1.").arg(name);
            return parsed;
        }
    }
    if (options.project.isEmpty() && !options.help) parsed.error = QStringLiteral("No project given.");
    return parsed;
}

std::optional<QString> FormatFrameName(const QString& format, int number) {
    QString result;
    int fields = 0;
    for (qsizetype i = 0; i < format.size(); ++i) {
        if (format[i] != QLatin1Char('%')) {
            result += format[i];
            continue;
        }
        if (++i >= format.size()) return std::nullopt;
        if (format[i] == QLatin1Char('%')) {
            result += QLatin1Char('%');
            continue;
        }
        const bool zeroes = format[i] == QLatin1Char('0');
        if (zeroes) ++i;
        int width = 0;
        if (i < format.size() && format[i] >= QLatin1Char('1') && format[i] <= QLatin1Char('9')) {
            width = format[i++].digitValue();
        }
        if (i >= format.size() || format[i] != QLatin1Char('d')) return std::nullopt;
        result += QStringLiteral("%1").arg(number, width, 10, QLatin1Char(zeroes ? '0' : ' '));
        ++fields;
    }
    if (fields != 1) return std::nullopt;
    return result;
}

}  // namespace pixelgrove
