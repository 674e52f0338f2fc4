#include "render/source/OuterLines.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <optional>

#include "platform/CodePage.h"
#include "platform/TextScan.h"
#include "render/source/LogMapping.h"

namespace pixelgrove {
namespace {

const IncludedFile* RowNamed(const std::vector<IncludedFile>& rows, QStringView name) {
    const auto row = std::find_if(rows.begin(), rows.end(), [name](const IncludedFile& file) {
        return file.depth == 0 && file.name == name;
    });
    return row == rows.end() ? nullptr : &*row;
}

// The text that a line of the output stands in, without regard to how messages are counted.
const IncludedFile* RowAt(const std::vector<IncludedFile>& rows, int line) {
    const IncludedFile* best = nullptr;
    for (const IncludedFile& row : rows) {
        const bool holds = row.firstLine <= line && line < row.endLine;
        if (holds && (!best || row.depth > best->depth)) best = &row;
    }
    return best;
}

// The text with blanks for its comments, line ends kept.
struct Code {
    QByteArray text;
    qsizetype openComment = -1;  // where a block comment begins that has no end
};

Code WithoutComments(QByteArrayView text) {
    Code code{text.toByteArray()};
    enum { kCode, kLine, kBlock } state = kCode;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QByteArrayView pair = text.sliced(i, std::min<qsizetype>(2, text.size() - i));
        if (state == kCode && pair == "/*") {
            state = kBlock;
            code.openComment = i;
            code.text[i] = code.text[i + 1] = ' ';
            ++i;
        } else if (state == kCode && pair == "//") {
            state = kLine;
        } else if (state == kBlock && pair == "*/") {
            state = kCode;
            code.openComment = -1;
            code.text[i] = code.text[i + 1] = ' ';
            ++i;
            continue;
        }
        if (text[i] == '\n') {
            if (state == kLine) state = kCode;
        } else if (state != kCode) {
            code.text[i] = ' ';
        }
    }
    return code;
}

// The first brace that stays open; -1 when all are closed.
qsizetype OpenBrace(const QByteArray& code) {
    std::vector<qsizetype> open;
    for (qsizetype i = 0; i < code.size(); ++i) {
        if (code[i] == '{') open.push_back(i);
        if (code[i] == '}' && !open.empty()) open.pop_back();
    }
    return open.empty() ? -1 : open.front();
}

class Explainer {
  public:
    Explainer(QByteArrayView text, const std::vector<IncludedFile>& rows)
        : rows_(rows), prefix_(RowNamed(rows, u"PREFIX")), suffix_(RowNamed(rows, u"SUFFIX")) {
        if (!IsUsable()) return;
        starts_.push_back(0);
        for (qsizetype at = text.indexOf('\n'); at >= 0; at = text.indexOf('\n', at + 1))
            starts_.push_back(at + 1);
        starts_.push_back(text.size());
        userStart_ = StartOf(prefix_->endLine);
        user_ = text.sliced(userStart_, StartOf(suffix_->firstLine) - userStart_);
        footer_ = text.sliced(StartOf(suffix_->firstLine));
    }

    bool IsUsable() const { return prefix_ && suffix_ && prefix_->endLine <= suffix_->firstLine; }

    // The line to add for a message of the driver's about a line of the whole text; null for none.
    QString NoteFor(int line, QStringView message) const {
        if (line >= suffix_->firstLine) return FooterNote(line - suffix_->firstLine, message);
        const IncludedFile* row = RowAt(rows_, line);
        if (row != prefix_ && (!row || row == FileAt(rows_, line))) return {};
        if (row != prefix_ && row->depth == 0 && message.contains(u"syntax error")) {
            // Common may have left something open in front of the stage.
            const QByteArrayView before = user_.first(StartOf(row->firstLine) - userStart_);
            if (const qsizetype brace = OpenBrace(WithoutComments(before).text); brace >= 0)
                return BraceNote(brace);
        }
        if (row != prefix_) return Note(line, QStringLiteral("the message above is about this line."));
        return QStringLiteral("note: the driver refuses the text that stands before every stage.");
    }

  private:
    qsizetype StartOf(int line) const {
        return starts_[std::min(size_t(std::max(line, 1)) - 1, starts_.size() - 1)];
    }
    int LineAt(qsizetype position) const {
        return int(std::upper_bound(starts_.begin(), starts_.end() - 1, position) - starts_.begin());
    }
    // The line of the whole text that a place of the user's stands in.
    int UserLine(qsizetype position) const { return LineAt(userStart_ + position); }

    // A note at a line of the whole text, as the editor counts it: what a file brought in counts one line.
    QString Note(int line, const QString& what) const {
        const IncludedFile* row = RowAt(rows_, line);
        if (!row) return QStringLiteral("note: %1").arg(what);
        int shown = line - row->firstLine + 1;
        for (const IncludedFile& inner : rows_) {
            const bool isAbove =
                inner.depth == row->depth + 1 && inner.firstLine >= row->firstLine && inner.endLine <= line;
            if (isAbove) shown -= inner.endLine - inner.firstLine - 1;
        }
        return QStringLiteral("%1(%2): note: %3").arg(row->name).arg(shown).arg(what);
    }

