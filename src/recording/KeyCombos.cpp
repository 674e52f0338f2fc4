#include "recording/KeyCombos.h"

#include <QStringList>
#include <algorithm>
#include <limits>
#include <utility>

#include "recording/RecorderTable.h"

namespace pixelgrove {

namespace {

constexpr std::pair<QStringView, uint32_t> kFixedNames[] = {{u"Ctrl", kKeyCtrl},
                                                            {u"Alt", kKeyAlt},
                                                            {u"Shift", kKeyShift},
                                                            {u"Windows", kKeyWindows},
                                                            {u"Win", kKeyWindows}};

constexpr int kInsertion = 5, kDeletion = 4, kSubstitution = 5, kTransposition = 4;

constexpr qsizetype kMaxKeyName = 255;

// 0 when no key has the name.
uint32_t KeyOf(QStringView name, const KeyNameTable& names) {
    for (const auto& [fixed, key] : kFixedNames)
        if (name.compare(fixed, Qt::CaseInsensitive) == 0) return key;
    for (const KeyName& row : names)
        if (name.compare(row.name, Qt::CaseInsensitive) == 0) return row.virtualKey;
    return 0;
}

// The next piece of rest without any of these characters; empty at the end. Takes the mark behind it, too.
QStringView TakePiece(QStringView& rest, QStringView separators) {
    const auto separates = [separators](QChar c) { return separators.contains(c); };
    const auto begin = std::find_if_not(rest.begin(), rest.end(), separates);
    const auto end = std::find_if(begin, rest.end(), separates);
    const QStringView piece(begin, end);
    rest = QStringView(end == rest.end() ? end : end + 1, rest.end());
    return piece;
}

}  // namespace

std::optional<std::vector<uint32_t>> ParseKeyCombo(const QString& text, const KeyNameTable& names) {
    if (text.isEmpty() || text.size() > kMaxKeyComboLength) return {};
    std::vector<uint32_t> keys(size_t(text.count(u'+')) + 1);
    size_t found = 0;
    for (const QStringView piece : QStringView(text).split(u'+', Qt::SkipEmptyParts)) {
        const QStringView name = piece.trimmed();
        const uint32_t key = name.isEmpty() ? 0 : KeyOf(name, names);
        if (key == 0) return {};
        keys[found++] = key;
    }
    return keys;
}

int KeyNameDistance(QStringView source, QStringView target) {
    // Of the prefixes of the source before the last character, up to it, and with this one.
    std::vector<int> beforeLast(size_t(target.size()) + 1), last(beforeLast), row(beforeLast);
    for (size_t j = 0; j < last.size(); ++j)
        last[j] = int(j) * kInsertion;
    for (qsizetype i = 1; i <= source.size(); ++i) {
        row[0] = int(i) * kDeletion;
        const QChar s = source[i - 1].toUpper();
        for (qsizetype j = 1; j <= target.size(); ++j) {
            const QChar t = target[j - 1];
            int best = std::min({last[size_t(j)] + kDeletion, row[size_t(j) - 1] + kInsertion,
                                 last[size_t(j) - 1] + (s == t.toUpper() ? 0 : kSubstitution)});
            // The first of the two comparisons takes the target as it was typed.
            if (i > 1 && j > 1 && source[i - 2].toUpper() == t && s == target[j - 2].toUpper())
                best = std::min(best, beforeLast[size_t(j) - 2] + kTransposition);
            row[size_t(j)] = best;
        }
        std::swap(beforeLast, last);
        std::swap(last, row);
    }
    return last.back();
}

QString NormaliseKeyName(const QString& token, const KeyNameTable& names) {
    if (token.size() == 1) return QString(token[0].toUpper());
    const QString* best = nullptr;
    int least = std::numeric_limits<int>::max();
    for (const KeyName& row : names) {
        if (row.name.isEmpty()) continue;
        const int distance = KeyNameDistance(row.name, token);
        if (distance >= least) continue;
        least = distance;
        best = &row.name;
    }
    if (!best) return QStringLiteral("???");
    if (KeyNameDistance(token, u"Win") < least) return QStringLiteral("Windows");
    return best->left(kMaxKeyName);
}

QString NormaliseKeyCombo(const QString& text, const KeyNameTable& names) {
    const QString typed = text.left(kMaxTypedCombo);
    QStringView rest = typed;
    QStringList keys;
    for (QStringView piece = TakePiece(rest, u"+-.,;'></"); !piece.isEmpty();
         piece = TakePiece(rest, u"+-. "))
        keys.append(NormaliseKeyName(piece.toString(), names));
    return keys.join(u'+').left(kMaxTypedCombo);
}

}  // namespace pixelgrove
