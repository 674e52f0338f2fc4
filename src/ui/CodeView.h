// CodeView: the editor. Shows one StageDocument at a time and keeps that document's text equal to what is
// shown.
//
// The view holds the master copy of the shown text; each change goes into the document at once, so whoever
// reads documents on the main thread never sees an old text. Caret and scroll are kept per document. Main
// thread.
#pragma once

#include <QPlainTextEdit>
#include <vector>

#include "core/AppState.h"

namespace pixelgrove {

class CodeView : public QPlainTextEdit {
    Q_OBJECT

  public:
    explicit CodeView(QWidget* parent = nullptr);

    // Shows the document with its saved view. The view of the document shown before is saved into it, unless
    // AppState::currentDocument no longer names it, which means that it was freed or replaced.
    void LoadDocument(StageDocument& document);
    // Stops following the shown document; the text stays on screen.
    void Forget() { shown_ = nullptr; }
    // Copies the text into the shown document; false when it was equal already, or nothing is shown.
    bool StoreText();

    // Marks the document's errorLines.
    void RefreshErrorMarks();
    bool IsErrorLine(int line) const;

    // Puts the caret at the start of the line (from 1; the last line for a number beyond it), scrolls only
    // when the line is out of view, and takes the focus.
    void GoToLine(int line);

    // "Ln: <line> / <lines>\t Ch: <column>", all from 1.
    QString CaretStatus() const;
    int CaretLine() const { return textCursor().blockNumber() + 1; }

    // The lines on screen, for the gutter: number from 1, top and height in viewport pixels.
    struct VisibleLine {
        int line;
        int top;
        int height;
    };
    std::vector<VisibleLine> VisibleLines() const;

  Q_SIGNALS:
    // The gutter's picture is out of date.
    void ViewChanged();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void OnContentsChange(int position, int removed, int added);
    void UpdateTabStop();
    int FullyVisibleLineCount() const;

    StageDocument* shown_ = nullptr;
};

}  // namespace pixelgrove
