// What is done to the editing form of a project, its eight documents and eight times four channels.
//
// All functions belong to the main thread. What is to be shown anew they tell the form's observer
// (project/ProjectObserver.h). Which stages exist stands in stageTabs, so there is one live form at a time.
#pragma once

#include <QString>
#include <cstdint>
#include <vector>

#include "core/EditingForm.h"
#include "core/ShaderProject.h"

namespace pixelgrove {

// Frees text, comment map and error lines of all eight documents; the records are cleared.
void FreeDocuments(EditingForm& form);

// Empties the editing form: documents, channels, error texts, exists flags (the "+" and Image rows stay
// set), the project's own file. With addImage the default Image stage follows, untitled, and is shown.
// shaderModified stays as it was. Keeps what it empties, as KeepPreviousProject does.
void ClearProject(EditingForm& form, bool addImage);

// Gives stage id its default text; only for 1..7. The channels stay.
void AddStage(EditingForm& form, uint32_t id);

// Puts stage id into the editor, unless it is there already or is above 7.
void SelectStage(EditingForm& form, uint32_t id);
// Shows the errors of the stage in the editor and marks their lines; of a stage without any it says so, and
// which others have some.
void ShowStageErrors(const EditingForm& form);

// Removes a stage other than 0 and Image (for those nothing happens); falls back to Image when it was shown.
void RemoveStage(EditingForm& form, uint32_t id);

// The stages that "+" offers: those that don't exist, in StageId order.
std::vector<uint32_t> AddableStages();

// Sets the document's text: line ends become LF, lengths and comment map follow. extraAllocated is added to
// the allocated count.
void SetDocumentText(StageDocument& document, const QString& text, uint32_t extraAllocated = 0);

// The one place that is told of every change by the user to text, existence or channels of a stage, at once:
// compares it with what was loaded or saved, and brings shaderModified and the title up to date. Costs one
// comparison of the stage's text.
void OnStageChanged(EditingForm& form, uint32_t id);

// What the editing form holds now is what a file holds: nothing differs any more.
void MarkProjectSaved(EditingForm& form);

// Takes a project that was read into the editing form; bitmaps and volumes pass over. path is where it
// came from; when shorter than 7 characters the file name becomes the project's name plus ".json". The
// project has no file of its own: who read one sets EditingForm::projectFile. Keeps what it replaces,
// as KeepPreviousProject does.
void AdoptProject(EditingForm& form, ShaderProject& project, const QString& path);

// Makes the path the open file's name, and its last part alone when the path is too long. The title follows.
void SetOpenFileName(EditingForm& form, const QString& path);

// Puts a text in the place of the shown stage's, caret and view at the top, its error marks cleared. Counts
// as a change; keeps what it replaces, as KeepPreviousProject does. Only while a stage is shown.
void ReplaceShownText(EditingForm& form, const QString& text);

// What is edited now. The shown stage's view is the editor's, and not in it.
EditedProject CopyOfProject(const EditingForm& form);

// Before texts or channels are replaced as a whole: keeps a copy of the project for RestorePreviousProject
// when something differs from what was loaded or saved; otherwise an older copy stays.
void KeepPreviousProject(EditingForm& form);
// Brings the kept project back, with its names, its file, and what it differed in. The project that gives way
// is kept in its place by the same rule. False when none is kept.
bool RestorePreviousProject(EditingForm& form);

}  // namespace pixelgrove
