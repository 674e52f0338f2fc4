#include "library/ShaderSearch.h"

#include <QFile>
#include <atomic>
#include <optional>
#include <string>
#include <utility>

#include "core/BaseFolders.h"
#include "library/CacheNames.h"
#include "library/FolderWalk.h"
#include "library/SearchTerms.h"
#include "platform/CodePage.h"
#include "platform/FolderReader.h"
#include "shadertoy/JsonObject.h"
#include "shadertoy/JsonText.h"

namespace pixelgrove {
namespace {

constexpr uint32_t kServicePageRows = 16;
constexpr uint32_t kCachePageRows = 5000;
constexpr size_t kMaxFileBytes = size_t(256) << 20;
constexpr qsizetype kMaxResults = 1'000'000;

// The last one that was reported, by whichever search.
std::atomic<int> lastPercent{-1};

// True without a report where the whole percentage of part in all is the one that was reported last.
bool ReportPercent(uint32_t part, uint32_t all, float fraction, const SearchProgress& progress) {
    const int percent = int(uint64_t(part) * 100 / all);
    return lastPercent.exchange(percent) == percent || progress(fraction);
}

// What the scan reads: the shaders' files, by the names that the system has for them.
std::vector<std::string> NamesIn(const QString& folder) {
    std::vector<std::string> names;
    ForEachFile(folder, [&names](const WalkedFile& file) {
        const QByteArrayView name(file.SystemName());
        if (name.size() >= 5 && name.last(5).compare(".json", Qt::CaseInsensitive) == 0)
            names.emplace_back(file.SystemName());
        return true;
    });
    return names;
}

void AddResult(SearchContext& context, const std::string& fileName) {
    const QString name = QFile::decodeName(fileName.c_str());
    const std::optional<QString> id = DecodeCacheName(QStringView(name).chopped(5));
    if (!id) return;
    context.results.emplace_back().id = *id;
}

bool SearchCache(SearchContext& context, const SearchProgress& progress, const std::stop_token& stop) {
    const QString folder = CacheRoot() + u'/' + kCacheShaders;
    const std::vector<std::string> names = NamesIn(folder);
    if (names.empty()) return false;
    context.total = uint32_t(names.size());
    const SearchTerms terms(context.text);
    FolderReader reader(folder);
    for (const std::string& name : names) {
        if (stop.stop_requested()) break;
        const std::optional<QByteArrayView> bytes = reader.Read(name.c_str(), kMaxFileBytes);
        const std::optional<QByteArrayView> json = bytes ? CheckJsonText(*bytes) : std::nullopt;
        if (!json) continue;
        ++context.done;
        if (!ReportPercent(context.done, context.total, float(context.done) / float(context.total), progress))
            break;
        if (terms.Match(*json)) AddResult(context, name);
    }
    progress(kSearchEnded);
    return true;
}

bool Fail(SearchContext& context, SearchError error, const QString& problem, const SearchProgress& progress) {
    context.error = error;
    context.problem = problem;
    progress(kSearchEnded);
    return false;
}

// False where an element is no text; those before it have their records then.
bool Unpack(const JsonArray& ids, SearchContext& context, const SearchProgress& progress) {
    constexpr qsizetype kIdCapacity = 20;
    context.results.resize(size_t(ids.Size()));
    context.total = uint32_t(ids.Size());
    for (uint32_t i = 0; i < context.total; ++i) {
        std::optional<QString> id = ids.GetStringAt(i);
        if (!id) return false;
        if (id->size() < kIdCapacity) context.results[i].id = std::move(*id);
        context.done = i;
        ReportPercent(i, context.total, float(i) / float(context.total) * 0.5f + 0.5f, progress);
    }
    return true;
}

bool SearchService(SearchContext& context, const ShaderService& service, const SearchProgress& progress) {
    progress(0.0f);
    const ServiceItem item = SearchItem(service.address, context.text);
    const CachedAnswer answer = CachedFetch(service, item);
    if (!answer.problem.isEmpty()) return Fail(context, SearchError::NoAnswer, answer.problem, progress);
    progress(0.5f);
    const std::optional<QByteArrayView> json = CheckJsonText(answer.bytes);
    if (!json) return Fail(context, SearchError::NoJson, RefusalIn(answer.bytes, item.path), progress);
    const std::optional<JsonObject> object = JsonObject::Parse(FromCodePage(*json));
    if (!object) return false;
    if (!object->HasKey(u"Results")) return Fail(context, SearchError::None, {}, progress);
    const std::optional<JsonArray> ids = object->GetNamedArray(u"Results");
    if (!ids) return false;
    if (ids->Size() > kMaxResults)
        return Fail(context, SearchError::NoJson, QStringLiteral("the service names too many shaders"),
                    progress);
    if (!Unpack(*ids, context, progress)) return false;
    progress(kSearchEnded);
    return true;
}

}  // namespace

SearchContext NewSearch(const QString& text, bool local) {
    SearchContext context;
    context.text = text.left(kMaxSearchUnits);
    context.local = local;
    context.perPage = local ? kCachePageRows : kServicePageRows;
    return context;
}

bool RunSearch(SearchContext& context, const ShaderService& service, const SearchProgress& progress,
               const std::stop_token& stop) {
    context.results.clear();
    context.total = 0;
    context.done = 0;
    context.error = SearchError::None;
    context.problem.clear();
    if (!service.fetch) return false;
    return context.local ? SearchCache(context, progress, stop) : SearchService(context, service, progress);
}

}  // namespace pixelgrove
