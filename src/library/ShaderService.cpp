#include "library/ShaderService.h"

#include <QFile>
#include <optional>
#include <utility>

#include "core/BaseFolders.h"
#include "library/CacheNames.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/TextScan.h"
#include "shadertoy/JsonText.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {
namespace {

constexpr qsizetype kMaxPathUnits = 259;

// Empty where a limit or a missing cache forbids it.
QString CachePath(const QString& folder, const QString& name) {
    const QString root = CacheRoot();
    const QString path = root + u'/' + folder + u'/' + name;
    return root.isEmpty() || path.size() > kMaxPathUnits ? QString() : path;
}

CachedAnswer Problem(const QString& clause, FetchFailure failure = FetchFailure::None) {
    return {{}, clause, failure};
}

// Empty when the answer is there, else a clause for the user.
QString Store(const QString& path, const QByteArray& bytes) {
    const QString cannot = QStringLiteral("the answer can't be stored in %1").arg(InQuotes(path));
    if (!MakeFolder(path.left(path.lastIndexOf(u'/')))) return cannot;
    QString reason;
    // Onto the disk: what a loss of power left here would be taken for the answer for ever.
    if (!WriteWholeFile(path, bytes, &reason)) return cannot + QStringLiteral(": ") + reason;
    return {};
}

CachedAnswer FetchAndStore(const ShaderService& service, const ServiceItem& item) {
    if (!service.address.problem.isEmpty()) return Problem(service.address.problem, FetchFailure::BadAddress);
    if (item.url.isEmpty()) return Problem(QStringLiteral("the service has nothing of that name"));
    if (item.path.isEmpty())
        return Problem(QStringLiteral("the cache has no room for a name of that length"));
    FetchResult fetched = service.fetch(item.url);
    if (fetched.failure != FetchFailure::None) return Problem(fetched.reason, fetched.failure);
    if (fetched.body.isEmpty()) return Problem(QStringLiteral("the answer of the service is empty"));
    const QString problem = Store(item.path, fetched.body);
    if (!problem.isEmpty()) return Problem(problem);
    return {std::move(fetched.body), {}};
}

// True where asking again leads to the same end.
bool IsDeadEnd(FetchFailure failure) {
    switch (failure) {
        case FetchFailure::BadAddress:
        case FetchFailure::NoConnection:
        case FetchFailure::Refused:
        case FetchFailure::TimedOut:
        case FetchFailure::Tls:
        case FetchFailure::Stopped:
            return true;
        default:
            return false;
    }
}

// The way to the media of one load, as a FetchMedium.
class MediaRoad {
  public:
    explicit MediaRoad(const ShaderService& service) : service_(service) {}

    QString operator()(const QString& name) {
        const ServiceItem item = MediumItem(service_.address, name);
        if (IsPlainFile(item.path)) return {};
        if (!deadEnd_.isEmpty()) return deadEnd_;
        const CachedAnswer answer = FetchAndStore(service_, item);
        if (IsDeadEnd(answer.failure)) deadEnd_ = answer.problem;
        return answer.problem;
    }

  private:
    const ShaderService& service_;
    QString deadEnd_;  // why nothing more is asked for
};

ProjectFileResult Unloadable(ProjectFileStatus status, const QString& id, const QString& clause) {
    return {status, QStringLiteral("The shader %1 can't be loaded: %2.").arg(InQuotes(id), clause), {}, true};
}

}  // namespace

ServiceItem ShaderItem(const ServiceAddress& address, const QString& id) {
    const std::optional<QString> name = EncodeCacheName(id);
    if (!name) return {};
    return {ShaderUrl(address, id), CachePath(kCacheShaders, *name + QStringLiteral(".json"))};
}

ServiceItem SearchItem(const ServiceAddress& address, const QString& text) {
    const QString name = Base32Encode(SearchQuery(address, text));
    return {SearchUrl(address, text), CachePath(kCacheSearches, name + QStringLiteral(".json"))};
}

