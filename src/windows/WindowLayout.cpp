#include "windows/WindowLayout.h"

#include <QtEndian>
#include <algorithm>
#include <array>
#include <bit>

namespace pixelgrove {

namespace {

// The record's bytes in memory order, each number with its lowest byte first.
template <typename Record>
QString ToHex(const Record& record) {
    using Words = std::array<int32_t, sizeof(Record) / sizeof(int32_t)>;
    QByteArray bytes;
    for (const int32_t word : std::bit_cast<Words>(record)) {
        const int32_t stored = qToLittleEndian(word);
        bytes.append(reinterpret_cast<const char*>(&stored), sizeof stored);
    }
    return QString::fromLatin1(bytes.toHex());
}

int HexDigit(QChar c) {
    if (c >= u'0' && c <= u'9') return c.unicode() - u'0';
    const QChar lower = c.toLower();
    return lower >= u'a' && lower <= u'f' ? lower.unicode() - u'a' + 10 : -1;
}

template <typename Record>
Record FromHex(const QString& text) {
    std::array<uint8_t, sizeof(Record)> bytes{};
    const size_t pairs = std::min(bytes.size(), size_t(text.size() / 2));
    for (size_t i = 0; i < pairs; ++i) {
        const int high = HexDigit(text[qsizetype(2 * i)]), low = HexDigit(text[qsizetype(2 * i + 1)]);
        if (high < 0 || low < 0) break;
        bytes[i] = uint8_t(high * 16 + low);
    }
    auto words = std::bit_cast<std::array<int32_t, sizeof(Record) / sizeof(int32_t)>>(bytes);
    for (int32_t& word : words)
        word = qFromLittleEndian(word);
    return std::bit_cast<Record>(words);
}

QString WindowElement(size_t index) {
    return QStringLiteral("Window%1").arg(index + 1);
}

WindowRecord ReadWindow(const XmlStore& store) {
    WindowRecord window;
    window.name = XmlFind(store, QStringLiteral("Name")).value_or(QString());
    if (window.name.size() > kMaxWindowName) window.name.clear();
    window.open = XmlFindInt(store, QStringLiteral("Open")).value_or(1) != 0;
    window.placement =
        FromHex<WindowPlacement>(XmlFind(store, QStringLiteral("Position")).value_or(QString()));
    return window;
}

void TakeWindow(WindowLayout& layout, size_t index, const WindowRecord& window) {
    if (index < layout.windows.size()) layout.windows[index].name = window.name;
    WindowRecord* row = FindOrAddWindowRow(layout.windows, window.name);
    if (!row) return;
    row->open = window.open;
    row->placement = window.placement;
    row->live = false;
}

}  // namespace

bool SaveLayout(XmlStore& store, const WindowLayout& layout) {
    XmlWriteText(store, QStringLiteral("DTRect"), ToHex(layout.desktop));
    for (size_t i = 0; i < layout.windows.size(); ++i) {
        const WindowRecord& window = layout.windows[i];
        if (!XmlOpenElement(store, WindowElement(i))) return false;
        XmlWriteText(store, QStringLiteral("Name"), window.name);
        XmlWriteInt(store, QStringLiteral("Open"), window.open ? 1 : 0);
        XmlWriteText(store, QStringLiteral("Position"), ToHex(window.placement));
        XmlCloseElement(store);
    }
    XmlWriteInt(store, QStringLiteral("LockWin"), layout.lockWindows ? 1 : 0);
    return !store.failed;
}

void LoadLayout(XmlStore& store, WindowLayout& layout) {
    layout.desktop = FromHex<EdgeRect>(XmlFind(store, QStringLiteral("DTRect")).value_or(QString()));
    for (size_t i = 0; i < kMaxWindowRows && XmlEnter(store, WindowElement(i)); ++i) {
        const WindowRecord window = ReadWindow(store);
        XmlLeave(store);
        if (!window.name.isEmpty()) TakeWindow(layout, i, window);
    }
    if (const auto lock = XmlFindInt(store, QStringLiteral("LockWin"))) layout.lockWindows = *lock != 0;
}

}  // namespace pixelgrove
