// The editor's part in completing words: when a list is offered, and for what. See CompletionList.
#include <QKeyEvent>
#include <QToolTip>

#include "core/CommentMap.h"
#include "ui/editor/CodeView.h"
#include "ui/editor/CompletionList.h"
#include "ui/text/Completions.h"
#include "ui/text/GlslWords.h"

namespace pixelgrove {

namespace {

bool IsModifierKey(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
           key == Qt::Key_AltGr || key == Qt::Key_CapsLock;
}

}  // namespace

void CodeView::CompleteAfterKey(const QKeyEvent& event, qsizetype lengthBefore) {
    if (event.key() == Qt::Key_Space && event.modifiers() == Qt::ControlModifier) {
        ShowCompletions(true);
        return;
    }
    const QString typed = event.text();
    const bool isLetter = typed.size() == 1 && IsWordCharacter(typed.front());
    if (text_.Length() != lengthBefore &&
        (isLetter || (event.key() == Qt::Key_Backspace && completions_->isVisible()))) {
        ShowCompletions(false);
    } else if (!IsModifierKey(event.key())) {
        HideCompletions();
    }
}

void CodeView::ShowCompletions(bool asked) {
    if (!Shown() || textCursor().hasSelection()) {
        HideCompletions();
        return;
    }
    const QStringView text = Shown()->text;
    const qsizetype caret = textCursor().position();
    const qsizetype start = WordBegin(text, caret);
    const QStringView letters = text.sliced(start, caret - start);
    const bool isOffered = offer_.start == start && letters.startsWith(offer_.letters);
    if (!asked) {
        const bool isInside = caret < text.size() && IsWordCharacter(text[caret]);
        const bool isMember = start > 0 && text[start - 1] == u'.';
        const bool isEnough = letters.size() >= kCompletedLetters || completions_->isVisible();
        if (letters.isEmpty() || isInside || isMember || !isEnough || (isOffered && offer_.isDismissed)) {
            HideCompletions();
            return;
        }
    }
    if (!IsCompletable(letters) || (RefreshStageText() && IsInComment(text, Shown()->commentMap, caret))) {
        HideCompletions();
        return;
    }
    if (!isOffered || asked) {
        offer_ = {start, letters.toString()};
        completions_->SetWords(WordsFor(letters, start));
    }
    completions_->ShowFor(letters.toString(), cursorRect().translated(viewport()->pos()));
}

QStringList CodeView::WordsFor(QStringView letters, qsizetype start) const {
    QSet<QString> names;
    AddKnownWords(letters, names);
    AddNames(Shown()->text, Shown()->commentMap, letters, start, names);
    if (sharedStage_ && sharedStage_ != Shown())
        AddNames(sharedStage_->text, BuildCommentMap(sharedStage_->text), letters, -1, names);
    return SortedWords(names);
}

// In the place of the letters that are there, as one step for undo.
void CodeView::TakeCompletion(const QString& word) {
    HideCompletions();
    if (!Shown()) return;
    const int caret = textCursor().position();
    const int start = int(WordBegin(Shown()->text, caret));
    Select(start, caret);
    ReplaceSelection(word);
    offer_ = {start, word, true};
}

void CodeView::HideCompletions() {
    if (!completions_->isVisible()) return;
    completions_->hide();
    QToolTip::hideText();
}

void CodeView::focusOutEvent(QFocusEvent* event) {
    HideCompletions();
    QPlainTextEdit::focusOutEvent(event);
}

}  // namespace pixelgrove