ServiceItem MediumItem(const ServiceAddress& address, const QString& name) {
    const QString path = MediumCachePath(name);
    if (path.isEmpty()) return {};
    return {MediumUrl(address, path.mid(path.lastIndexOf(u'/') + 1)), path};
}

CachedAnswer CachedFetch(const ShaderService& service, const ServiceItem& item) {
    if (!IsPlainFile(item.path)) return FetchAndStore(service, item);
    ReadFailure failure;
    std::optional<QByteArray> bytes = ReadWholeFile(item.path, qint64(1) << 30, &failure);
    if (!bytes)
        return Problem(QStringLiteral("%1 can't be read: %2").arg(InQuotes(item.path), failure.reason));
    return {std::move(*bytes), {}};
}

QString RefusalIn(const QByteArray& answer, const QString& path) {
    const QString kept = QStringLiteral("; that answer is kept in %1").arg(InQuotes(path));
    const std::optional<JsonObject> object = JsonObject::Parse(FromCodePage(answer));
    const std::optional<QString> error = object ? object->GetNamedString(u"Error") : std::nullopt;
    if (error) return QStringLiteral("the service answers %1").arg(InQuotes(*error)) + kept;
    return QStringLiteral("the answer of the service is no JSON text") + kept;
}

ProjectFileResult LoadProjectFromService(const ShaderService& service, const QString& idOrPath,
                                         ShaderProject& project) {
    MediaRoad road(service);
    const FetchMedium fetchMedium = [&road](const QString& name) { return road(name); };
    if (IsPlainFile(idOrPath) || !IsShaderId(idOrPath))
        return LoadProjectFile(idOrPath, project, fetchMedium);

    const ServiceItem item = ShaderItem(service.address, idOrPath);
    const CachedAnswer answer = CachedFetch(service, item);
    if (!answer.problem.isEmpty()) return Unloadable(ProjectFileStatus::Unreadable, idOrPath, answer.problem);
    if (!CheckJsonText(answer.bytes))
        return Unloadable(ProjectFileStatus::NotAProject, idOrPath, RefusalIn(answer.bytes, item.path));
    ProjectFileResult result =
        LoadProjectBytes(answer.bytes, QStringLiteral("answer for %1").arg(InQuotes(idOrPath)), QString(),
                         project, fetchMedium);
    if (result.status == ProjectFileStatus::NotAProject)
        return Unloadable(result.status, idOrPath,
                          QStringLiteral("the service has nothing under this id; its answer is kept in %1")
                              .arg(InQuotes(item.path)));
    return result;
}

ProjectFileResult LoadFoundWithService(const ShaderService& service, const FoundShader& shader,
                                       const QString& whatItIs, const QString& folder,
                                       ShaderProject& project) {
    MediaRoad road(service);
    return LoadFoundShader(shader, whatItIs, folder, project,
                           [&road](const QString& name) { return road(name); });
}

QString KeepShader(const FoundShader& shader) {
    if (shader.id.isEmpty()) return QStringLiteral("it has no id");
    if (!IsShaderId(shader.id)) return QStringLiteral("%1 is no id of the service").arg(InQuotes(shader.id));
    const QString path = ShaderItem({}, shader.id).path;
    if (path.isEmpty()) return QStringLiteral("the cache has no room for a name of that length");
    return Store(path, shader.json);
}

bool FetchShaderInfo(const ShaderService& service, const QString& id, ShaderInfo& info, QString* problem) {
    const ServiceItem item = ShaderItem(service.address, id);
    CachedAnswer answer = CachedFetch(service, item);
    if (answer.problem.isEmpty()) {
        if (const std::optional<QByteArrayView> text = CheckJsonText(answer.bytes)) {
            ReadInfoJson(FromCodePage(*text), info);
            if (info.id.isEmpty()) info.id = id;
            info.size = uint32_t(text->size()) + 1;
            return true;
        }
        // The one place where a refusal leaves the cache: the next look asks again.
        QFile::remove(item.path);
        answer.problem = QStringLiteral("the answer of the service is no JSON text");
    }
    if (problem) *problem = answer.problem;
    return false;
}

}  // namespace pixelgrove
