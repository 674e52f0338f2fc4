#include "persist/XmlStore.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/TextScan.h"

namespace pixelgrove {

namespace {

QString OpeningTag(const QString& name) {
    return u'<' + name + u'>';
}

QString ClosingTag(const QString& name) {
    return QStringLiteral("</") + name + u'>';
}

bool IsName(const QString& name) {
    return !name.isEmpty() && name.size() <= XmlStore::kMaxNameLength;
}

const XmlStore::Level& Current(const XmlStore& store) {
    return store.levels[store.depth];
}

// Where the tag begins within the level's content, as an index of the text; -1 when it isn't there.
qsizetype FindTag(const XmlStore& store, const XmlStore::Level& level, const QString& tag) {
    if (level.end < level.start) return -1;
    const QStringView content = QStringView(store.text).mid(level.start, level.end - level.start);
    const qsizetype found = content.indexOf(tag, 0, Qt::CaseInsensitive);
    return found < 0 ? -1 : level.start + found;
}

int32_t ParseInt(const QString& text) {
    qsizetype position = 0;
    return ScanInt(text, position).value_or(0);
}

double ParseReal(const QString& text) {
    return strtod_l(ToCodePage(text).constData(), nullptr, PlainLocale());
}

bool Refuse(XmlStore& store) {
    store.failed = true;
    return false;
}

// One line at the given level, or nothing of it.
bool AppendLine(XmlStore& store, uint32_t level, const QString& line) {
    if (store.text.size() + level + line.size() + 1 > XmlStore::kMaxCharacters) return Refuse(store);
    const qsizetype before = store.text.size();
    try {
        store.text += QString(qsizetype(level), u'\t');
        store.text += line;
        store.text += u'\n';
    } catch (const std::bad_alloc&) {
        store.text.truncate(before);
        return Refuse(store);
    }
    return true;
}

const QLatin1String kEscapeStart("&#x");
constexpr qsizetype kMaxEscapeDigits = 4;

bool NeedsEscape(QStringView rest) {
    const QChar unit = rest.front();
    return unit == u'<' || unit == QChar(0) || CountLackingCharacters(rest.first(1)) != 0 ||
           rest.startsWith(kEscapeStart);
}

QString Escaped(QStringView text) {
    QString escaped;
    for (; !text.isEmpty(); text = text.sliced(1)) {
        if (NeedsEscape(text))
            escaped += kEscapeStart + QString::number(text.front().unicode(), 16).toUpper() + u';';
        else
            escaped += text.front();
    }
    return escaped;
}

QString Unescaped(QString text) {
    const auto isDigit = [](QChar c) { return (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F'); };
    for (qsizetype at = text.indexOf(kEscapeStart); at >= 0; at = text.indexOf(kEscapeStart, at + 1)) {
        const qsizetype start = at + kEscapeStart.size(), end = text.indexOf(u';', start);
        const QStringView digits = QStringView(text).mid(start, std::max<qsizetype>(end - start, 0));
        if (digits.isEmpty() || digits.size() > kMaxEscapeDigits || !std::ranges::all_of(digits, isDigit))
            continue;
        text.replace(at, end + 1 - at, QChar(digits.toUShort(nullptr, 16)));
    }
    return text;
}

bool AppendValue(XmlStore& store, const QString& name, const QString& value) {
    if (!IsName(name) || value.size() > XmlStore::kMaxCharacters) return Refuse(store);
    return AppendLine(store, store.depth, OpeningTag(name) + value + ClosingTag(name));
}

}  // namespace

std::unique_ptr<XmlStore> XmlLoad(const QString& path) {
    const std::optional<QByteArray> bytes = ReadWholeFile(path, XmlStore::kMaxCharacters + 1);
    return bytes ? XmlFromBytes(*bytes) : nullptr;
}

std::unique_ptr<XmlStore> XmlFromBytes(const QByteArray& bytes) {
    try {
        auto store = std::make_unique<XmlStore>();
        const qsizetype nul = bytes.indexOf('\0');
        store->text = FromCodePage(QByteArrayView(bytes).first(nul < 0 ? bytes.size() : nul));

        const QString& text = store->text;
        qsizetype start = 0;
        while (start < text.size() && text[start] != u'\r' && text[start] != u'\n')
            ++start;
        while (start < text.size() &&
               (text[start] == u'\r' || text[start] == u'\n' || text[start] == u'\t' || text[start] == u' '))
            ++start;
        store->levels[0] = {QStringLiteral("BASE"), start, text.size()};
        return store;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool XmlEnter(XmlStore& store, const QString& name) {
    if (!IsName(name) || store.depth + 1 >= XmlStore::kLevels) return false;
    const XmlStore::Level& parent = Current(store);
    const QString tag = OpeningTag(name);
    const qsizetype found = FindTag(store, parent, tag);
    if (found < 0) return false;
    // The end is looked for from the parent's start: a stray closing tag before the element leaves it empty.
    store.levels[store.depth + 1] = {name, found + tag.size(), FindTag(store, parent, ClosingTag(name))};
    ++store.depth;
    return true;
}

void XmlLeave(XmlStore& store) {
    if (store.depth == 0) return;
    store.levels[store.depth] = XmlStore::Level();
    --store.depth;
}

std::optional<QString> XmlFind(const XmlStore& store, const QString& name) {
    const QString tag = OpeningTag(name);
    const qsizetype found = FindTag(store, Current(store), tag);
    if (found < 0) return std::nullopt;
    const qsizetype start = found + tag.size();
    const qsizetype end = store.text.indexOf(u'<', start);
    return store.text.mid(start, end < 0 ? -1 : end - start);
}

std::optional<QString> XmlFindUserText(const XmlStore& store, const QString& name) {
    std::optional<QString> text = XmlFind(store, name);
    if (text) text = Unescaped(*std::move(text));
    return text;
}

std::optional<int32_t> XmlFindInt(const XmlStore& store, const QString& name) {
    const std::optional<QString> text = XmlFind(store, name);
    if (!text) return std::nullopt;
    return ParseInt(*text);
}

std::optional<double> XmlFindReal(const XmlStore& store, const QString& name) {
    const std::optional<QString> text = XmlFind(store, name);
    if (!text) return std::nullopt;
    return ParseReal(*text);
}

std::unique_ptr<XmlStore> XmlCreate() {
    try {
        auto store = std::make_unique<XmlStore>();
        store->text = QStringLiteral("<?xml version=\"1.0\"?>\n");
        return store;
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

bool XmlOpenElement(XmlStore& store, const QString& name) {
    if (!IsName(name) || store.depth + 1 >= XmlStore::kLevels) return Refuse(store);
    if (!AppendLine(store, store.depth, OpeningTag(name))) return false;
    store.levels[++store.depth].name = name;
    return true;
}

bool XmlCloseElement(XmlStore& store) {
    if (store.depth == 0) return false;
    if (!AppendLine(store, store.depth - 1, ClosingTag(Current(store).name))) return false;
    XmlLeave(store);
    return true;
}

bool XmlWriteText(XmlStore& store, const QString& name, const QString& text) {
    // A NUL would end the whole document for the reader.
    const qsizetype nul = text.indexOf(QChar(0));
    return AppendValue(store, name, nul < 0 ? text : text.left(nul));
}

bool XmlWriteUserText(XmlStore& store, const QString& name, const QString& text) {
    if (text.size() > XmlStore::kMaxCharacters) return Refuse(store);
    return AppendValue(store, name, Escaped(text));
}

bool XmlWriteInt(XmlStore& store, const QString& name, int32_t value) {
    return AppendValue(store, name, QString::number(value));
}

bool XmlWriteReal(XmlStore& store, const QString& name, double value) {
    return AppendValue(store, name, QString::number(value, 'f', 6));
}

bool XmlSave(const XmlStore& store, const QString& path, QString* reason) {
    if (reason) reason->clear();
    const qsizetype length = store.text.lastIndexOf(u'>') + 1;
    if (store.failed || length == 0) return false;
    try {
        QByteArray bytes = ToCodePage(QStringView(store.text).first(length));
        bytes.append('\0');
        return WriteWholeFile(path, bytes, reason);
    } catch (const std::bad_alloc&) {
        return false;
    }
}

}  // namespace pixelgrove
