#include "ui/text/LineEdits.h"

#include <QString>
#include <algorithm>

#include "ui/text/Indentation.h"

namespace pixelgrove {

namespace {

const QString kCommentMark = QStringLiteral("// ");

// Of whole lines, without the end of the last one.
struct Stretch {
    qsizetype start;
    qsizetype end;
};

qsizetype LineStart(QStringView text, qsizetype position) {
    return position == 0 ? 0 : text.lastIndexOf(u'\n', position - 1) + 1;
}

qsizetype LineEnd(QStringView text, qsizetype position) {
    const qsizetype end = text.indexOf(u'\n', position);
    return end < 0 ? text.size() : end;
}

Stretch LinesOf(QStringView text, TextSelection selection) {
    const auto [first, last] = std::minmax(selection.anchor, selection.caret);
    const bool endsBefore = last > first && text[last - 1] == u'\n';
    return {LineStart(text, first), LineEnd(text, endsBefore ? last - 1 : last)};
}

// One of several lines: where it starts in the text, and what it holds.
struct Line {
    qsizetype start;
    QStringView text;
};

// Those that have more than blanks; all of them where none has.
std::vector<Line> CommentableLines(QStringView text, Stretch lines) {
    std::vector<Line> all, filled;
    for (qsizetype start = lines.start; start <= lines.end;) {
        const qsizetype end = std::min(LineEnd(text, start), lines.end);
        const QStringView line = text.sliced(start, end - start);
        all.push_back({start, line});
        if (LeadingBlanks(line) < line.size()) filled.push_back(all.back());
        start = end + 1;
    }
    return filled.empty() ? all : filled;
}

QStringView SharedBlanks(const std::vector<Line>& lines) {
    QStringView shared = lines.front().text.first(LeadingBlanks(lines.front().text));
    for (const Line& line : lines) {
        const auto differs = std::mismatch(shared.begin(), shared.end(), line.text.begin(), line.text.end());
        shared = shared.first(differs.first - shared.begin());
    }
    return shared;
}

// Where a place of the text is behind the changes. What is put in right there comes before it, unless it
// `stays`.
qsizetype Moved(qsizetype position, const std::vector<UndoHistory::Change>& changes, bool stays) {
    qsizetype shift = 0;
    for (const UndoHistory::Change& change : changes) {
        if (change.position > position || (change.position == position && stays)) break;
        shift += change.text.size() - std::min(change.length, position - change.position);
    }
    return position + shift;
}

}  // namespace

LineEdit ToggleComments(QStringView text, TextSelection selection) {
    const std::vector<Line> lines = CommentableLines(text, LinesOf(text, selection));
    LineEdit edit;
    const bool areComments = std::ranges::all_of(
        lines, [](const Line& line) { return line.text.sliced(LeadingBlanks(line.text)).startsWith(u"//"); });
    const qsizetype column = SharedBlanks(lines).size();
    for (const Line& line : lines) {
        if (areComments) {
            const qsizetype blanks = LeadingBlanks(line.text);
            const bool hasBlank = line.text.sliced(blanks).startsWith(kCommentMark);
            edit.changes.push_back({line.start + blanks, hasBlank ? 3 : 2, QString()});
        } else {
            edit.changes.push_back({line.start + column, 0, kCommentMark});
        }
    }
    const auto [anchor, caret] = selection;
    edit.selection = {Moved(anchor, edit.changes, anchor < caret),
                      Moved(caret, edit.changes, caret < anchor)};
    return edit;
}

LineEdit Duplicate(QStringView text, TextSelection selection) {
    const auto [first, last] = std::minmax(selection.anchor, selection.caret);
    UndoHistory::Change copy{last, 0, text.sliced(first, last - first).toString()};
    if (copy.text.isEmpty()) {
        const Stretch line = LinesOf(text, selection);
        copy = {line.end, 0, u'\n' + text.sliced(line.start, line.end - line.start).toString()};
    }
    const qsizetype shift = copy.text.size();
    return {{copy}, {selection.anchor + shift, selection.caret + shift}};
}

LineEdit MoveLines(QStringView text, TextSelection selection, bool up) {
    const Stretch lines = LinesOf(text, selection);
    if (up ? lines.start == 0 : lines.end == text.size()) return {{}, selection};
    LineEdit edit;
    qsizetype shift = 0;
    if (up) {
        const qsizetype above = LineStart(text, lines.start - 1);
        const QString line = text.sliced(above, lines.start - 1 - above).toString();
        shift = above - lines.start;
        edit.changes = {{above, -shift, QString()}, {lines.end, 0, u'\n' + line}};
    } else {
        const qsizetype below = LineEnd(text, lines.end + 1);
        const QString line = text.sliced(lines.end + 1, below - lines.end - 1).toString();
        shift = below - lines.end;
        edit.changes = {{lines.start, 0, line + u'\n'}, {lines.end, shift, QString()}};
    }
    // A selection may go on to the start of the next line, and there may be none.
    edit.selection = {std::min(selection.anchor + shift, text.size()),
                      std::min(selection.caret + shift, text.size())};
    return edit;
}

}  // namespace pixelgrove
