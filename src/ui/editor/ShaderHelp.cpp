#include "ui/editor/ShaderHelp.h"

#include <QByteArray>
#include <QString>
#include <iterator>

#include "commands/Commands.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxHelpSelection = 125;

// From kCmdSiteBookOfShaders on.
constexpr const char* kSites[] = {"https://thebookofshaders.com", "https://glslsandbox.com",
                                  "https://www.shadertoy.com", "https://www.oneshader.net"};
static_assert(std::size(kSites) == kCmdSiteOneShader - kCmdSiteBookOfShaders + 1);

}  // namespace

QUrl SiteUrl(int commandId) {
    if (commandId < kCmdSiteBookOfShaders || commandId > kCmdSiteOneShader) return {};
    return QUrl(QString::fromLatin1(kSites[commandId - kCmdSiteBookOfShaders]));
}

QUrl GlossaryUrl() {
    return QUrl(QLatin1String(kSites[0]) + QStringLiteral("/glossary/"));
}

std::optional<QUrl> ShaderHelpUrl(const QString& selection) {
    if (selection.size() > kMaxHelpSelection) return std::nullopt;
    if (selection.isEmpty()) return SiteUrl(kCmdSiteBookOfShaders);
    return QUrl::fromEncoded(GlossaryUrl().toEncoded() + "?search=" + QUrl::toPercentEncoding(selection));
}

}  // namespace pixelgrove
