// XmlStore: the small reader and writer behind the settings and layout files.
//
// Not an XML parser. Reading is a search for tags in the text, without regard to case; writing appends lines.
// There are no attributes and no comments, and a '<' in a value ends it when it is read. A commented element
// is found like any other. Files hold bytes of the program's code page, lines end in LF, each level is
// indented by one tab, and one NUL byte follows the last '>'.
//
// Values are raw, but for the texts of the user: in those "&#x3C9;" stands for the UTF-16 code unit of that
// number. It is written only for what would not come back by itself, so all other texts look the same raw.
//
// One record serves one direction: XmlLoad makes a reader, XmlCreate a writer. Whoever made it owns it; one
// thread at a time.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>

namespace pixelgrove {

struct XmlStore {
    static constexpr uint32_t kLevels = 32;  // the root among them
    static constexpr qsizetype kMaxNameLength = 63;
    static constexpr qsizetype kMaxCharacters = 16'000'000;

    struct Level {
        QString name;
        // Reader: the element's content in the text. An end before the start is an element that was never
        // closed: nothing is found in it.
        qsizetype start = 0;
        qsizetype end = -1;
    };

    uint32_t depth = 0;  // 0 at the root
    std::array<Level, kLevels> levels;
    QString text;         // the whole document
    bool failed = false;  // writer: something was refused, the document isn't whole
};

// The file's text, cut at its first NUL; its first line is skipped, whatever it says. Null when the file
// can't be read or has more than kMaxCharacters.
std::unique_ptr<XmlStore> XmlLoad(const QString& path);
// The same for bytes that were read already; null without memory.
std::unique_ptr<XmlStore> XmlFromBytes(const QByteArray& bytes);

// Enters the first element of that name at or below the current level. False, with the level unchanged, when
// there is none, the name is too long or the levels are used up. The element's end is the first closing tag
// of its name in the parent; without one the element is entered, but nothing is found in it.
bool XmlEnter(XmlStore& store, const QString& name);
// Back to the parent; nothing at the root.
void XmlLeave(XmlStore& store);

// The text from behind the first opening tag of that name, at any depth of the current element, to the next
// '<'. Nothing when there is no such tag.
std::optional<QString> XmlFind(const XmlStore& store, const QString& name);
// The same for what XmlWriteUserText wrote, and for texts that were written raw.
std::optional<QString> XmlFindUserText(const XmlStore& store, const QString& name);
// The number at the start of that text behind blanks, 0 when there is none there. Integers are brought into
// the range of their type; a real may come out infinite or not a number.
std::optional<int32_t> XmlFindInt(const XmlStore& store, const QString& name);
std::optional<double> XmlFindReal(const XmlStore& store, const QString& name);

// A document with its declaration. Null without memory.
std::unique_ptr<XmlStore> XmlCreate();

// These append to a writer. False when the name is empty or too long, the levels are used up or the document
// would pass kMaxCharacters; the document is then unchanged and can no longer be saved.
bool XmlOpenElement(XmlStore& store, const QString& name);
// False at the root, which does no harm.
bool XmlCloseElement(XmlStore& store);
// The text is written raw, up to its first NUL.
bool XmlWriteText(XmlStore& store, const QString& name, const QString& text);
// For what a user typed or chose, paths among it: any text comes back from XmlFindUserText as it is.
bool XmlWriteUserText(XmlStore& store, const QString& name, const QString& text);
bool XmlWriteInt(XmlStore& store, const QString& name, int32_t value);
// With six decimals.
bool XmlWriteReal(XmlStore& store, const QString& name, double value);

// Writes the document up to its last '>' and one NUL. The file is replaced whole or not at all. False when
// that fails, when the document is empty, and when one of its writes was refused; reason is the system's,
// empty where it was not asked.
bool XmlSave(const XmlStore& store, const QString& path, QString* reason = nullptr);

}  // namespace pixelgrove
