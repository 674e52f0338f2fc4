#include "controls/BakedNote.h"

#include <algorithm>

#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

struct Candidate {
    uint32_t stage;
    const BakedLine* line;
};

bool PointsAt(const CompileMessages& messages, const Candidate& candidate) {
    return std::ranges::any_of(messages, [&](const CompileMessage& message) {
        return message.line == candidate.line->line && message.place == StageName(candidate.stage);
    });
}

// A name that the messages speak of came from this line. Numbers may come from anywhere.
bool IsSpokenOf(const CompileMessages& messages, const QString& value) {
    if (value.isEmpty() || !value[0].isLetter()) return false;
    return std::ranges::any_of(messages,
                               [&](const CompileMessage& message) { return message.text.contains(value); });
}

}  // namespace

std::optional<CompileMessage> BakedNote(uint32_t stage, const BakedStages& baked,
                                        const std::array<CompileMessages, kStageCount>& errors) {
    std::vector<Candidate> candidates;
    for (const uint32_t id : {stage, uint32_t(kStageCommon)})
        for (const BakedLine& line : baked[id])
            candidates.push_back({id, &line});
    if (candidates.empty()) return std::nullopt;
    auto named = std::ranges::find_if(candidates, [&](const Candidate& candidate) {
        return PointsAt(errors[stage], candidate) || PointsAt(errors[kStageCommon], candidate);
    });
    if (named == candidates.end()) {
        named = std::ranges::find_if(candidates, [&](const Candidate& candidate) {
            const QString& value = candidate.line->value;
            return IsSpokenOf(errors[stage], value) || IsSpokenOf(errors[kStageCommon], value);
        });
    }
    const Candidate& shown = named == candidates.end() ? candidates.front() : *named;
    const QString place = StageName(shown.stage);
    QString text = QStringLiteral("%1(%2): note: the control %3 put its value in place of %4")
                       .arg(place, QString::number(shown.line->line), InQuotes(shown.line->control),
                            InQuotes(shown.line->source));
    if (const size_t more = candidates.size() - 1; more > 0)
        text += more == 1 ? QStringLiteral("; one more line holds a control's value")
                          : QStringLiteral("; %1 more lines hold controls' values").arg(more);
    return CompileMessage{place, shown.line->line, text, 0};
}

}  // namespace pixelgrove
