#include "ui/text/Completions.h"

#include <algorithm>

#include "ui/text/GlslWords.h"
#include "ui/text/WordHelp.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kScanReach = 1000000;  // in both directions

bool Begins(QStringView word, QStringView beginning) {
    return word.size() > beginning.size() && word.startsWith(beginning, Qt::CaseInsensitive);
}

}  // namespace

qsizetype WordBegin(QStringView text, qsizetype caret) {
    const qsizetype end = std::max<qsizetype>(0, caret - kMaxWordLength);
    qsizetype start = caret;
    while (start > end && IsWordCharacter(text[start - 1]))
        --start;
    return start;
}

bool IsCompletable(QStringView word) {
    return word.isEmpty() || (word.size() < kMaxWordLength && !word.front().isDigit());
}

bool IsInComment(QStringView text, std::span<const uint8_t> commentMap, qsizetype caret) {
    if (caret < 1 || size_t(caret) > commentMap.size()) return false;
    const uint8_t before = commentMap[size_t(caret) - 1];
    // A line comment has its line end.
    return before == 2 || (before == 1 && text[caret - 1] != u'\n');
}

void AddNames(QStringView text, std::span<const uint8_t> commentMap, QStringView beginning, qsizetype except,
              QSet<QString>& names) {
    const qsizetype length = std::min(text.size(), qsizetype(commentMap.size()));
    const qsizetype end = std::min(length, except + kScanReach);
    qsizetype i = std::clamp<qsizetype>(except - kScanReach, 0, length);
    while (i < end) {
        if (!IsWordCharacter(text[i])) {
            ++i;
            continue;
        }
        qsizetype behind = i + 1;
        while (behind < end && IsWordCharacter(text[behind]))
            ++behind;
        const QStringView word = text.sliced(i, behind - i);
        if (i != except && commentMap[size_t(i)] == 0 && Begins(word, beginning) &&
            word.size() >= kCompletedLetters && IsCompletable(word))
            names.insert(word.toString());
        i = behind;
    }
}

void AddKnownWords(QStringView beginning, QSet<QString>& names) {
    for (const KeywordRow& row : KeywordRows())
        if (row.kind == KeywordKind::Word && Begins(row.word, beginning)) names.insert(row.word);
    for (const std::span<const WordHelp> part : {InputHelp(), NumberFunctionHelp()}) {
        for (const WordHelp& row : part) {
            const QString word = QString::fromLatin1(row.word);
            if (Begins(word, beginning)) names.insert(word);
        }
    }
}

QStringList SortedWords(const QSet<QString>& names) {
    QStringList words(names.begin(), names.end());
    std::ranges::sort(words, [](const QString& a, const QString& b) {
        const int order = a.compare(b, Qt::CaseInsensitive);
        return order != 0 ? order < 0 : a < b;
    });
    return words;
}

}  // namespace pixelgrove
