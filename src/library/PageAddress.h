// Addresses of the service's pages, as a user's web browser has them. Pure; any thread.
#pragma once

#include <QString>
#include <QUrl>

#include "library/ServiceAddress.h"

namespace pixelgrove {

// The id of the shader whose page that is, at the service or at the public one. Empty for other addresses.
QString ShaderIdOfPage(const ServiceAddress& service, const QUrl& url);

}  // namespace pixelgrove
