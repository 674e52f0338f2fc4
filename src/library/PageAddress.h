// Addresses of the service's pages, as a user's web browser has them. Pure; any thread.
#pragma once

#include <QString>
#include <QUrl>

#include "library/ServiceAddress.h"

namespace pixelgrove {

// The id of the shader whose page that is, at the service or at the public one. Empty for other addresses.
QString ShaderIdOfPage(const ServiceAddress& service, const QUrl& url);

// The id in a text that is nothing but the address of such a page, also one without its scheme, or an id of
// the length that the service gives. Empty for other texts.
QString ShaderIdOfText(const ServiceAddress& service, const QString& text);

}  // namespace pixelgrove
