// The service's answers, cache first: what is in the cache is never asked for again, and whatever is fetched
// is kept there as it came.
//
// An answer is put into the cache in one step, so what is found there is always whole. Its content is not
// looked at: a refusal is kept like a good answer, until its file is deleted. FetchShaderInfo does that for
// its own.
//
// Blocks while the record's fetch does; any one thread at a time, after MakeDataFolders.
#pragma once

#include <QByteArray>
#include <QString>

#include "core/ShaderProject.h"
#include "library/ServiceAddress.h"
#include "net/WebClient.h"
#include "shadertoy/ProjectFile.h"

namespace pixelgrove {

// Who is asked, and by what way. Made and kept by who asks.
struct ShaderService {
    ServiceAddress address;
    FetchFunction fetch;
};

// What one address of the service answers, and the file that keeps it. Both are empty for a name that could
// lead out of the cache's folder, and the path alone where it would have more than 259 units.
struct ServiceItem {
    QString url;
    QString path;
};

ServiceItem ShaderItem(const ServiceAddress& address, const QString& id);
ServiceItem SearchItem(const ServiceAddress& address, const QString& text);
ServiceItem MediumItem(const ServiceAddress& address, const QString& name);

struct CachedAnswer {
    QByteArray bytes;
    // A clause for the user when there is no answer. One that is empty, or that can't be stored, is none.
    QString problem;
    FetchFailure failure = FetchFailure::None;  // where it was the fetch that failed
};

CachedAnswer CachedFetch(const ShaderService& service, const ServiceItem& item);

// What is wrong with an answer, kept in path, that is no JSON to work with: a clause for the user.
QString RefusalIn(const QByteArray& answer, const QString& path);

// Loads the file of that name, or the shader with that id when there is none and it is an id (IsShaderId).
// Channels get their media through the service too; after a fetch that found no way to it the load asks for
// no more. The result is LoadProjectFile's; its message says what failed, and the project then stays as it
// was.
ProjectFileResult LoadProjectFromService(const ShaderService& service, const QString& idOrPath,
                                         ShaderProject& project);

// The same for one of several shaders, whose relative media are sought below folder. whatItIs names it in
// messages, as for LoadProjectBytes.
ProjectFileResult LoadFoundWithService(const ShaderService& service, const FoundShader& shader,
                                       const QString& whatItIs, const QString& folder,
                                       ShaderProject& project);

// Puts the shader into the cache under its id, in place of what is there, as if the service had answered it.
// Empty, or a clause for the user that says why it can't be kept: its id is none (IsShaderId), say.
QString KeepShader(const FoundShader& shader);

// Fills what describes a shader, as much of it as the answer has; the id stays where it has none. False when
// there is no such answer or it is no JSON (problem then gets a clause for the user); an answer that is no
// JSON is deleted from the cache.
bool FetchShaderInfo(const ShaderService& service, const QString& id, ShaderInfo& info,
                     QString* problem = nullptr);

}  // namespace pixelgrove
