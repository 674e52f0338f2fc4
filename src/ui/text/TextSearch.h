// Searching a text: one search in either direction, and where each step of find and replace leads to.
//
// Positions count UTF-16 code units from 0. Lines end with LF in texts and in what is searched for. All is
// linear in the text's length, whatever the two repeat. Pure; any thread.
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace pixelgrove {

// The longest text that a search, or a replacement, can have.
inline constexpr int kMaxSearchText = 4095;

struct SearchTerms {
    QString what;  // found nowhere when it is empty
    bool matchCase = false;
    // Where `what` begins or ends with a letter, a digit or '_', none of these may stand beside the hit
    // there.
    bool wholeWord = false;
};

// A text made ready for any number of searches with the same terms. Without matchCase, letters that differ by
// their case alone are the same; a letter whose other case is more than one letter stays what it is, so that
// every hit has the length of `what`.
class TextSearch {
  public:
    TextSearch(QString text, const SearchTerms& terms);

    // The start of the first hit that starts at `from` or behind it. Nothing when there is none, or `from`
    // lies outside the text.
    std::optional<qsizetype> Next(qsizetype from) const;
    // The start of the last hit that starts at `from` or before it; `from` behind the text means all of it.
    // Nothing when there is none.
    std::optional<qsizetype> Previous(qsizetype from) const;

  private:
    bool IsHit(qsizetype start) const;

    QString text_, what_;  // both folded unless the case matters
    std::vector<qsizetype> borders_;
    bool wordBefore_ = false, wordBehind_ = false;  // on which sides of a hit no word may go on
};

struct FindRequest {
    SearchTerms terms;
    bool down = true;
    bool wrapAround = true;
};

// The start of the hit that "Find Next" leads to from a selection, or caret, that starts there: the nearest
// one that starts behind or, upwards, before it. Where there is none, and the search wraps around, the first
// or the last of the whole text. Nothing when there is none.
std::optional<qsizetype> FindNextHit(const QString& text, const FindRequest& request,
                                     qsizetype selectionStart);

// The starts of all hits of the text in order, each behind the end of the one before.
std::vector<qsizetype> FindAllHits(const QString& text, const SearchTerms& terms);

// Whether a selection of that many code units becomes the text to find: any but the empty one and those that
// leave no room in its field.
inline bool BecomesFindText(qsizetype length) {
    return length >= 1 && length < kMaxSearchText;
}

}  // namespace pixelgrove
