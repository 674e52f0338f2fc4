#include "ui/text/Brackets.h"

#include <algorithm>

namespace pixelgrove {

namespace {

constexpr QStringView kBrackets = u"()[]{}";

std::optional<BracketPair> PairOf(QStringView text, std::span<const uint8_t> commentMap, qsizetype at) {
    const qsizetype length = std::min(text.size(), qsizetype(commentMap.size()));
    if (at < 0 || at >= length || commentMap[size_t(at)] != 0) return std::nullopt;
    const qsizetype kind = kBrackets.indexOf(text[at]);
    if (kind < 0) return std::nullopt;
    const bool opens = kind % 2 == 0;
    const QChar same = kBrackets[kind];
    const QChar other = kBrackets[opens ? kind + 1 : kind - 1];
    const qsizetype step = opens ? 1 : -1;
    const qsizetype end =
        opens ? std::min(length, at + kBracketReach) : std::max(qsizetype(-1), at - kBracketReach);
    int depth = 0;
    for (qsizetype i = at; i != end; i += step) {
        if ((text[i] != same && text[i] != other) || commentMap[size_t(i)] != 0) continue;
        depth += text[i] == same ? 1 : -1;
        if (depth == 0) return opens ? BracketPair{at, i} : BracketPair{i, at};
    }
    return std::nullopt;
}

}  // namespace

bool IsBracketBeside(QStringView text, qsizetype caret) {
    return (caret > 0 && caret <= text.size() && kBrackets.contains(text[caret - 1])) ||
           (caret >= 0 && caret < text.size() && kBrackets.contains(text[caret]));
}

std::optional<BracketPair> BracketsAt(QStringView text, std::span<const uint8_t> commentMap,
                                      qsizetype caret) {
    const auto before = PairOf(text, commentMap, caret - 1);
    return before ? before : PairOf(text, commentMap, caret);
}

}  // namespace pixelgrove
