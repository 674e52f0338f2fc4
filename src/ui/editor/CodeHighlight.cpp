#include "ui/editor/CodeHighlight.h"

#include <QHash>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <algorithm>

#include "look/widgets/Theme.h"
#include "ui/editor/CodeLayout.h"

namespace pixelgrove {

namespace {

using Formats = QList<QTextLayout::FormatRange>;

// The parts of the old colours inside [from, to), columns of the line.
void Keep(const Formats& old, int from, int to, Formats& kept) {
    for (const QTextLayout::FormatRange& range : old) {
        const int start = std::max(range.start, from);
        const int end = std::min(range.start + range.length, to);
        if (start < end) kept.append({start, end - start, range.format});
    }
}

}  // namespace

const QTextCharFormat& ColourFormat(uint32_t colour) {
    static QHash<uint32_t, QTextCharFormat> formats;
    QTextCharFormat& format = formats[colour];
    if (!format.hasProperty(QTextFormat::ForegroundBrush)) format.setForeground(FromBgr(colour));
    return format;
}

void ApplyColours(QTextDocument& document, qsizetype start, qsizetype end,
                  const std::vector<ColourSpan>& spans) {
    const qsizetype covered = spans.empty() ? end : std::max(end, spans.back().end);
    qsizetype firstChanged = -1;
    qsizetype lastChanged = -1;
    size_t next = 0;
    for (QTextBlock block = document.findBlock(int(start)); block.isValid() && block.position() < covered;
         block = block.next()) {
        const qsizetype lineStart = block.position();
        const qsizetype lineEnd = lineStart + block.length() - 1;
        while (next < spans.size() && spans[next].end <= lineStart)
            ++next;
        QTextLayout* layout = block.layout();
        // What an input method is composing has formats of its own there.
        if (!layout->preeditAreaText().isEmpty()) continue;
        const Formats old = layout->formats();
        Formats formats;
        for (size_t i = next; i < spans.size() && spans[i].start < lineEnd; ++i) {
            const qsizetype from = std::max(spans[i].start, lineStart) - lineStart;
            const qsizetype to = std::min(spans[i].end, lineEnd) - lineStart;
            formats.append({int(from), int(to - from), ColourFormat(spans[i].colour)});
        }
        if (start > lineStart || covered < lineEnd) {
            Formats merged;
            Keep(old, 0, int(std::max(start - lineStart, qsizetype(0))), merged);
            merged.append(formats);
            Keep(old, int(std::min(covered, lineEnd) - lineStart), int(lineEnd - lineStart), merged);
            formats = merged;
        }
        if (formats == old) continue;
        layout->setFormats(formats);
        if (firstChanged < 0) firstChanged = lineStart;
        lastChanged = lineEnd;
    }
    if (firstChanged >= 0) document.markContentsDirty(int(firstChanged), int(lastChanged - firstChanged));
}

void MoveColours(QTextDocument& document, int position, int removed, int added) {
    const QTextBlock block = document.findBlock(position);
    QTextLayout* layout = block.layout();
    if (!layout || !layout->preeditAreaText().isEmpty()) return;
    if (IsLongLine(block)) {
        // It may have become one just now.
        if (!layout->formats().isEmpty()) layout->setFormats({});
        return;
    }
    const int from = position - block.position();
    const auto moved = [&](int column) {
        if (column >= from + removed) return column + added - removed;
        return std::min(column, from);
    };
    const Formats old = layout->formats();
    Formats formats;
    for (const QTextLayout::FormatRange& range : old) {
        const int start = moved(range.start);
        const int behind = range.start + range.length;
        // What comes right behind a stretch is not of it.
        const int end = behind == from ? behind : moved(behind);
        if (start < end) formats.append({start, end - start, range.format});
    }
    if (formats != old) layout->setFormats(formats);
}

}  // namespace pixelgrove
