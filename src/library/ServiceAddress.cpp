#include "library/ServiceAddress.h"

#include <QByteArray>
#include <QUrl>

#include "library/CacheNames.h"
#include "platform/TextScan.h"

namespace pixelgrove {
namespace {

constexpr qsizetype kKeyUnits = 6;

// What stands for itself in an address, beside letters and digits: in one component of a path, and in text
// that the user may have written as a part of an address. The '#' is in neither: it would hide what follows.
constexpr QByteArrayView kComponentMarks = "-._~";
constexpr QByteArrayView kAddressMarks = "-._~%!$&'()*+,;=:@/?[]";

QString Encoded(const QString& text, QByteArrayView marks) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    QString result;
    for (const char byte : text.toUtf8()) {
        const auto value = static_cast<unsigned char>(byte);
        const bool isPlain = (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= '0' && byte <= '9') || marks.contains(byte);
        if (isPlain) {
            result += QLatin1Char(byte);
        } else {
            result += u'%';
            result += QLatin1Char(kHex[value >> 4]);
            result += QLatin1Char(kHex[value & 15]);
        }
    }
    return result;
}

QString At(const ServiceAddress& service, QLatin1String path, const QString& rest) {
    return service.base.isEmpty() ? QString() : service.base + path + rest;
}

QString ShaderQueryEnd(const ServiceAddress& service) {
    return QStringLiteral("?key=") + service.key;
}

bool IsPlainWebAddress(const QUrl& url) {
    const bool isWeb = url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http");
    return isWeb && !url.host().isEmpty() && !url.hasQuery() && !url.hasFragment() &&
           url.userInfo().isEmpty();
}

}  // namespace

ServiceAddress ChooseService(const QString& url, const QString& key) {
    ServiceAddress service;
    const bool isKey = key.size() == kKeyUnits && IsShaderId(key);
    service.key = isKey ? key : QStringLiteral("qk4zvw");
    if (url.isEmpty()) {
        service.base = QStringLiteral("https://www.shadertoy.com");
        return service;
    }
    const QUrl parsed(url, QUrl::StrictMode);
    if (!IsPlainWebAddress(parsed)) {
        service.problem =
            QStringLiteral("PIXELGROVE_SERVICE_URL, %1, is no http or https address").arg(InQuotes(url));
        return service;
    }
    service.base = parsed.toString(QUrl::FullyEncoded);
    while (service.base.endsWith(u'/'))
        service.base.chop(1);
    return service;
}

ServiceAddress ServiceOfEnvironment() {
    return ChooseService(qEnvironmentVariable("PIXELGROVE_SERVICE_URL"),
                         qEnvironmentVariable("PIXELGROVE_API_KEY"));
}

QString ShaderUrl(const ServiceAddress& service, const QString& id) {
    return At(service, QLatin1String("/api/v1/shaders/"),
              Encoded(id, kComponentMarks) + ShaderQueryEnd(service));
}

QString SearchUrl(const ServiceAddress& service, const QString& text) {
    return At(service, QLatin1String("/api/v1/shaders/query/"),
              Encoded(SearchQuery(service, text), kAddressMarks));
}

QString MediumUrl(const ServiceAddress& service, const QString& fileName) {
    return At(service, QLatin1String("/media/a/"), Encoded(fileName, kComponentMarks));
}

QString ShaderPageUrl(const ServiceAddress& service, const QString& id) {
    return At(service, QLatin1String("/view/"), Encoded(id, kComponentMarks));
}

QString UserPageUrl(const ServiceAddress& service, const QString& userName) {
    return At(service, QLatin1String("/user/"), Encoded(userName, kComponentMarks));
}

QString SearchQuery(const ServiceAddress& service, const QString& text) {
    QString query = text;
    return query.replace(u' ', u'+') + QStringLiteral("&key=") + service.key;
}

}  // namespace pixelgrove
