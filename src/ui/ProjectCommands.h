// ProjectCommands: New, open and save of projects and of single source files, recent and dropped files, and
// the question that guards unsaved changes.
//
// Failures are told in the message pane, never by a message box. What can't be done leaves everything as it
// was. Main thread; owned by the main window.
#pragma once

#include <QStringList>
#include <functional>
#include <optional>

#include "core/AppState.h"
#include "library/ServiceAddress.h"
#include "library/ShaderService.h"
#include "windows/widgets/UserDialogs.h"

namespace pixelgrove {

class BackgroundFetch;
class MessagePane;

// What the message pane says of a project that was loaded or not.
struct LoadWords {
    QString done = QStringLiteral("Project loaded.");
    QString failed = QStringLiteral("Error loading project.");
};

class ProjectCommands {
  public:
    // What is handed in by reference outlives this object.
    ProjectCommands(AppState& app, MessagePane& pane, UserDialogs userDialogs)
        : dialogs(std::move(userDialogs)), app_(app), pane_(pane) {}

    // Without unsaved changes true at once; otherwise asks, and only Yes gives true.
    bool ConfirmLoss();

    // The default Image stage alone, untitled. Doesn't ask.
    void New();
    // Brings back the project that the last replacement of a modified one threw away; nothing without one.
    void RestorePrevious();
    // Asks for a project file, loads it, and puts it on the list of recent projects.
    void OpenProject();
    // Writes what is edited, whatever runs, to the project's own file; asks for one while it has none.
    void SaveProject();
    // Asks for a path and writes there; the file is the project's own from then on.
    void SaveProjectAs();

    // Loads a project file, or the shader of that id where there is no such file, into the editing form and
    // says so in the message pane; shaders and missing media come from the service, cache first. When there
    // is nothing to load the pane says why, the project stays as it was, and the result is false. What of it
    // can't be had is told line by line there and on stderr. The file is the project's own then, but for one
    // that holds more than was read of it, or has another form. Of several shaders in a file the user
    // chooses.
    //
    // While something is fetched windows live on and input waits. Nothing else is loaded meanwhile: false at
    // once.
    bool Load(const QString& idOrPath, const LoadWords& words = {});
    // The shader of that id, with ConfirmLoss.
    void DropShader(const QString& id);
    // What the text holds, with ConfirmLoss: a project or several in any form, GLSL, or the address or id of
    // a shader. The project has no file of its own then. The pane says what was taken, also that it was
    // nothing. whence is "clipboard" or the like.
    void TakeText(const QString& text, const QString& whence);
    bool IsLoading() const { return fetch_ != nullptr; }
    // Ends the fetch under way, and with it the load. Nothing without one.
    void StopLoading();

    // Loads a source file into the shown stage under its own name and says so in the message pane. False when
    // it can't be read, and then nothing changed.
    bool LoadSource(const QString& path);
    // The same under the name that the project has.
    bool LoadSourceAgain(const QString& path);
    // Asks for a source file and puts it into the shown stage.
    void OpenFile();
    // Asks for a path and writes the shown text there; the project stays unsaved, as the file is only a copy.
    void SaveFileAs();
    // Entry `index` of the list, newest first; nothing for an entry that isn't there.
    void OpenRecentFile(int index);
    void OpenRecentProject(int index);
    // Loads the first: as a project when ".json" stands anywhere in its path, else as a source file. Nothing
    // for an empty list.
    void DropFiles(const QStringList& paths);

    UserDialogs dialogs;
    const ServiceAddress service = ServiceOfEnvironment();
    // The place of the chosen shader of several; nothing when none was. Without it none is.
    std::function<std::optional<size_t>(const FoundShaders& found)> chooseShader;
    // Told that a load begins and that it has ended, and in between how far a fetch is. May be empty.
    std::function<void(bool isLoading)> loading;
    std::function<void(const QString& text)> fetchProgress;
    // Told that EditingForm::openFile was read or written. May be empty.
    std::function<void()> openFileTouched;

  private:
    void Save(const QString& path);
    // Puts the file's bytes, as text of the code page, into the shown stage, and the path on the list of
    // recent files. Counts as a change. False when the file can't be read, and then nothing changed.
    bool LoadSourceFile(const QString& path);
    enum class Taken { Nothing, Project, OneOfMany };
    using Reading = std::function<ProjectFileResult(const ShaderService& service, ShaderProject& project)>;

    Taken LoadFrom(const QString& idOrPath, const LoadWords& words);
    // The shader, or the one that the user chooses. whence says where they come from, as `file "x.json"`.
    Taken TakeFound(const FoundShaders& found, const QString& whence, const QString& folder);
    // Runs a load that may fetch.
    ProjectFileResult Read(const Reading& reading, ShaderProject& project);
    // Says how a load ended, and takes the project up under that name, if there is one; empty means the
    // project's own.
    bool Adopt(const ProjectFileResult& result, ShaderProject& project, const QStringList& words,
               const QString& name);
    QString LostCharactersOfProject(bool isSaved) const;
    void NoteOpenFile(const QString& path, uint32_t stage);

    AppState& app_;
    MessagePane& pane_;
    BackgroundFetch* fetch_ = nullptr;  // of the load under way
};

}  // namespace pixelgrove
