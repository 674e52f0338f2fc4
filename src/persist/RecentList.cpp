#include "persist/RecentList.h"

#include <utility>

#include "platform/Files.h"

namespace pixelgrove {

namespace {

// As many as two digits count; the list itself keeps fewer.
constexpr int kMaxStoredEntries = 100;

QString EntryName(int index) {
    return QStringLiteral("File_%1").arg(index, 2, 10, QLatin1Char('0'));
}

// How many entries at the list's front were opened since base was read: what follows them is a part of base
// in the order of base.
qsizetype NewEntries(const QStringList& list, const QStringList& base) {
    qsizetype first = list.size();
    for (qsizetype at = base.size() - 1; at >= 0 && first > 0; --at)
        if (list[first - 1] == base[at]) --first;
    return first;
}

}  // namespace

bool PushRecent(StringList* list, QString path) {
    // Taken by value: the path may be one of the list's own entries.
    if (!list || (!IsPlainFile(path) && !IsFolder(path))) return false;
    QStringList& entries = list->entries;
    entries.removeIf([&](const QString& entry) { return entry.compare(path, Qt::CaseInsensitive) == 0; });
    while (entries.size() >= StringList::kCapacity)
        entries.removeLast();
    entries.prepend(std::move(path));
    return true;
}

void LoadRecent(StringList* list, XmlStore& store, const QString& elementName) {
    if (!list || !XmlEnter(store, elementName)) return;
    list->entries.clear();
    for (int i = 0; i < kMaxStoredEntries; ++i) {
        const std::optional<QString> path = XmlFindUserText(store, EntryName(i));
        if (!path) break;
        PushRecent(list, *path);
    }
    XmlLeave(store);
}

QStringList MergeRecent(const QStringList& own, const QStringList& stored, const QStringList& base) {
    const QStringList newHere = own.first(NewEntries(own, base));
    const QStringList newThere = stored.first(NewEntries(stored, base));
    QStringList merged;
    for (const QString& path : newHere + newThere + own) {
        if (merged.size() == StringList::kCapacity) break;
        if (!merged.contains(path, Qt::CaseInsensitive)) merged.append(path);
    }
    return merged;
}

bool WriteRecent(const StringList* list, XmlStore& store, const QString& elementName) {
    if (!XmlOpenElement(store, elementName)) return false;
    if (list) {
        int number = 0;
        for (auto entry = list->entries.crbegin(); entry != list->entries.crend(); ++entry)
            XmlWriteUserText(store, EntryName(number++), *entry);
    }
    return XmlCloseElement(store) && !store.failed;
}

}  // namespace pixelgrove
