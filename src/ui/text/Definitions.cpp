#include "ui/text/Definitions.h"

#include <algorithm>
#include <optional>

#include "ui/text/GlslWords.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kReach = 1000000;     // in both directions
constexpr qsizetype kMaxHead = 1000;      // of the text, comments included
constexpr qsizetype kMaxReturnType = 80;  // to the left of the name
constexpr qsizetype kMaxShown = 160;
constexpr qsizetype kMaxDefinitions = 4;

class DefinitionSearch {
  public:
    DefinitionSearch(QStringView text, std::span<const uint8_t> commentMap)
        : text_(text.first(std::min(text.size(), qsizetype(commentMap.size())))), map_(commentMap) {}

    qsizetype Size() const { return text_.size(); }

    bool IsWordAt(qsizetype start, qsizetype length) const {
        const qsizetype behind = start + length;
        return !IsComment(start) && (start == 0 || !IsWordCharacter(text_[start - 1])) &&
               (behind == text_.size() || !IsWordCharacter(text_[behind]));
    }

    // The line that defines the macro whose name stands there.
    std::optional<QString> MacroAt(qsizetype name) const {
        const qsizetype word = BackOverBlanks(name);
        const QStringView define = u"#define";
        const qsizetype start = word - define.size();
        if (start < 0 || word == name || text_.sliced(start, define.size()) != define) return std::nullopt;
        qsizetype end = name;
        while (end < text_.size() && end < name + kMaxHead && text_[end] != u'\n' && !IsComment(end))
            ++end;
        return Shown(start, end);
    }

    // The head of the function whose name ends there; nothing for a call of it.
    std::optional<QString> FunctionAt(qsizetype name, qsizetype behind) const {
        const qsizetype end = std::min(text_.size(), name + kMaxHead);
        const qsizetype opening = OverBlanks(behind, end);
        if (opening == end || text_[opening] != u'(') return std::nullopt;
        qsizetype closing = opening + 1;
        while (closing < end && (IsComment(closing) || (text_[closing] != u')' && text_[closing] != u'(')))
            ++closing;
        if (closing == end || text_[closing] != u')') return std::nullopt;
        const qsizetype body = OverBlanks(closing + 1, end);
        if (body == end || text_[body] != u'{') return std::nullopt;
        const qsizetype start = ReturnTypeBefore(name);
        return start == name ? std::nullopt : std::optional(Shown(start, closing + 1));
    }

  private:
    bool IsComment(qsizetype i) const { return map_[size_t(i)] != 0; }

    qsizetype OverBlanks(qsizetype i, qsizetype end) const {
        while (i < end && (IsComment(i) || text_[i].isSpace()))
            ++i;
        return i;
    }

    qsizetype BackOverBlanks(qsizetype i) const {
        while (i > 0 && !IsComment(i - 1) && (text_[i - 1] == u' ' || text_[i - 1] == u'\t'))
            --i;
        return i;
    }

    // Its words, which may stand in the line above; the name's place without any.
    qsizetype ReturnTypeBefore(qsizetype name) const {
        qsizetype start = name;
        const qsizetype end = std::max<qsizetype>(0, name - kMaxReturnType);
        for (qsizetype i = name; i > end && !IsComment(i - 1); --i) {
            const QChar unit = text_[i - 1];
            if (unit == u'#' || (unit == u'\n' && start < name)) break;
            if (IsWordCharacter(unit) || unit == u'[' || unit == u']') {
                start = i - 1;
            } else if (!unit.isSpace()) {
                break;
            }
        }
        return start;
    }

    QString Shown(qsizetype start, qsizetype end) const {
        QString shown;
        for (qsizetype i = start; i < end; ++i)
            shown += IsComment(i) ? QChar(u' ') : text_[i];
        shown = shown.simplified();
        if (shown.size() > kMaxShown) shown = shown.first(kMaxShown) + QStringLiteral("...");
        return shown;
    }

    QStringView text_;
    std::span<const uint8_t> map_;
};

}  // namespace

WordPlace WordAround(QStringView text, qsizetype position) {
    qsizetype start = std::clamp<qsizetype>(position, 0, text.size());
    qsizetype end = start;
    while (start > 0 && end - start < kMaxWordLength && IsWordCharacter(text[start - 1]))
        --start;
    while (end < text.size() && end - start < kMaxWordLength && IsWordCharacter(text[end]))
        ++end;
    const bool isMember = start > 0 && text[start - 1] == u'.';
    if (isMember || end - start >= kMaxWordLength) return {start, 0};
    return {start, end - start};
}

QStringList DefinitionsOf(QStringView name, QStringView text, std::span<const uint8_t> commentMap,
                          qsizetype position) {
    QStringList found;
    const DefinitionSearch search(text, commentMap);
    const qsizetype end = std::min(search.Size(), position + kReach);
    qsizetype at = std::max<qsizetype>(0, position - kReach);
    while (!name.isEmpty() && found.size() < kMaxDefinitions) {
        at = text.first(end).indexOf(name, at);
        if (at < 0) break;
        if (search.IsWordAt(at, name.size())) {
            std::optional<QString> head = search.MacroAt(at);
            if (!head) head = search.FunctionAt(at, at + name.size());
            if (head && !found.contains(*head)) found.append(*head);
        }
        at += name.size();
    }
    return found;
}

}  // namespace pixelgrove
