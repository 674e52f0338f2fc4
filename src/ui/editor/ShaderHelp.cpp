#include "ui/editor/ShaderHelp.h"

#include <QByteArray>
#include <QString>
#include <iterator>

#include "commands/Commands.h"

namespace pixelgrove {

namespace {

constexpr qsizetype kMaxHelpSelection = 125;

// From kCmdSiteFirst on.
constexpr const char* kSites[] = {"https://thebookofshaders.com", "https://glslsandbox.com",
                                  "https://www.shadertoy.com", "https://www.oneshader.net"};
static_assert(std::size(kSites) == kCmdSiteLast - kCmdSiteFirst + 1);

}  // namespace

QUrl SiteUrl(int commandId) {
    if (commandId < kCmdSiteFirst || commandId > kCmdSiteLast) return {};
    return QUrl(QString::fromLatin1(kSites[commandId - kCmdSiteFirst]));
}

std::optional<QUrl> ShaderHelpUrl(const QString& selection) {
    if (selection.size() > kMaxHelpSelection) return std::nullopt;
    if (selection.isEmpty()) return SiteUrl(kCmdSiteFirst);
    return QUrl::fromEncoded(QByteArray(kSites[0]) +
                             "/glossary/?search=" + QUrl::toPercentEncoding(selection));
}

}  // namespace pixelgrove
