#include "shadertoy/LoadWarnings.h"

namespace pixelgrove {

void LoadWarnings::Add(const QString& sentence) {
    if (lines_.size() < kMaxLines && !lines_.contains(sentence)) {
        lines_ += sentence;
    } else {
        ++further_;
    }
}

void LoadWarnings::Add(const QStringList& sentences) {
    for (const QString& sentence : sentences)
        Add(sentence);
}

QStringList LoadWarnings::Lines() const {
    QStringList lines = lines_;
    if (further_ > 0) lines += QStringLiteral("And %1 more like these.").arg(further_);
    return lines;
}

}  // namespace pixelgrove
