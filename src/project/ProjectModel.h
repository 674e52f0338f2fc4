// The editing form of a project: eight documents and eight times four channels in AppState.
//
// All functions belong to the main thread and need AppState. What is to be shown anew they tell its observer
// (project/ProjectObserver.h).
#pragma once

#include <QString>

#include "core/AppState.h"
#include "core/ShaderProject.h"

namespace pixelgrove {

// Frees text, comment map and error lines of all eight documents; the records are cleared.
void FreeDocuments();

// Empties the editing form: documents, channels, error texts, exists flags (the "+" and Image rows stay
// set), the project's own file. With addImage the default Image stage follows, untitled, and is shown.
// shaderModified stays as it was. Keeps what it empties, as KeepPreviousProject does.
void ClearProject(bool addImage);

// Gives stage id its default text; only for 1..7. The channels stay.
void AddStage(uint32_t id);

// Puts stage id into the editor, unless it is there already or is above 7.
void SelectStage(uint32_t id);
// Shows the errors of the stage in the editor and marks their lines; of a stage without any it says so, and
// which others have some.
void ShowStageErrors();

// Removes a stage other than 0 and Image (for those nothing happens); falls back to Image when it was shown.
void RemoveStage(uint32_t id);

// The stages that "+" offers: those that don't exist, in StageId order.
std::vector<uint32_t> AddableStages();

// Sets the document's text: line ends become LF, lengths and comment map follow. extraAllocated is added to
// the allocated count.
void SetDocumentText(StageDocument& document, const QString& text, uint32_t extraAllocated = 0);

// The one place that is told of every change by the user to text, existence or channels of a stage, at once:
// compares it with what was loaded or saved, and brings shaderModified and the title up to date. Costs one
// comparison of the stage's text.
void OnStageChanged(uint32_t id);

// What the editing form holds now is what a file holds: nothing differs any more.
void MarkProjectSaved();

// Takes a project that was read into the editing form; bitmaps and volumes pass over. path is where it
// came from; when shorter than 7 characters the file name becomes the project's name plus ".json". The
// project has no file of its own: who read one sets AppState::project::projectFile. Keeps what it replaces,
// as KeepPreviousProject does.
void AdoptProject(ShaderProject& project, const QString& path);

// Makes the path the open file's name, and its last part alone when the path is too long. The title follows.
void SetOpenFileName(const QString& path);

// Puts a text in the place of the shown stage's, caret and view at the top, its error marks cleared. Counts
// as a change; keeps what it replaces, as KeepPreviousProject does. Only while a stage is shown.
void ReplaceShownText(const QString& text);

// What is edited now. The shown stage's view is the editor's, and not in it.
EditedProject CopyOfProject();

// Before texts or channels are replaced as a whole: keeps a copy of the project for RestorePreviousProject
// when something differs from what was loaded or saved; otherwise an older copy stays.
void KeepPreviousProject();
// Brings the kept project back, with its names, its file, and what it differed in. The project that gives way
// is kept in its place by the same rule. False when none is kept.
bool RestorePreviousProject();

}  // namespace pixelgrove
