#include "ui/editor/FindReplace.h"

#include <QPlainTextEdit>
#include <QScreen>

#include "platform/TextScan.h"
#include "windows/widgets/Dialogs.h"
#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

namespace {

constexpr int kDialogInset = 40;  // from the right and upper edges of the editor's window
constexpr int kDialogStep = 30;   // from one dialog to the next

// Positions in it are those of the document, whose own plain text would turn no-break spaces into blanks.
QString TextOf(const QTextDocument& document) {
    QString text = document.toRawText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    text.replace(QChar::LineSeparator, u'\n');
    return text;
}

// At the upper right of the owner, where it covers little of the text, inside the work area.
QRect PlaceFor(const QWidget& owner, QSize size, int index) {
    const QRect area = owner.screen()->availableGeometry();
    const int inset = kDialogInset + index * kDialogStep;
    QRect rect(QPoint(), size);
    rect.moveTopRight(owner.frameGeometry().topRight() + QPoint(-inset, inset));
    return MovedInto(rect, area);
}

}  // namespace

FindDialog* FindReplace::Open(bool replace) {
    const QString selected = editor_.textCursor().selectedText();
    if (BecomesFindText(selected.size())) texts_.what = WithLineFeeds(selected);
    QWidget* owner = editor_.window();
    const int open = int(owner->findChildren<FindDialog*>(Qt::FindDirectChildrenOnly).size());
    auto* dialog = new FindDialog(replace, texts_, owner);
    QObject::connect(dialog, &FindDialog::TextsChanged, dialog,
                     [this, dialog] { dialog->StoreTexts(texts_); });
    QObject::connect(dialog, &FindDialog::Asked, dialog,
                     [this, dialog](FindAction action) { Act(*dialog, action); });
    dialog->SetFrameRect(FromQRect(PlaceFor(*owner, dialog->size(), open)));
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

void FindReplace::FindAgain(bool down) {
    if (texts_.what.isEmpty()) {
        Open(false);
        return;
    }
    last_.terms.what = WithLineFeeds(texts_.what);
    last_.down = down;
    FindNext(last_);
}

void FindReplace::Act(FindDialog& dialog, FindAction action) {
    // Another dialog may have left other texts.
    dialog.StoreTexts(texts_);
    const FindRequest request = dialog.Request();
    last_ = request;
    switch (action) {
        case FindAction::Replace:
            ReplaceSelection();
            FindNext(request);
            break;
        case FindAction::FindNext:
            FindNext(request);
            break;
        case FindAction::ReplaceAll: {
            const int count = ReplaceAll(request.terms);
            dialogs_.inform(dialog, QStringLiteral("Replace All"),
                            count == 0
                                ? QStringLiteral("No occurrences of the text were found.")
                                : QStringLiteral("%1 occurrences of the text were replaced.").arg(count));
            break;
        }
    }
}

// A miss is silent.
void FindReplace::FindNext(const FindRequest& request) {
    QTextCursor cursor = editor_.textCursor();
    const auto hit = FindNextHit(TextOf(*editor_.document()), request, cursor.selectionStart());
    if (!hit) return;
    cursor.setPosition(int(*hit));
    cursor.setPosition(int(*hit + request.terms.what.size()), QTextCursor::KeepAnchor);
    // Whoever found it goes on working there, by the keys too.
    editor_.window()->activateWindow();
    editor_.setFocus();
    editor_.setTextCursor(cursor);
    editor_.ensureCursorVisible();
}

// Whatever is selected, also where it isn't the text to find.
void FindReplace::ReplaceSelection() {
    QTextCursor cursor = editor_.textCursor();
    if (!cursor.hasSelection()) return;
    cursor.insertText(WithLineFeeds(texts_.with));
    editor_.setTextCursor(cursor);
}

// One step for undo.
int FindReplace::ReplaceAll(const SearchTerms& terms) {
    const std::vector<qsizetype> hits = FindAllHits(TextOf(*editor_.document()), terms);
    if (hits.empty()) return 0;
    const QString with = WithLineFeeds(texts_.with);
    QTextCursor cursor(editor_.document());
    cursor.beginEditBlock();
    qsizetype shift = 0;  // of what stands behind the replacements made so far
    for (const qsizetype hit : hits) {
        cursor.setPosition(int(hit + shift));
        cursor.setPosition(int(hit + shift + terms.what.size()), QTextCursor::KeepAnchor);
        cursor.insertText(with);
        shift += with.size() - terms.what.size();
    }
    cursor.endEditBlock();
    editor_.setTextCursor(cursor);
    return int(hits.size());
}

}  // namespace pixelgrove
