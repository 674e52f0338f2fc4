#include "library/PageAddress.h"

#include "library/CacheNames.h"

namespace pixelgrove {

namespace {

// Of the ids that the service gives. Other words may be anything, and are not to be sent there.
constexpr qsizetype kServiceIdUnits = 6;
constexpr qsizetype kMaxAddressUnits = 2000;

QString PlainHost(const QUrl& url) {
    const QString host = url.host().toLower();
    return host.startsWith(QLatin1String("www.")) ? host.mid(4) : host;
}

}  // namespace

QString ShaderIdOfPage(const ServiceAddress& service, const QUrl& url) {
    if (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("http")) return {};
    const QString host = PlainHost(url);
    if (host != PlainHost(QUrl(service.base)) && host != PlainHost(QUrl(ChooseService({}, {}).base)))
        return {};
    const QString page = QStringLiteral("/view/");
    const QString path = url.path();
    const qsizetype at = path.indexOf(page);
    if (at < 0) return {};
    const QString id = path.mid(at + page.size()).section(u'/', 0, 0);
    return IsShaderId(id) ? id : QString();
}

QString ShaderIdOfText(const ServiceAddress& service, const QString& text) {
    const QString word = text.trimmed();
    if (word.size() > kMaxAddressUnits) return {};
    if (word.size() == kServiceIdUnits && IsShaderId(word)) return word;
    const bool hasScheme = word.contains(QLatin1String("://"));
    return ShaderIdOfPage(service,
                          QUrl(hasScheme ? word : QStringLiteral("https://") + word, QUrl::StrictMode));
}

}  // namespace pixelgrove
