#include "ui/editor/LongLine.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <iterator>

namespace pixelgrove {

namespace {

constexpr int kPieceLength = 512;
// Pieces below this are cut anew with an edit before them, so that typing doesn't leave one for each key.
constexpr int kSmallPiece = kPieceLength / 2;
// Marks that stand on a letter stay with it, as long as there are no more of them than a script has use for.
constexpr int kMaxMarks = 32;
constexpr qreal kNoWidthLimit = 1 << 24;

void LayOutInOneLine(QTextLayout& layout) {
    QTextOption option(Qt::AlignLeft);
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    layout.createLine().setLineWidth(kNoWidthLimit);
    layout.endLayout();
}

bool HasNoPicture(QChar unit) {
    return unit.category() == QChar::Other_Control;
}

// No letter is cut in two, and no mark from its letter.
bool BelongsToTheUnitBefore(QChar unit) {
    return unit.isLowSurrogate() || unit.isMark() || unit == QChar(0x200d);
}

// The parts of the ranges inside the piece, in its own columns.
FormatRanges RangesInside(const FormatRanges& ranges, int start, int length) {
    FormatRanges inside;
    for (const QTextLayout::FormatRange& range : ranges) {
        const int from = std::max(range.start - start, 0);
        const int to = std::min(range.start + range.length - start, length);
        if (from < to) inside.append({from, to - from, range.format});
    }
    return inside;
}

}  // namespace

LetterWidths::LetterWidths(const QFont& font, qreal tabDistance)
    : font_(font), tabDistance_(std::max(tabDistance, 1.0)) {
    first_.fill(-1);
    QTextLayout layout(QStringLiteral("x"), font_);
    LayOutInOneLine(layout);
    QTextLine line = layout.lineAt(0);
    line.setLeadingIncluded(true);
    ascent_ = line.ascent();
    lineHeight_ = std::max(1, int(std::ceil(line.height())));
}

qreal LetterWidths::Measured(char32_t letter) const {
    QTextLayout layout(QString::fromUcs4(&letter, 1), font_);
    LayOutInOneLine(layout);
    return layout.lineAt(0).horizontalAdvance();
}

qreal LetterWidths::Of(char32_t letter) {
    if (letter < first_.size()) {
        float& width = first_[letter];
        if (width < 0) width = float(Measured(letter));
        return qreal(width);
    }
    const auto known = others_.constFind(letter);
    if (known != others_.constEnd()) return qreal(*known);
    return qreal(*others_.insert(letter, float(QChar::isMark(letter) ? 0 : Measured(letter))));
}

void LongLine::Cut(int start, int end, LetterWidths& widths, std::vector<Piece>& pieces) const {
    const qreal noPictureWidth = widths.Of(QChar::ReplacementCharacter);
    while (start < end) {
        const bool isTabs = text_[start] == u'\t';
        Piece piece{start, 0, isTabs, 0, 0};
        int i = start;
        while (i < end && (text_[i] == u'\t') == isTabs) {
            const int length = i - start;
            if (!isTabs && length >= kPieceLength &&
                (length >= kPieceLength + kMaxMarks || !BelongsToTheUnitBefore(text_[i])))
                break;
            char32_t letter = text_[i].unicode();
            if (text_[i].isHighSurrogate() && i + 1 < end && text_[i + 1].isLowSurrogate()) {
                letter = QChar::surrogateToUcs4(text_[i], text_[i + 1]);
                ++i;
            }
            ++i;
            if (!isTabs)
                piece.width += HasNoPicture(QChar(text_[i - 1])) ? noPictureWidth : widths.Of(letter);
        }
        piece.length = i - start;
        pieces.push_back(piece);
        start = i;
    }
}

void LongLine::PlacePieces(size_t from, qreal tabDistance) {
    for (size_t i = from; i < pieces_.size(); ++i) {
        Piece& piece = pieces_[i];
        piece.left = i == 0 ? 0 : pieces_[i - 1].left + pieces_[i - 1].width;
        if (piece.isTabs)
            piece.width = (std::floor(piece.left / tabDistance) + piece.length) * tabDistance - piece.left;
    }
}

void LongLine::SetText(const QString& text, int column, int changed, LetterWidths& widths) {
    const int growth = int(text.size() - text_.size());
    const int removed = changed - growth;
    const bool fits = !pieces_.empty() && column >= 0 && removed >= 0 && changed >= 0 &&
                      column + removed <= text_.size() && column + changed <= text.size();
    text_ = text;
    if (!fits) {
        pieces_.clear();
        Cut(0, int(text.size()), widths, pieces_);
        PlacePieces(0, widths.TabDistance());
        return;
    }
    // The pieces that the edit touches, and small ones behind it.
    const auto first = std::ranges::find_if(
        pieces_, [column](const Piece& piece) { return piece.start + piece.length >= column; });
    auto behind = std::find_if(first, pieces_.end(),
                               [end = column + removed](const Piece& piece) { return piece.start > end; });
    while (behind != pieces_.end() && behind->length < kSmallPiece && behind - first < kPieceLength)
        ++behind;
    const int from = first->start;
    const int to = behind == pieces_.end() ? int(text.size()) : behind->start + growth;
    std::vector<Piece> pieces;
    Cut(from, to, widths, pieces);
    for (auto piece = behind; piece != pieces_.end(); ++piece)
        piece->start += growth;
    const auto firstIndex = first - pieces_.begin();
    pieces_.insert(pieces_.erase(first, behind), pieces.begin(), pieces.end());
    PlacePieces(size_t(firstIndex), widths.TabDistance());
}

void LongLine::Shape(const Piece& piece, QTextLayout& layout) const {
    QString shown = text_.sliced(piece.start, piece.length);
    for (QChar& unit : shown)
        if (HasNoPicture(unit)) unit = QChar::ReplacementCharacter;
    layout.setText(shown);
    LayOutInOneLine(layout);
}

qreal LongLine::PlaceOf(int column, const LetterWidths& widths) const {
    const auto behind =
        std::ranges::upper_bound(pieces_, column, {}, [](const Piece& piece) { return piece.start; });
    if (behind == pieces_.begin()) return 0;
    const Piece& piece = *std::prev(behind);
    const int inside = column - piece.start;
    if (inside >= piece.length) return piece.left + piece.width;
    if (inside == 0) return piece.left;
    if (piece.isTabs) return (std::floor(piece.left / widths.TabDistance()) + inside) * widths.TabDistance();
    QTextLayout layout(QString(), widths.Font());
    Shape(piece, layout);
    return piece.left + layout.lineAt(0).cursorToX(inside);
}

// There is one.
size_t LongLine::PieceAt(qreal place) const {
    const auto behind =
        std::ranges::upper_bound(pieces_, place, {}, [](const Piece& piece) { return piece.left; });
    return size_t(std::max<ptrdiff_t>(behind - pieces_.begin() - 1, 0));
}

int LongLine::ColumnAt(qreal place, const LetterWidths& widths) const {
    if (pieces_.empty()) return 0;
    const Piece& piece = pieces_[PieceAt(place)];
    if (piece.isTabs) {
        const qreal first = std::floor(piece.left / widths.TabDistance());
        const qreal tabs = std::round(place / widths.TabDistance() - first);
        if (tabs > 1) return piece.start + int(std::min(tabs, qreal(piece.length)));
        // The first tab is as wide as what is left of its column.
        const qreal middle = (piece.left + (first + 1) * widths.TabDistance()) / 2;
        return piece.start + (place < middle ? 0 : 1);
    }
    QTextLayout layout(QString(), widths.Font());
    Shape(piece, layout);
    return piece.start + layout.lineAt(0).xToCursor(place - piece.left);
}

void LongLine::Draw(QPainter& painter, QPointF at, qreal left, qreal right, const FormatRanges& colours,
                    const FormatRanges& selections, const LetterWidths& widths) const {
    if (pieces_.empty()) return;
    for (size_t i = PieceAt(left); i < pieces_.size() && pieces_[i].left < right; ++i) {
        const Piece& piece = pieces_[i];
        const FormatRanges selected = RangesInside(selections, piece.start, piece.length);
        if (piece.isTabs) {
            for (const QTextLayout::FormatRange& range : selected) {
                const qreal from = PlaceOf(piece.start + range.start, widths);
                const qreal to = PlaceOf(piece.start + range.start + range.length, widths);
                painter.fillRect(QRectF(at.x() + from, at.y(), to - from, widths.LineHeight()),
                                 range.format.background());
            }
            continue;
        }
        QTextLayout layout(QString(), widths.Font());
        layout.setFormats(RangesInside(colours, piece.start, piece.length));
        Shape(piece, layout);
        // Letters of another font may be higher.
        const qreal top = at.y() + widths.Ascent() - layout.lineAt(0).ascent();
        layout.draw(&painter, QPointF(at.x() + piece.left, top), selected);
    }
}

}  // namespace pixelgrove
