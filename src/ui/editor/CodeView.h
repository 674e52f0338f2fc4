// CodeView: the editor. Shows one StageDocument at a time, coloured, and keeps that document's text equal to
// what is shown.
//
// The view holds the master copy of the shown text; each change goes into the document at once, so whoever
// reads a document's text on the main thread never sees an old one. Only its comment map waits, for a
// colouring pass or RefreshStageText. Colours are renewed for what is on screen, at the paint that follows an
// event that may have changed them. Caret, scroll and zoom are kept per document. Main thread.
#pragma once

#include <QBasicTimer>
#include <QDeadlineTimer>
#include <QPlainTextEdit>
#include <QUrl>
#include <functional>
#include <optional>
#include <vector>

#include "ui/editor/CodeLayout.h"
#include "ui/editor/StageText.h"
#include "ui/text/Brackets.h"
#include "ui/text/LineEdits.h"

class QHelpEvent;

namespace pixelgrove {

class CompletionList;

class CodeView : public QPlainTextEdit {
    Q_OBJECT

  public:
    // UTF-16 code units; what would pass this is refused whole.
    static constexpr qsizetype kMaxTextLength = 67108864;

    explicit CodeView(QWidget* parent = nullptr);

    // Shows the document with its saved view, or from its top, as the first of a project. `how` says what
    // becomes of the view of the one shown before. Any but the first of a project tells PaintedAnew. Undo
    // begins anew.
    void LoadDocument(StageDocument& document, StageSwitch how);
    // Whose names complete those of the shown one; it outlives the view.
    void SetSharedStage(const StageDocument& common) { sharedStage_ = &common; }
    // Stops following the shown document; the text stays on screen.
    void Forget();
    // Brings the shown document's comment map up to its text. False when the text is empty or nothing is
    // shown.
    bool RefreshStageText() { return text_.RefreshCommentMap(); }

    // Takes the last step of the user back, or does it again; nothing without one. They stand in for the
    // toolkit's own, whose history is off: that one knows no limit and no edits beside it.
    void undo();
    void redo();
    bool CanUndo() const { return text_.CanUndo(); }
    bool CanRedo() const { return text_.CanRedo(); }

    // Each is one step for undo, and does nothing for a text that there is no room for. Line ends become
    // those of the editor.
    void ReplaceSelection(const QString& text);
    // As a line of its own above that of the selection's start, which keeps all it has. In the first line it
    // replaces the selection, wherever that stands in it.
    void InsertLine(const QString& line);
    // The lines of which something is selected, whole and without their ends; none without a selection.
    QStringList SelectedLines() const;

    // One step for undo of what the function makes of the text and the selection.
    void EditLines(const std::function<LineEdit(QStringView, TextSelection)>& edit);

    // Indents each line of the selection by the braces of the whole text; see LineDepths. Not undone by undo.
    void IndentSelection();

    // As the toolkit's, which know nothing of places in long lines.
    QTextCursor cursorForPosition(const QPoint& at) const;
    QRect cursorRect(const QTextCursor& cursor) const;
    QRect cursorRect() const { return cursorRect(textCursor()); }

    // Of the normal size of the text, in percent; SetZoom goes to the nearest that there is.
    static constexpr int kNormalZoom = 100;
    static constexpr int kZoomStep = 10;
    int ZoomPercent() const { return zoomPercent_; }
    void SetZoom(int percent);

    // Marks the document's errorLines.
    void RefreshErrorMarks();
    bool IsErrorLine(int line) const;
    QColor ErrorColour() const;

    // Puts the caret at the start of the line (from 1; the last line for a number beyond it), scrolls only
    // when the line is out of view, and takes the focus.
    void GoToLine(int line);

    // "Ln: <line> / <lines>\t Ch: <column>", all from 1.
    QString CaretStatus() const;
    int CaretLine() const { return textCursor().blockNumber() + 1; }

    // Of a line on screen, in pixels.
    int LineHeight() const { return layout_->Letters().LineHeight(); }
    // The lines on screen, for the gutter: number from 1, top and height in viewport pixels.
    struct VisibleLine {
        int line;
        int top;
        int height;
    };
    std::vector<VisibleLine> VisibleLines() const;

