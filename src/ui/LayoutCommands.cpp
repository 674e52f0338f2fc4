#include "ui/LayoutCommands.h"

#include <QDir>
#include <QFileInfo>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "platform/Files.h"
#include "ui/MessagePane.h"
#include "windows/widgets/WindowRegistry.h"
#include "windows/widgets/WindowTable.h"

namespace pixelgrove {

namespace {

QString LayoutFolder() {
    return NormalizePath(PathOf(PathId::Layouts));
}

FileQuestion LayoutQuestion(const QString& caption) {
    FileQuestion question;
    question.caption = caption;
    question.folder = LayoutFolder();
    question.filters = {QStringLiteral("Window Layouts (*.STL *.stl)"), QStringLiteral("All Files (*)")};
    return question;
}

}  // namespace

void LayoutCommands::Apply() {
    windows_.ApplyLayout(openLater_);
}

void LayoutCommands::OpenMissing() {
    windows_.OpenMissing();
}

void LayoutCommands::Load() {
    const QString path = dialogs_.askForFile(LayoutQuestion(QStringLiteral("Load Layout")));
    if (!path.isEmpty()) LoadFile(path);
}

void LayoutCommands::Save() {
    FileQuestion question = LayoutQuestion(QStringLiteral("Save Layout"));
    question.defaultSuffix = QStringLiteral("STL");
    question.forSaving = true;
    const QString path = dialogs_.askForFile(question);
    if (path.isEmpty()) return;
    const bool saved = Windows().SaveLayoutFile(path);
    pane_.Say(saved ? QStringLiteral("File saved.") : QStringLiteral("Error saving file."));
}

void LayoutCommands::LoadNamed(const QString& name) {
    // The entry's text is a plain file name; the file's ending may be spelt in either case.
    for (const char16_t* ending : {u".STL", u".stl"}) {
        const QString path = LayoutFolder() + u'/' + name + QString::fromUtf16(ending);
        if (!IsPlainFile(path)) continue;
        LoadFile(path);
        return;
    }
    pane_.Say(QStringLiteral("Error loading file."));
}

void LayoutCommands::LoadFile(const QString& path) {
    if (Windows().LoadLayoutFile(path))
        Apply();
    else
        pane_.Say(QStringLiteral("Error loading file."));
}

QStringList LayoutCommands::Names() const {
    QStringList names;
    const QDir folder(LayoutFolder());
    for (const QFileInfo& file :
         folder.entryInfoList({QStringLiteral("*.STL")}, QDir::Files, QDir::Name | QDir::IgnoreCase)) {
        if (names.size() > kCmdLayoutLast - kCmdLayoutFirst) break;
        names.append(file.completeBaseName());
    }
    return names;
}

void RegisterLayoutCommands(CommandRegistry& commands, AppState& app, LayoutCommands& layouts,
                            std::function<QString(int commandId)> nameOf,
                            std::function<void()> namesChanged) {
    commands.Add(kCmdOpenWindows, [&layouts] { layouts.OpenMissing(); });
    commands.Add(kCmdLoadLayout, [&layouts] { layouts.Load(); });
    commands.Add(kCmdSaveLayout, [&layouts, namesChanged = std::move(namesChanged)] {
        layouts.Save();
        namesChanged();
    });
    commands.Add({.first = kCmdLayoutFirst,
                  .last = kCmdLayoutLast,
                  .run = [&layouts, nameOf = std::move(nameOf)](int id) {
                      const QString name = nameOf(id);
                      if (!name.isEmpty()) layouts.LoadNamed(name);
                  }});
    commands.AddToggle(
        kCmdLockWindows, [] { Windows().SetLockWindows(!Windows().LockWindows()); },
        [] { return Windows().LockWindows(); });
    commands.AddToggle(
        kCmdSnapToEdges,
        [&app] {
            app.display.snapToEdges = app.display.snapToEdges ? 0 : 1;
            Windows().SetSnapping(app.display.snapToEdges != 0);
        },
        [&app] { return app.display.snapToEdges != 0; });
}

}  // namespace pixelgrove
