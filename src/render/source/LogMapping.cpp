#include "render/source/LogMapping.h"

#include <QRegularExpression>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "core/Stages.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

struct PlacedMessage {
    int line = 0;  // of the assembled text, from 1
    QStringView message;
    int column = 0;  // from 1; 0 for none
};

// "0(57) : error C0000: text", read as scanf reads "%d(%d) : %[^\n]": blanks around the colon may be
// missing or many, the message may not be empty.
std::optional<PlacedMessage> ScanColonForm(QStringView text) {
    qsizetype at = 0;
    if (!ScanInt(text, at) || !SkipChar(text, at, u'(')) return std::nullopt;
    const std::optional<int> line = ScanInt(text, at);
    if (!line || !SkipChar(text, at, u')')) return std::nullopt;
    SkipSpace(text, at);
    if (!SkipChar(text, at, u':')) return std::nullopt;
    SkipSpace(text, at);
    if (at == text.size()) return std::nullopt;
    return PlacedMessage{*line, text.sliced(at)};
}

// Mesa's "0:57(12): error: text". Other kinds of message are left alone.
std::optional<PlacedMessage> ScanColumnForm(QStringView text) {
    qsizetype at = 0;
    if (!ScanInt(text, at) || !SkipChar(text, at, u':')) return std::nullopt;
    const std::optional<int> line = ScanInt(text, at);
    if (!line || !SkipChar(text, at, u'(')) return std::nullopt;
    const std::optional<int> column = ScanInt(text, at);
    if (!column || !SkipChar(text, at, u')')) return std::nullopt;
    if (!SkipChar(text, at, u':') || !SkipChar(text, at, u' ')) return std::nullopt;
    const QStringView message = text.sliced(at);
    for (const QStringView kind : {u"error: ", u"warning: ", u"preprocessor error: "}) {
        if (message.startsWith(kind)) return PlacedMessage{*line, message, *column};
    }
    return std::nullopt;
}

std::optional<PlacedMessage> ScanPlaced(QStringView line) {
    const std::optional<PlacedMessage> placed = ScanColonForm(line);
    return placed ? placed : ScanColumnForm(line);
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

// 64-bit, since the line comes from outside and may be any int.
qint64 DisplayedLine(const std::vector<IncludedFile>& rows, int line) {
    qint64 displayed = line;
    for (const IncludedFile& row : rows) {
        if (row.depth < 2 && row.endLine < line) displayed += qint64(row.firstLine) - row.endLine;
    }
    return displayed;
}

// "NAME(LINE): " at the start of a mapped line, or nothing. NAME may hold parentheses itself.
QStringView PlaceOf(QStringView line) {
    for (qsizetype close = line.indexOf(u"): "); close >= 0; close = line.indexOf(u"): ", close + 1)) {
        qsizetype open = close;
        while (open > 0 && line[open - 1] >= u'0' && line[open - 1] <= u'9')
            --open;
        if (open < close && open > 0 && line[open - 1] == u'-') --open;
        if (open < close && open > 0 && line[open - 1] == u'(') return line.first(close + 3);
    }
    return {};
}

// The column of a line as it is written that is this one where each run of blanks is one character; from 1.
int WrittenColumn(const QByteArray& line, int column) {
    int collapsed = 1;
    qsizetype at = 0;
    for (; at < line.size() && collapsed < column; ++at) {
        const bool goesOn = IsBlank(line[at]) && at + 1 < line.size() && IsBlank(line[at + 1]);
        if (!goesOn) ++collapsed;
    }
    return int(at) + 1;
}

}  // namespace

const IncludedFile* FileAt(const std::vector<IncludedFile>& rows, int line) {
    const IncludedFile* best = nullptr;
    for (const IncludedFile& row : rows) {
        if (row.firstLine > line || row.endLine < line) continue;
        if (!best || row.depth > best->depth) best = &row;
    }
    return best;
}