  Q_SIGNALS:
    // The shown text was changed, by the user or by the editor itself; the document has the change. Told
    // within the edit: who hears of it leaves the editor alone.
    void TextEdited(const pixelgrove::TextEdit& edit);
    // After paints that renewed the colours of what is on screen: whether a word stands there that could make
    // a control.
    void PaintedAnew(bool hasControlWords);
    // The gutter's picture is out of date.
    void ViewChanged();
    // An http or https address in the text was clicked, with Ctrl held.
    void LinkActivated(const QUrl& url);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;
    void resizeEvent(QResizeEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    struct Stretch {
        qsizetype start = 0;
        qsizetype end = 0;
    };

    // Of the shown document; null without one.
    StageDocument* Shown() const { return text_.Stage(); }
    void OnEdited(const TextEdit& edit);
    void OnCaretMoved();
    bool HasRoomFor(qsizetype length) const;
    void ShowReplayed(std::optional<qsizetype> caret);
    void Select(int anchor, int position);

    void MarkBrackets();

    // Completion. What is offered at present: for the word that begins there, from these letters on.
    struct Offer {
        qsizetype start = -1;
        QString letters;
        bool isDismissed = false;
    };
    void CompleteAfterKey(const QKeyEvent& event, qsizetype lengthBefore);
    // Asked for by its key, or by typing.
    void ShowCompletions(bool asked);
    QStringList WordsFor(QStringView letters, qsizetype start) const;
    void TakeCompletion(const QString& word);
    void HideCompletions();

    // In a tool tip what the word below the mouse is.
    void ShowHelp(const QHelpEvent& event);
    // Of a completion, right of its row.
    void ShowHelpBeside(const QString& word, const QRect& row);
    // Of a word that stands outside comments; empty where there is nothing to say.
    QString HelpTip(QStringView word, qsizetype position) const;

    void HandleKey(QKeyEvent* event);
    void FlagRecolour() { needsRecolour_ = true; }
    void FlagForKey(const QKeyEvent& event);
    Stretch VisibleText() const;
    void RecolourVisible();
    void Recolour(Stretch stretch);
    void ReportPaintedChange();

    // Long lines; see CodeLayout.
    int PositionAt(const QPoint& at) const;
    Stretch VisiblePart(const QTextBlock& block) const;
    void PaintLongLines(const QRegion& region);
    void PaintLongLine(QPainter& painter, const QTextBlock& block, qreal top);
    void BringLongLineIntoView();
    bool MoveInLongLine(const QKeyEvent& event);
    bool PressInLongLine(const QMouseEvent& event);
    void SelectUpTo(const QPoint& at);

    void BreakLine();
    void TabKey(bool indent);
    // By one tab, or back by four columns; lines count from 0. Not undone by undo.
    void IndentLines(int firstLine, int lastLine, bool indent);
    void PrepareClosingBrace();

    void SaveView(StageDocument& document) const;
    void UpdateTabStop();
    int FullyVisibleLineCount() const;
    void ShowMarks();
    // Of an error's line, as it lies below the text.
    QColor ErrorGround() const;
    void UpdateHoveredLink(const QPoint& at, Qt::KeyboardModifiers modifiers);
    // Selects the address below the point; without a selection where there is none.
    QTextCursor LinkCursorAt(const QPoint& at) const;

    CodeLayout* layout_;  // of the document, which owns it
    StageText text_;
    const StageDocument* sharedStage_ = nullptr;
    CompletionList* completions_;
    Offer offer_;
    bool isInKey_ = false;
    std::optional<BracketPair> brackets_;  // that are marked
    bool bracketsMayBeNew_ = false;
    bool isLoading_ = false;
    bool marksAreStale_ = false;

    bool needsRecolour_ = false;
    Stretch coloured_;  // what has the colours of the text as it is
    bool colouringInProgress_ = false;
    bool reportsPaint_ = false;      // off while a text that is no change waits for its first colours
    std::optional<bool> report_;     // of paints, under way: whether one of them saw control words
    bool controlWordsSeen_ = false;  // by the last colouring pass
    bool autoIndentPending_ = false;

    // Of the document's view, until it is painted: bars and gutter get their sizes before that, and the view
    // its width.
    std::optional<int> sideWish_;
    QFont normalFont_;
    int zoomPercent_ = kNormalZoom;
    QTextCursor hoveredLink_;
    QString pressedLink_;
    bool isSelectingInLongLine_ = false;
    QBasicTimer selectionScroll_;  // while the pointer is out of the view
    QDeadlineTimer thirdPress_;    // until it ends, a press selects the line
};

}  // namespace pixelgrove