    // The footer's words that are macros of the user's, in the line of the message or above it.
    QString MacroNote(const QByteArray& code, QByteArrayView footerPart) const {
        static const QRegularExpression define(
            QStringLiteral("^[ \\t]*#[ \\t]*(define|undef)[ \\t]+([A-Za-z_]\\w*)"),
            QRegularExpression::MultilineOption);
        static const QRegularExpression word(QStringLiteral("[A-Za-z_]\\w*"));
        QStringList words;
        for (auto it = word.globalMatch(FromCodePage(footerPart)); it.hasNext();)
            words.append(it.next().captured());
        QString note;
        QString macro;
        for (auto it = define.globalMatch(FromCodePage(code)); it.hasNext();) {
            const QRegularExpressionMatch match = it.next();
            const QString name = match.captured(2);
            if (match.captured(1) == QLatin1String("undef")) {
                if (name == macro) note.clear();
            } else if (words.contains(name)) {
                macro = name;
                note =
                    Note(UserLine(match.capturedStart(2)),
                         QStringLiteral("the text clashes with what stands behind it: here is a macro named "
                                        "`%1`.")
                             .arg(name));
            }
        }
        return note;
    }

    QString BraceNote(qsizetype brace) const {
        return Note(UserLine(brace), QStringLiteral("the brace that opens here is not closed."));
    }

    // The function that the footer calls is missing or another one.
    QString EntryNote(const QByteArray& code) const {
        const QString name = EntryName();
        const QString whole = name + (IsCube() ? QStringLiteral("(out vec4, in vec2, in vec3, in vec3)")
                                               : QStringLiteral("(out vec4, in vec2)"));
        const QRegularExpression own(QStringLiteral("\\b%1\\s*\\(").arg(name));
        const QRegularExpressionMatch match = own.match(FromCodePage(code));
        const qsizetype place = match.hasMatch() ? match.capturedStart() : LastCharacter(code);
        return Note(UserLine(place), QStringLiteral("a stage needs the function void %1.").arg(whole));
    }

    bool IsCube() const { return footer_.contains("mainCubemap"); }
    QString EntryName() const {
        return IsCube() ? QStringLiteral("mainCubemap") : QStringLiteral("mainImage");
    }

    static qsizetype LastCharacter(const QByteArray& code) {
        for (qsizetype i = code.size() - 1; i > 0; --i) {
            if (code[i] > ' ') return i;
        }
        return 0;
    }

    // line counts from 0, in the footer.
    QString FooterNote(int line, QStringView message) const {
        const Code code = WithoutComments(user_);
        if (code.openComment >= 0)
            return Note(UserLine(code.openComment),
                        QStringLiteral("the comment that begins here has no end."));
        for (const IncludedFile& row : rows_) {
            const qsizetype end = StartOf(row.endLine) - userStart_;
            if (&row == prefix_ || row.depth != 0 || end < 2 || end > user_.size()) continue;
            if (user_[end - 2] == '\\')
                return Note(
                    row.endLine - 1,
                    QStringLiteral("the backslash at the end of this line takes in the line behind it."));
        }
        const qsizetype lineStart = StartOf(suffix_->firstLine + line) - StartOf(suffix_->firstLine);
        const qsizetype lineEnd = StartOf(suffix_->firstLine + line + 1) - StartOf(suffix_->firstLine);
        QString note = MacroNote(code.text, footer_.sliced(lineStart, lineEnd - lineStart));
        if (!note.isNull()) return note;
        if (message.contains(u"mainImage") || message.contains(u"mainCubemap")) return EntryNote(code.text);
        note = MacroNote(code.text, footer_.first(lineStart));
        if (!note.isNull()) return note;

        static const QRegularExpression ownMain(QStringLiteral("\\bvoid\\s+main\\s*\\("));
        const QRegularExpressionMatch match = ownMain.match(FromCodePage(code.text));
        if (match.hasMatch())
            return Note(
                UserLine(match.capturedStart()),
                QStringLiteral("main stands behind the text already, and calls %1.").arg(EntryName()));
        if (const qsizetype brace = OpenBrace(code.text); brace >= 0) return BraceNote(brace);
        const int last = UserLine(LastCharacter(code.text));
        if (line <= 1 && message.contains(u"syntax error"))
            return Note(last, QStringLiteral("the text ends too early: a semicolon may be missing."));
        return Note(last, QStringLiteral("the text clashes with what stands behind it."));
    }

    const std::vector<IncludedFile>& rows_;
    const IncludedFile* const prefix_;
    const IncludedFile* const suffix_;
    std::vector<qsizetype> starts_;  // of each line, and the end
    qsizetype userStart_ = 0;
    QByteArrayView user_;
    QByteArrayView footer_;
};

}  // namespace

QString ExplainOuterLines(const QString& mapped, const QString& log, QByteArrayView text,
                          const std::vector<IncludedFile>& rows) {
    const Explainer explainer(text, rows);
    if (!explainer.IsUsable()) return mapped;
    std::vector<QStringView> shown;
    ForEachLine(mapped, [&shown](QStringView line) { shown.push_back(line); });
    QString result;
    QString pending;
    QStringList said;
    const auto flush = [&] {
        if (!pending.isNull() && !said.contains(pending)) {
            said.append(pending);
            result.append(pending).append(u'\n');
        }
        pending = QString();
    };
    size_t index = 0;
    ForEachLine(log, [&](QStringView raw) {
        if (index >= shown.size()) return;
        const QStringView line = shown[index++];
        QString note;
        if (const std::optional<int> place = LogLineOf(raw)) note = explainer.NoteFor(*place, line);
        if (note != pending) flush();
        pending = note;
        result.append(line).append(u'\n');
    });
    flush();
    return result;
}

}  // namespace pixelgrove
