#include "ui/text/TextSearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace pixelgrove {

namespace {

// Each code point by itself: folding a whole text may change its length, and positions would be off.
QString FoldCase(QString text) {
    QChar* units = text.data();
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
            units[i].isHighSurrogate() && i + 1 < text.size() && units[i + 1].isLowSurrogate();
        if (!isPair) {
            units[i] = units[i].toCaseFolded();
            continue;
        }
        const char32_t folded = QChar::toCaseFolded(QChar::surrogateToUcs4(units[i], units[i + 1]));
        if (QChar::requiresSurrogates(folded)) {
            units[i] = QChar(QChar::highSurrogate(folded));
            units[i + 1] = QChar(QChar::lowSurrogate(folded));
        }
        ++i;
    }
    return text;
}

bool IsWordPart(char32_t c) {
    return c == U'_' || QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

bool IsWordAt(const QString& text, qsizetype position) {
    if (position >= text.size()) return false;
    const QChar unit = text[position];
    const bool isPair =
        unit.isHighSurrogate() && position + 1 < text.size() && text[position + 1].isLowSurrogate();
    return IsWordPart(isPair ? QChar::surrogateToUcs4(unit, text[position + 1]) : unit.unicode());
}

bool IsWordBefore(const QString& text, qsizetype position) {
    if (position <= 0) return false;
    const bool isPair =
        position > 1 && text[position - 1].isLowSurrogate() && text[position - 2].isHighSurrogate();
    return IsWordAt(text, position - (isPair ? 2 : 1));
}

// For each number of the word's first units, of how many of them the longest part is that both begins and
// ends these units and isn't all of them.
template <typename Iterator>
std::vector<qsizetype> BordersOf(Iterator word, qsizetype length) {
    std::vector<qsizetype> borders(size_t(length) + 1, 0);
    for (qsizetype i = 1, matched = 0; i < length; ++i) {
        while (matched > 0 && word[i] != word[matched])
            matched = borders[size_t(matched)];
        if (word[i] == word[matched]) ++matched;
        borders[size_t(i) + 1] = matched;
    }
    return borders;
}

// The end of the first occurrence that is accepted, by its end; -1 for none. No unit of the text is looked at
// anew after a mismatch or a refusal, so texts that repeat themselves take no longer than others.
template <typename Iterator, typename Accept>
qsizetype FindEnd(Iterator text, qsizetype length, Iterator word, const std::vector<qsizetype>& borders,
                  Accept accept) {
    const qsizetype wordLength = qsizetype(borders.size()) - 1;
    for (qsizetype i = 0, matched = 0; i < length; ++i) {
        while (matched > 0 && text[i] != word[matched])
            matched = borders[size_t(matched)];
        if (text[i] == word[matched]) ++matched;
        if (matched < wordLength) continue;
        if (accept(i + 1)) return i + 1;
        matched = borders[size_t(matched)];
    }
    return -1;
}

}  // namespace

TextSearch::TextSearch(QString text, const SearchTerms& terms)
    : text_(terms.matchCase ? std::move(text) : FoldCase(std::move(text))),
      what_(terms.matchCase ? terms.what : FoldCase(terms.what)),
      borders_(BordersOf(what_.cbegin(), what_.size())),
      wordBefore_(terms.wholeWord && IsWordAt(what_, 0)),
      wordBehind_(terms.wholeWord && IsWordBefore(what_, what_.size())) {}

bool TextSearch::IsHit(qsizetype start) const {
    return !(wordBefore_ && IsWordBefore(text_, start)) &&
           !(wordBehind_ && IsWordAt(text_, start + what_.size()));
}

std::optional<qsizetype> TextSearch::Next(qsizetype from) const {
    if (what_.isEmpty() || from < 0 || from > text_.size()) return {};
    const qsizetype end = FindEnd(text_.cbegin() + from, text_.size() - from, what_.cbegin(), borders_,
                                  [&](qsizetype behind) { return IsHit(from + behind - what_.size()); });
    if (end < 0) return {};
    return from + end - what_.size();
}

// The same search on both texts read backwards.
std::optional<qsizetype> TextSearch::Previous(qsizetype from) const {
    if (what_.isEmpty() || from < 0) return {};
    const qsizetype length =
        std::min(from, text_.size() - std::min(text_.size(), what_.size())) + what_.size();
    if (length > text_.size()) return {};
    const auto word = std::make_reverse_iterator(what_.cend());
    const qsizetype end =
        FindEnd(std::make_reverse_iterator(text_.cbegin() + length), length, word,
                BordersOf(word, what_.size()), [&](qsizetype behind) { return IsHit(length - behind); });
    if (end < 0) return {};
    return length - end;
}

std::optional<qsizetype> FindNextHit(const QString& text, const FindRequest& request,
                                     qsizetype selectionStart) {
    const TextSearch search(text, request.terms);
    std::optional<qsizetype> hit =
        request.down ? search.Next(selectionStart + 1) : search.Previous(selectionStart - 1);
    if (!hit && request.wrapAround) hit = request.down ? search.Next(0) : search.Previous(text.size());
    return hit;
}

std::vector<qsizetype> FindAllHits(const QString& text, const SearchTerms& terms) {
    const TextSearch search(text, terms);
    std::vector<qsizetype> hits;
    while (const std::optional<qsizetype> hit =
               search.Next(hits.empty() ? 0 : hits.back() + terms.what.size()))
        hits.push_back(*hit);
    return hits;
}

}  // namespace pixelgrove
