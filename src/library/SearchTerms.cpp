#include "library/SearchTerms.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "platform/CodePage.h"

namespace pixelgrove {
namespace {

constexpr qsizetype kMaxTextBytes = 255;
constexpr uint8_t kCaseBit = 'a' - 'A';
constexpr qsizetype kLanes = 16;

// Compared and combined byte by byte by the compiler's own means, on every processor.
typedef uint8_t Lanes __attribute__((vector_size(kLanes)));

Lanes AllLanes(uint8_t byte) {
    return Lanes{} + byte;
}

bool HasAny(Lanes lanes) {
    uint64_t halves[2];
    std::memcpy(halves, &lanes, sizeof(halves));
    return (halves[0] | halves[1]) != 0;
}

char Lowered(char byte) {
    return byte >= 'A' && byte <= 'Z' ? char(byte + kCaseBit) : byte;
}

// One byte of a term, looked for in both cases at once: of no other byte than a letter's capital does the
// case bit make that letter.
struct LaneMark {
    explicit LaneMark(char small)
        : bits(AllLanes(small >= 'a' && small <= 'z' ? kCaseBit : 0)), byte(AllLanes(uint8_t(small))) {}
    Lanes In(const char* text) const {
        Lanes lanes;
        std::memcpy(&lanes, text, sizeof(lanes));
        return Lanes((lanes | bits) == byte);
    }
    Lanes bits;
    Lanes byte;
};

bool BeginsWith(const char* text, const QByteArray& term) {
    for (qsizetype i = 0; i < term.size(); ++i)
        if (Lowered(text[i]) != term[i]) return false;
    return true;
}

// Most places are ruled out by a term's first and last byte, for kLanes of them in one go.
bool Contains(QByteArrayView text, const QByteArray& term) {
    const qsizetype places = text.size() - term.size() + 1;
    const char* at = text.data();
    if (places < kLanes) {
        for (qsizetype place = 0; place < places; ++place)
            if (BeginsWith(at + place, term)) return true;
        return false;
    }
    const LaneMark first(term.front());
    const LaneMark last(term.back());
    for (qsizetype begin = 0;;) {
        const Lanes hits = first.In(at + begin) & last.In(at + begin + term.size() - 1);
        if (HasAny(hits)) {
            for (qsizetype lane = 0; lane < kLanes; ++lane)
                if (hits[lane] != 0 && BeginsWith(at + begin + lane, term)) return true;
        }
        if (begin == places - kLanes) return false;
        begin = std::min(begin + kLanes, places - kLanes);
    }
}

}  // namespace

SearchTerms::SearchTerms(QStringView text) {
    const QByteArray bytes = ToCodePage(text);
    isTooLong_ = bytes.size() > kMaxTextBytes;
    if (isTooLong_) return;
    terms_.emplace_back();
    bool isQuoted = false;
    for (const char byte : bytes) {
        if (byte == '"')
            isQuoted = !isQuoted;
        else if (byte == ' ' && !isQuoted)
            terms_.emplace_back();
        else
            terms_.back() += Lowered(byte);
    }
    std::erase_if(terms_, [](const QByteArray& term) { return term.isEmpty(); });
}

bool SearchTerms::Match(QByteArrayView json) const {
    return !isTooLong_ && std::all_of(terms_.begin(), terms_.end(),
                                      [json](const QByteArray& term) { return Contains(json, term); });
}

bool MatchSearchTerms(QStringView text, QByteArrayView json) {
    const qsizetype zero = json.indexOf('\0');
    return SearchTerms(text).Match(zero < 0 ? json : json.first(zero));
}

}  // namespace pixelgrove
