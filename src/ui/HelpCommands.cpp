#include "ui/HelpCommands.h"

#include <QCoreApplication>
#include <memory>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "ui/MainWindow.h"
#include "ui/about/AboutBox.h"
#include "ui/editor/ShaderHelp.h"
#include "update/UpdateCheck.h"
#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

namespace {

AboutSources SourcesOfThisProgram(const UserDialogs& dialogs) {
    return {.documents = HelpFolder(),
            .updateAddress = UpdateAddress(),
            .buildStamp = QCoreApplication::applicationVersion(),
            .properties = {},
            .sites = {{{SitePicture::Book, u"The Book of Shaders", SiteUrl(kCmdSiteBookOfShaders)},
                       {SitePicture::Glossary, u"GLSL glossary", GlossaryUrl()},
                       {SitePicture::Sandbox, u"GLSL Sandbox", SiteUrl(kCmdSiteGlslSandbox)},
                       {SitePicture::Player, u"Shadertoy", SiteUrl(kCmdSiteShadertoy)},
                       {SitePicture::One, u"OneShader", SiteUrl(kCmdSiteOneShader)}}},
            .openUrl = dialogs.openUrl};
}

}  // namespace

void RegisterHelpCommands(CommandRegistry& commands, MainWindow& mainWindow, const UserDialogs& dialogs) {
    const auto box = std::make_shared<QPointer<AboutBox>>();
    for (const auto& [id, page] : {std::pair(kCmdHelp, AboutPage::Help),
                                   {kCmdLicense, AboutPage::License},
                                   {kCmdAbout, AboutPage::About}})
        commands.Add(id, [box, &mainWindow, &dialogs, page = page] {
            ShowAboutBox(mainWindow, SourcesOfThisProgram(dialogs), *box, page);
        });
}

}  // namespace pixelgrove
