#include "ui/about/PageView.h"

#include <QAbstractTextDocumentLayout>
#include <QFontInfo>
#include <QScrollBar>
#include <QShortcut>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextList>
#include <QTextTable>

#include "look/widgets/Theme.h"
#include "ui/text/Links.h"

namespace pixelgrove {

namespace {

constexpr qreal kTabWidth = 16;
constexpr qreal kCellPadding = 4;
constexpr qreal kParagraphGap = 8;
constexpr qreal kDocumentMargin = 12;

void DressTables(QTextDocument& document) {
    for (QTextFrame* frame : document.rootFrame()->childFrames()) {
        auto* table = qobject_cast<QTextTable*>(frame);
        if (!table) continue;
        QTextTableFormat format = table->format();
        format.setBorder(1);
        format.setBorderBrush(Theme().line);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
        format.setCellSpacing(0);
        format.setCellPadding(kCellPadding);
        format.setTopMargin(kCellPadding);
        format.setBottomMargin(kParagraphGap);
        table->setFormat(format);
    }
}

bool IsCode(const QTextBlock& block) {
    const QTextBlockFormat format = block.blockFormat();
    return format.hasProperty(QTextFormat::BlockCodeLanguage) ||
           format.hasProperty(QTextFormat::BlockCodeFence);
}

// Room below each paragraph, list and piece of code, and above each heading.
void DressBlock(const QTextBlock& block) {
    QTextCursor cursor(block);
    if (cursor.currentTable()) return;
    QTextBlockFormat format = block.blockFormat();
    const QTextBlock next = block.next();
    const bool goesOn =
        (block.textList() && next.textList() == block.textList()) || (IsCode(block) && IsCode(next));
    format.setBottomMargin(goesOn ? 0 : kParagraphGap);
    format.setTopMargin(format.headingLevel() > 1 ? kParagraphGap : 0);
    if (IsCode(block)) format.setBackground(Theme().panel);
    cursor.setBlockFormat(format);
}

// Links underlined, and code in letters as large as all others.
void DressParts(QTextDocument& document) {
    // Fragments may be joined by a change, so none is kept beyond one.
    struct Part {
        int position, length;
        QTextCharFormat format;
    };
    QList<Part> parts;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        for (auto at = block.begin(); !at.atEnd(); ++at)
            parts.append({at.fragment().position(), at.fragment().length(), at.fragment().charFormat()});
    QTextCursor cursor(&document);
    for (auto& [position, length, format] : parts) {
        format.clearProperty(QTextFormat::FontPointSize);
        format.setFontUnderline(format.isAnchor());
        cursor.setPosition(position);
        cursor.setPosition(position + length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(format);
    }
}

// What the toolkit leaves to the view.
void Dress(QTextDocument& document) {
    DressTables(document);
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        DressBlock(block);
    DressParts(document);
}

QString HeadingName(const QString& heading) {
    QString name;
    for (const QChar unit : heading.toLower()) {
        if (unit.isLetterOrNumber() || unit == u'-') name += unit;
        if (unit == u' ') name += u'-';
    }
    return name;
}

void MarkLinks(QTextDocument& document) {
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const QString line = block.text();
        for (qsizetype at = line.indexOf(QLatin1String("http")); at >= 0;
             at = line.indexOf(QLatin1String("http"), at + 1)) {
            const std::optional<LinkSpan> link = FindLinkAt(line, at);
            if (!link) continue;
            QTextCursor cursor(block);
            cursor.setPosition(block.position() + int(link->start));
            cursor.setPosition(cursor.position() + int(link->length), QTextCursor::KeepAnchor);
            QTextCharFormat format;
            format.setAnchor(true);
            format.setAnchorHref(line.sliced(link->start, link->length));
            format.setFontUnderline(true);
            format.setForeground(Theme().accent);
            cursor.mergeCharFormat(format);
            at = link->start + link->length - 1;
        }
    }
}

void Empty(QTextBrowser& view) {
    view.clear();
    // A table or a heading would leave its format to what comes next.
    view.setCurrentCharFormat({});
    view.document()->setDocumentMargin(kDocumentMargin);
}

}  // namespace

void SetUpPageView(QTextBrowser& view) {
    QPalette palette = view.palette();
    palette.setColor(QPalette::Base, Theme().window);
    palette.setColor(QPalette::Text, Theme().text);
    view.setPalette(palette);
    view.setTabStopDistance(kTabWidth);
    // In points: the view zooms no others.
    QFont font = view.font();
    font.setPointSizeF(QFontInfo(font).pointSizeF());
    view.setFont(font);
    const auto addKey = [&view](QKeySequence::StandardKey key, void (QTextBrowser::*run)(int)) {
        QObject::connect(new QShortcut(key, &view, nullptr, nullptr, Qt::WidgetShortcut),
                         &QShortcut::activated, &view, [&view, run] { (view.*run)(1); });
    };
    addKey(QKeySequence::ZoomIn, &QTextBrowser::zoomIn);
    addKey(QKeySequence::ZoomOut, &QTextBrowser::zoomOut);
}

void ShowDocument(QTextBrowser& view, const QString& markdown) {
    Empty(view);
    view.document()->setMarkdown(markdown, QTextDocument::MarkdownDialectGitHub);
    Dress(*view.document());
    view.verticalScrollBar()->setValue(0);
}

void ShowPlainText(QTextBrowser& view, const QString& text) {
    Empty(view);
    view.setPlainText(text);
    MarkLinks(*view.document());
    view.verticalScrollBar()->setValue(0);
}

void ScrollTo(QTextBrowser& view, int position) {
    view.document()->documentLayout()->pageCount();  // lays out all of it
    view.verticalScrollBar()->setValue(position);
}

bool ScrollToHeading(QTextBrowser& view, const QString& name) {
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || HeadingName(block.text()) != name) continue;
        const QRectF place = view.document()->documentLayout()->blockBoundingRect(block);
        ScrollTo(view, int(place.top()));
        view.setTextCursor(QTextCursor(block));
        return true;
    }
    return false;
}

bool FindOnPage(QTextBrowser& view, const QString& text, FindStep step) {
    if (text.isEmpty()) return false;
    const bool backward = step == FindStep::Previous;
    const QTextDocument::FindFlags flags =
        backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    const QTextCursor now = view.textCursor();
    if (step == FindStep::Again) {
        QTextCursor from = now;
        from.setPosition(now.selectionStart());
        view.setTextCursor(from);
    }
    if (view.find(text, flags)) return true;
    view.moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
    if (view.find(text, flags)) return true;
    view.setTextCursor(now);
    return false;
}

}  // namespace pixelgrove
