// Small scanners for texts that other programs and people write: lines, characters, numbers, by the rules of
// C and whatever the user's locale says. And how messages show such texts.
//
// Pure; any thread.
#pragma once

#include <locale.h>

#include <QString>
#include <QStringView>
#include <optional>

namespace pixelgrove {

// Calls visit(QStringView) for every line, without its LF. An LF at the very end ends the last line and
// starts none, so an empty text has no lines.
template <typename Visitor>
void ForEachLine(QStringView text, Visitor visit) {
    while (!text.isEmpty()) {
        const qsizetype end = text.indexOf(u'\n');
        visit(end < 0 ? text : text.first(end));
        text = end < 0 ? QStringView() : text.sliced(end + 1);
    }
}

// The text with LF for every kind of line end, and for all else that would begin a line in an editor, which
// has no characters for it: the separators of Unicode and the marks of the toolkit's text documents.
QString WithLineFeeds(QString text);

// Moves position behind any run of blanks and control blanks (those of the C locale's isspace).
void SkipSpace(QStringView text, qsizetype& position);

// Reads what scanf's %s reads: leading space, then all up to the next space, which position then is at. Empty
// at the end of the text.
QStringView ScanWord(QStringView text, qsizetype& position);

// Reads what scanf's %d reads: leading space, an optional sign, decimal digits. Moves position behind the
// last digit. A number that doesn't fit becomes the nearest int. Nothing, with position anywhere, when
// there is no digit.
std::optional<int> ScanInt(QStringView text, qsizetype& position);

// Reads what scanf's %f reads of plain decimals: leading space, an optional sign, digits with at most one
// point among or around them ("0." is a whole number), an exponent when it has digits. Moves position behind
// it. A number that doesn't fit becomes the nearest float; words ("inf", "nan") and hexadecimal digits are
// none. Nothing, with position anywhere, when there is no digit.
std::optional<float> ScanFloat(QStringView text, qsizetype& position);

// The C locale, for the conversions whose names end in _l: files have a decimal point. Lives for the whole
// process.
locale_t PlainLocale();

// A name from outside as a message shows it: in double quotes, on one line, and cut when it is very long.
QString InQuotes(QStringView name);

// True, and position moved by one, when text has this character at position.
bool SkipChar(QStringView text, qsizetype& position, char16_t expected);

}  // namespace pixelgrove
