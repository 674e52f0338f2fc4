#include "core/ProblemLines.h"

#include <QStringList>
#include <algorithm>
#include <utility>

#include "core/Stages.h"

namespace pixelgrove {

namespace {

bool IsStageName(const QString& name) {
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        if (name == StageName(id)) return true;
    return false;
}

bool IsGlslFile(const QString& file) {
    const auto ends = [&file](const char* ending) {
        return file.endsWith(QLatin1String(ending), Qt::CaseInsensitive);
    };
    return ends(".glsl") || ends(".frag");
}

// Takes the word for how bad it is off the text's start, in any driver's way of writing it.
QString TakeKind(QString& text) {
    static constexpr std::pair<const char*, const char*> kKinds[] = {
        {"error", "error"},     {"fatal error", "error"}, {"preprocessor error", "error"},
        {"warning", "warning"}, {"note", "note"},
    };
    for (const auto& [word, kind] : kKinds) {
        const QLatin1String start(word);
        if (!text.startsWith(start)) continue;
        const QString rest = text.sliced(start.size());
        if (!rest.startsWith(u':') && !rest.startsWith(u' ')) continue;
        text = rest.sliced(1).trimmed();  // "error: text" and "error C0000: text"
        return QLatin1String(kind);
    }
    return QStringLiteral("error");
}

}  // namespace

QString ProblemLine(const QString& file, int line, int column, const QString& kind, const QString& text) {
    const QStringList parts{file, QString::number(std::max(line, 1)), QString::number(std::max(column, 1)),
                            u' ' + kind, u' ' + text};
    return parts.join(u':');
}

QString ProblemLinesOf(const CompileMessages& messages, const QString& file) {
    QString lines;
    for (const CompileMessage& message : messages) {
        QString text = message.text;
        const QString place = message.place + u'(' + QString::number(message.line) + QStringLiteral("): ");
        const bool isPlaced = !message.place.isEmpty() && text.startsWith(place);
        if (isPlaced) text.remove(0, place.size());
        if (text.trimmed().isEmpty()) continue;
        const QString kind = TakeKind(text);
        const bool isStage = IsStageName(message.place);
        // Include files are known by their whole path; what else has a name stands before or behind the
        // user's text.
        const bool isFile = !isStage && message.place.startsWith(u'/');
        const bool hasLine = isStage || isFile;
        if (isPlaced && !isFile && !(isStage && IsGlslFile(file)))
            text = message.place + QStringLiteral(": ") + text;
        lines += ProblemLine(isFile ? message.place : file, hasLine ? message.line : 1,
                             hasLine ? message.column : 1, kind, text) +
                 u'\n';
    }
    return lines;
}

}  // namespace pixelgrove
