// LongLine: where the letters of a line stand that is too long for the toolkit, which shapes a whole line
// anew for each change and each paint of it.
//
// The line is cut into pieces of some hundred characters. Where each begins follows from the widths of single
// letters, each measured once; only the pieces that are looked at are shaped. An edit costs the pieces that
// it touches. Columns are UTF-16 code units of the line, places are pixels from its start. Characters without
// a picture are drawn as U+FFFD. Main thread.
#pragma once

#include <QFont>
#include <QHash>
#include <QString>
#include <QTextBlockUserData>
#include <QTextLayout>
#include <array>
#include <vector>

class QPainter;

namespace pixelgrove {

// Code units from which a line is a long one. It is also a bound of what one line of the toolkit costs.
constexpr int kLongLineLength = 4000;

// A font's letters one by one, and its tabs.
class LetterWidths {
  public:
    LetterWidths(const QFont& font, qreal tabDistance);

    const QFont& Font() const { return font_; }
    qreal TabDistance() const { return tabDistance_; }
    // Of a text line of letters that this font has, from the top.
    qreal Ascent() const { return ascent_; }
    int LineHeight() const { return lineHeight_; }

    qreal Of(char32_t letter);

  private:
    qreal Measured(char32_t letter) const;

    QFont font_;
    qreal tabDistance_;
    qreal ascent_ = 0;
    int lineHeight_ = 1;
    std::array<float, 256> first_;  // below 0 while unknown
    QHash<char32_t, float> others_;
};

using FormatRanges = QList<QTextLayout::FormatRange>;

// Kept at the text's block, which frees it.
class LongLine : public QTextBlockUserData {
  public:
    const QString& Text() const { return text_; }
    // Takes the line's text, of which `changed` units from `column` on may be new; what stands before and
    // behind them is as it was. A line that has no text yet takes all of it.
    void SetText(const QString& text, int column, int changed, LetterWidths& widths);

    qreal Width() const { return pieces_.empty() ? 0 : pieces_.back().left + pieces_.back().width; }
    // Left of the column; the line's end for a column behind it.
    qreal PlaceOf(int column, const LetterWidths& widths) const;
    // The gap between letters that is nearest to the place.
    int ColumnAt(qreal place, const LetterWidths& widths) const;

    // Draws what lies between the places left and right, with column 0 at `at`. Ranges are in columns;
    // selections go over the colours.
    void Draw(QPainter& painter, QPointF at, qreal left, qreal right, const FormatRanges& colours,
              const FormatRanges& selections, const LetterWidths& widths) const;

  private:
    // Tabs, or anything but tabs.
    struct Piece {
        int start;
        int length;
        bool isTabs;
        qreal left;
        qreal width;
    };

    void Cut(int start, int end, LetterWidths& widths, std::vector<Piece>& pieces) const;
    void PlacePieces(size_t from, qreal tabDistance);
    size_t PieceAt(qreal place) const;
    void Shape(const Piece& piece, QTextLayout& layout) const;

    QString text_;
    std::vector<Piece> pieces_;
};

}  // namespace pixelgrove
