// The web pages that commands open: shader sites, and the glossary for a selected word. Pure; any thread.
#pragma once

#include <QUrl>
#include <optional>

namespace pixelgrove {

// The root of the site that the command from kCmdSiteBookOfShaders to kCmdSiteOneShader stands for; empty for
// others.
QUrl SiteUrl(int commandId);

// The glossary of GLSL's words.
QUrl GlossaryUrl();

// The glossary's page about the selected text, the glossary's site for no text, and nothing for a selection
// of more than 125 code units.
std::optional<QUrl> ShaderHelpUrl(const QString& selection);

}  // namespace pixelgrove
