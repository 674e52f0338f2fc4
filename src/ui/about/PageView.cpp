#include "ui/about/PageView.h"

#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>

#include "look/widgets/Theme.h"
#include "ui/text/Links.h"

namespace pixelgrove {

namespace {

constexpr qreal kTabWidth = 16;
constexpr qreal kCellPadding = 4;
constexpr qreal kDocumentMargin = 12;

// What the toolkit leaves to the view: tables without lines, and code like all else.
void Dress(QTextDocument& document) {
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
        format.setBottomMargin(2 * kCellPadding);
        table->setFormat(format);
    }
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (!block.blockFormat().hasProperty(QTextFormat::BlockCodeLanguage) &&
            !block.blockFormat().hasProperty(QTextFormat::BlockCodeFence))
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.setBackground(Theme().panel);
        QTextCursor(block).setBlockFormat(format);
    }
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

bool ScrollToHeading(QTextBrowser& view, const QString& name) {
    for (QTextBlock block = view.document()->begin(); block.isValid(); block = block.next()) {
        if (block.blockFormat().headingLevel() == 0 || HeadingName(block.text()) != name) continue;
        const QRectF place = view.document()->documentLayout()->blockBoundingRect(block);
        view.verticalScrollBar()->setValue(int(place.top()));
        view.setTextCursor(QTextCursor(block));
        return true;
    }
    return false;
}

}  // namespace pixelgrove
