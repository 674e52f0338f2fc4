#include "library/FolderWalk.h"

#include <dirent.h>
#include <sys/stat.h>

#include <QFile>
#include <algorithm>
#include <cerrno>
#include <compare>
#include <memory>
#include <optional>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

constexpr size_t kMaxSortKeys = 16;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using OpenFolder = std::unique_ptr<DIR, CloseFolder>;

QString WithoutTrailingSlashes(const QString& folder) {
    QString path = NormalizePath(folder);
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

// What an entry leads to; nothing for a link that leads nowhere.
std::optional<struct stat> StatusOf(DIR* folder, const dirent* entry) {
    struct stat status {};
    if (fstatat(dirfd(folder), entry->d_name, &status, 0) != 0) return std::nullopt;
    return status;
}

bool IsPlain(DIR* folder, const dirent* entry) {
    // Asking costs as much as opening the file, and most file systems have said it.
    if (entry->d_type == DT_REG) return true;
    if (entry->d_type != DT_LNK && entry->d_type != DT_UNKNOWN) return false;
    const std::optional<struct stat> status = StatusOf(folder, entry);
    return status && S_ISREG(status->st_mode);
}

// Calls visit(DIR*, const dirent*) for each entry. False when that gives false, or the folder can't be read
// to its end.
template <typename Visitor>
bool ForEachEntry(const QString& folder, Visitor visit) {
    const OpenFolder open(opendir(QFile::encodeName(folder).constData()));
    if (!open) return true;
    for (;;) {
        errno = 0;
        const dirent* entry = readdir(open.get());
        if (!entry) return errno == 0;
        if (!visit(open.get(), entry)) return false;
    }
}

char16_t Folded(QChar unit) {
    return unit >= u'A' && unit <= u'Z' ? char16_t(unit.unicode() + (u'a' - u'A')) : unit.unicode();
}

std::strong_ordering CompareFolded(QStringView first, QStringView second) {
    return std::lexicographical_compare_three_way(
        first.begin(), first.end(), second.begin(), second.end(),
        [](QChar left, QChar right) { return Folded(left) <=> Folded(right); });
}

QStringView ExtensionOf(QStringView name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot <= 0 ? QStringView() : name.sliced(dot + 1);
}

std::strong_ordering CompareSizes(uint64_t first, uint64_t second) {
    const std::strong_ordering low = uint32_t(first) <=> uint32_t(second);
    return low != 0 ? low : first <=> second;
}

std::strong_ordering CompareBy(char16_t letter, const ListedFile& first, const ListedFile& second) {
    switch (letter) {
        case u'N':
            return CompareFolded(first.name, second.name);
        case u'E':
            return CompareFolded(ExtensionOf(first.name), ExtensionOf(second.name));
        case u'S':
            return CompareSizes(first.size, second.size);
        case u'D':
            return first.modifiedNs <=> second.modifiedNs;
        default:  // G
            return int(second.isFolder) <=> int(first.isFolder);
    }
}

}  // namespace

QString WalkedFile::Name() const {
    return QFile::decodeName(name_);
}

QString WalkedFile::Path() const {
    return folder_ + u'/' + Name();
}

bool ForEachFile(const QString& folder, const FileVisitor& visit) {
    const QString path = WithoutTrailingSlashes(folder);
    return ForEachEntry(path, [&](DIR* open, const dirent* entry) {
        return !IsPlain(open, entry) || visit(WalkedFile(path, entry->d_name));
    });
}

bool ForEachFileSorted(const QString& folder, QStringView order, const FileVisitor& visit) {
    if (folder.isNull()) return false;
    struct Listed {
        ListedFile file;
        QByteArray systemName;
    };
    const QString path = WithoutTrailingSlashes(folder);
    std::vector<Listed> listed;
    const bool isWhole = ForEachEntry(path, [&](DIR* open, const dirent* entry) {
        const std::optional<struct stat> status = StatusOf(open, entry);
        if (!status || (!S_ISREG(status->st_mode) && !S_ISDIR(status->st_mode))) return true;
        const int64_t modifiedNs = int64_t(status->st_mtim.tv_sec) * 1'000'000'000 + status->st_mtim.tv_nsec;
        listed.push_back({{QFile::decodeName(entry->d_name), uint64_t(status->st_size), modifiedNs,
                           S_ISDIR(status->st_mode)},
                          entry->d_name});
        return true;
    });
    const std::vector<SortKey> keys = ParseSortOrder(order.isNull() ? QStringView(u"GEN") : order);
    std::stable_sort(listed.begin(), listed.end(), [&](const Listed& first, const Listed& second) {
        return CompareFiles(first.file, second.file, keys) < 0;
    });
    const bool isVisited = std::all_of(listed.begin(), listed.end(), [&](const Listed& entry) {
        return entry.file.isFolder || visit(WalkedFile(path, entry.systemName.constData()));
    });
    return isWhole && isVisited;
}

std::vector<SortKey> ParseSortOrder(QStringView order) {
    std::vector<SortKey> keys;
    bool isReversed = false;
    for (const QChar unit : order) {
        const char16_t letter =
            unit >= u'a' && unit <= u'z' ? unit.unicode() - (u'a' - u'A') : unit.unicode();
        if (QStringView(u"NSEDG").contains(QChar(letter)) && keys.size() < kMaxSortKeys)
            keys.push_back({letter, isReversed});
        isReversed = letter == u'-';
    }
    return keys;
}

int CompareFiles(const ListedFile& first, const ListedFile& second, const std::vector<SortKey>& keys) {
    for (const SortKey& key : keys) {
        const std::strong_ordering order = CompareBy(key.letter, first, second);
        if (order == 0) continue;
        return (order < 0) == (key.isReversed && key.letter != u'G') ? 1 : -1;
    }
    return 0;
}

}  // namespace pixelgrove
