// CodeLayout: the layout of the editor's document. As the toolkit's own, but lines from kLongLineLength on
// are laid out in pieces (LongLine), so that their length costs next to nothing. Main thread.
//
// The toolkit lays a line out as a whole, over and over, and looks each missing glyph up in every font. Here
// it gets a layout of a long line that has the line's text but shows none of it; the editor draws the line
// and answers for all places in it.
#pragma once

#include <QPlainTextDocumentLayout>
#include <QTextBlock>
#include <functional>
#include <optional>

#include "ui/editor/LongLine.h"

namespace pixelgrove {

inline bool IsLongLine(const QTextBlock& block) {
    return block.length() > kLongLineLength;
}

class CodeLayout : public QPlainTextDocumentLayout {
    Q_OBJECT

  public:
    explicit CodeLayout(QTextDocument* document);

    // Gives the caret's position. The toolkit asks for the caret's place in a long line in a way that this
    // layout can answer for one caret only.
    std::function<int()> caretPosition;

    const LetterWidths& Letters() const;
    bool HasLongLines() const { return longest_ > 0; }
    // The block must be long.
    const LongLine& LineOf(const QTextBlock& block) const;

    QSizeF documentSize() const override;
    // Of a long line no width: the toolkit then leaves it to the editor to bring the line into view, where it
    // would look for the letter itself.
    QRectF blockBoundingRect(const QTextBlock& block) const override;

  protected:
    void documentChanged(int from, int removed, int added) override;

  private:
    LetterWidths& FreshLetters() const;
    LongLine& FreshLineOf(const QTextBlock& block, int column, int changed) const;
    void MeasureLongest();

    mutable std::optional<LetterWidths> letters_;
    qreal longest_ = 0;  // line among the long ones, in pixels; 0 without one
    int blockCount_ = 1;
};

}  // namespace pixelgrove
