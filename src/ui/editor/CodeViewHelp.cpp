// The editor's help in tool tips: what the word below the mouse is.
#include <QHelpEvent>
#include <QToolTip>

#include "core/CommentMap.h"
#include "look/widgets/Theme.h"
#include "ui/editor/CodeView.h"
#include "ui/editor/CompletionList.h"
#include "ui/text/Definitions.h"
#include "ui/text/GlslWords.h"
#include "ui/text/WordHelp.h"

namespace pixelgrove {

namespace {

// From the mouse to the corner of its tool tip, as the toolkit has it.
constexpr QPoint kTipOffset{2, 16};

// A tool tip is as wide as its longest line of code.
constexpr qsizetype kMaxColumns = 84;

// Goes on in the next line behind a comma.
QString BrokenAtCommas(QString line) {
    for (qsizetype start = 0; line.size() - start > kMaxColumns;) {
        const qsizetype comma = line.lastIndexOf(QStringLiteral(", "), start + kMaxColumns);
        if (comma <= start) break;
        line.replace(comma + 1, 1, QStringLiteral("\n    "));
        start = comma + 2;
    }
    return line;
}

// Lines of code above, sentences below.
QString TipOf(const QString& form, const QString& text) {
    QString lines;
    for (const QString& line : form.split(u'\n'))
        lines += BrokenAtCommas(line) + u'\n';
    lines = lines.trimmed().toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
    QString tip = QStringLiteral("<p style=\"font-family:'%1'; white-space:pre\">%2</p>")
                      .arg(CodeFont().family(), lines);
    if (!text.isEmpty())
        tip += QStringLiteral("<p>%1</p>").arg(text.toHtmlEscaped().replace(u'\n', QStringLiteral("<br>")));
    return tip;
}

QString TipOf(const WordHelp& help) {
    const QString form = QString::fromLatin1(help.form);
    const QString types = TypesExplained(form);
    return TipOf(form, QString::fromLatin1(help.text) + (types.isEmpty() ? types : u'\n' + types));
}

// What flows and qualifies can't be defined anew.
bool MayBeDefined(QStringView word) {
    const std::optional<uint32_t> colour = WordColour(word);
    return !word.front().isDigit() && (!colour || *colour == word_colours::kFunction);
}

}  // namespace

QString CodeView::HelpTip(QStringView word, qsizetype position) const {
    QStringList own;
    if (MayBeDefined(word)) {
        own = DefinitionsOf(word, Shown()->text, Shown()->commentMap, position);
        if (own.isEmpty() && sharedStage_ && sharedStage_ != Shown() && sharedStage_->text.contains(word))
            own = DefinitionsOf(word, sharedStage_->text, BuildCommentMap(sharedStage_->text), 0);
    }
    const WordHelp* help = HelpOf(word);
    if (own.isEmpty()) return help ? TipOf(*help) : QString();
    // What takes the place of a function of the language does something else, but the text has to define
    // mainImage.
    return TipOf(own.join(u'\n'), help && !WordColour(word) ? QString::fromLatin1(help->text) : QString());
}

void CodeView::ShowHelp(const QHelpEvent& event) {
    QToolTip::hideText();
    if (!Shown() || text_.Length() != Shown()->text.size() || !RefreshStageText()) return;
    const QStringView text = Shown()->text;
    const WordPlace word = WordAround(text, PositionAt(event.pos()));
    if (word.length == 0 || size_t(word.start) >= Shown()->commentMap.size() ||
        Shown()->commentMap[size_t(word.start)] != 0)
        return;
    QTextCursor edge(document());
    edge.setPosition(int(word.start));
    QRect area = cursorRect(edge);
    edge.setPosition(int(word.start + word.length));
    area = area.united(cursorRect(edge));
    // The place is the nearest of the text, also where there is none below the mouse.
    if (!area.contains(event.pos())) return;
    const QString tip = HelpTip(text.sliced(word.start, word.length), word.start);
    if (!tip.isEmpty()) QToolTip::showText(event.globalPos(), tip, viewport(), area);
}

void CodeView::ShowHelpBeside(const QString& word, const QRect& row) {
    const QString tip = HelpTip(word, textCursor().position());
    // Where a tool tip's corner is when the mouse stands at the row's end.
    const QPoint beside = completions_->mapToGlobal(QPoint(completions_->width(), row.top())) - kTipOffset;
    QToolTip::showText(beside, tip, completions_);
}

bool CodeView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QPlainTextEdit::viewportEvent(event);
    ShowHelp(*static_cast<QHelpEvent*>(event));
    return true;
}

}  // namespace pixelgrove