QString MapShaderLog(IncludeContext& context, const QString& log, const QString& defaultName) {
    const std::vector<IncludedFile> rows = std::exchange(context.includedFiles, {});
    const qsizetype zero = log.indexOf(QChar(u'\0'));
    QString result;
    ForEachLine(QStringView(log).first(zero < 0 ? log.size() : zero), [&](QStringView line) {
        if (const std::optional<PlacedMessage> placed = ScanPlaced(line)) {
            const IncludedFile* file = FileAt(rows, placed->line);
            result.append(file ? file->name : defaultName).append(u'(');
            result.append(QString::number(DisplayedLine(rows, placed->line))).append(QStringLiteral("): "));
            line = placed->message;
        }
        result.append(line).append(u'\n');
    });
    return result;
}

std::optional<int> LogLineOf(QStringView logLine) {
    const std::optional<PlacedMessage> placed = ScanPlaced(logLine);
    return placed ? std::optional(placed->line) : std::nullopt;
}

LogColumns ColumnsOf(const QString& log, const QString& mapped, QByteArrayView text) {
    const QList<QByteArray> lines = text.toByteArray().split('\n');
    std::vector<int> columns;
    ForEachLine(log, [&](QStringView line) {
        const std::optional<PlacedMessage> placed = ScanPlaced(line);
        const bool isThere = placed && placed->column > 0 && placed->line > 0 && placed->line <= lines.size();
        columns.push_back(isThere ? WrittenColumn(lines[placed->line - 1], placed->column) : 0);
    });
    LogColumns byLine;
    size_t index = 0;
    ForEachLine(mapped, [&](QStringView line) {
        if (index < columns.size() && columns[index] > 0) byLine[line.toString()].append(columns[index]);
        ++index;
    });
    return byLine;
}

void PlaceColumns(LogColumns& columns, CompileMessages& messages) {
    for (CompileMessage& message : messages) {
        const auto found = columns.find(message.text);
        if (found != columns.end() && !found->isEmpty()) message.column = found->takeFirst();
    }
}

QString ExplainUnsetChannels(const QString& mapped, const QString& stageName) {
    // Drivers quote the name in different ways and say "undeclared" or "undefined".
    static const QRegularExpression sampler(QStringLiteral("\\biChannel([0-3])\\b"));
    std::array<bool, kChannelCount> explained{};
    QString result;
    ForEachLine(mapped, [&](QStringView line) {
        result.append(line).append(u'\n');
        if (!line.contains(u"undeclared") && !line.contains(u"undefined")) return;
        const QRegularExpressionMatch match = sampler.match(line.toString());
        if (!match.hasMatch()) return;
        const QStringView digit = match.capturedView(1);
        bool& done = explained[static_cast<size_t>(digit[0].unicode() - u'0')];
        if (done) return;
        done = true;
        result.append(PlaceOf(line))
            .append(QStringLiteral("note: iChannel%1 is not set: choose an input for channel %1 of %2.\n")
                        .arg(digit, stageName));
    });
    return result;
}

CompileMessages MessagesOf(QStringView mapped) {
    CompileMessages messages;
    ForEachLine(mapped, [&](QStringView line) {
        CompileMessage message;
        message.text = line.toString();
        if (const QStringView place = PlaceOf(line); place.indexOf(u'(') > 0) {
            const qsizetype open = place.lastIndexOf(u'(');
            qsizetype at = open + 1;
            message.place = place.first(open).toString();
            message.line = ScanInt(place, at).value_or(0);
        }
        messages.push_back(std::move(message));
    });
    return messages;
}

StageErrors SplitErrors(const QString& mapped) {
    StageErrors errors;
    CompileMessages* last = nullptr;
    for (CompileMessage& message : MessagesOf(mapped)) {
        const bool isNote =
            QStringView(message.text).sliced(PlaceOf(message.text).size()).startsWith(u"note: ");
        if (!isNote || !last)
            last = message.text.contains(u"Common", Qt::CaseInsensitive) ? &errors.common : &errors.stage;
        last->push_back(std::move(message));
    }
    return errors;
}

}  // namespace pixelgrove
