// Which bracket belongs to which.
//
// Pure; any thread. Positions are UTF-16 code units of the text.
#pragma once

#include <QStringView>
#include <cstdint>
#include <optional>
#include <span>

namespace pixelgrove {

// As far as a partner is looked for, so that a huge text costs no more than others.
constexpr qsizetype kBracketReach = 100000;

struct BracketPair {
    qsizetype opening;
    qsizetype closing;

    bool operator==(const BracketPair&) const = default;
};

// False where BracketsAt finds nothing, whatever the comments.
bool IsBracketBeside(QStringView text, qsizetype caret);

// The pair of (), [] or {} one of which stands before the caret, or else behind it. Only brackets of its own
// kind count, so that others that are left open do no harm, and none in comments, of which the map has one
// class byte per code unit, as BuildCommentMap makes it. Nothing without a bracket there, or its partner
// within reach.
std::optional<BracketPair> BracketsAt(QStringView text, std::span<const uint8_t> commentMap, qsizetype caret);

}  // namespace pixelgrove
