// The editing form of a project: the texts and channels that the user edits, and what is known of the file
// they came from. Main thread.
#pragma once

#include <QString>
#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "core/CompileMessage.h"
#include "core/IncludeContext.h"
#include "core/ShaderProject.h"
#include "core/Stages.h"

namespace pixelgrove {

class ProjectObserver;

// Marks a line of a stage's text as holding an error.
struct ErrorLineList {
    std::vector<int32_t> lines;        // from 1
    uint32_t markerColour = 0x8080ff;  // blue-green-red order: red 255, green 128, blue 128
};

// The editing form of a stage's text. Line ends are LF.
struct StageDocument {
    uint32_t length = 0;     // code units of text
    uint32_t allocated = 0;  // code units set aside; length plus one for a document read from a project
    QString text;
    bool hasText = false;             // false when the stage doesn't exist
    std::vector<uint8_t> commentMap;  // one class byte per code unit: 0 code, 1 line comment, 2 block comment
    ErrorLineList errorLines;
    // The editor's saved view, while viewSaved.
    bool viewSaved = false;
    int caretPosition = 0;
    int anchorPosition = 0;
    int firstVisibleLine = 0;
    int horizontalScroll = 0;  // in pixels
    int zoomPercent = 100;
};

// What becomes of the view of the stage that is left when another text is shown.
enum class StageSwitch {
    KeepsView,  // it is saved in its document
    DropsView,  // it goes, as its stage does
    Anew,       // the old text gave way to another: its view goes, and the new text is shown from its top
};

// What a file holds of the editing form, as it was when it was loaded or saved.
struct SavedProject {
    std::array<QString, kStageCount> texts;
    std::array<bool, kStageCount> hasText{};
    StageChannels channels;
};

// The file that what is edited was read from, or written to, last.
struct OpenedFile {
    QString path;                 // absolute; empty for none
    uint32_t stage = kStageNone;  // whose text it holds, or none for the whole project
    QString text;                 // that text as it came from the file
};

// The whole editing form as a value.
struct EditedProject {
    std::array<StageDocument, kStageCount> documents;
    StageChannels channels;
    ShaderInfo info;
    float version = 0.0f;
    QString fileName;
    QString projectFile;
    uint32_t shownStage = 0;
    SavedProject saved;
    bool changesDiscarded = false;
};

struct EditingForm {
    ProjectObserver* observer = nullptr;  // told of what is to be shown anew; null without windows

    StageChannels channels;
    std::array<StageDocument, kStageCount> documents;
    StageDocument* currentDocument = nullptr;
    uint32_t currentStage = 0;  // StageId in the editor
    std::array<CompileMessages, kStageCount> stageErrors;
    float startTime = 0.1f;  // value of the Start box
    std::unique_ptr<IncludeContext> includeContext;

    QString fileName;  // path of the open file or project
    // Where Save Project writes: the file that the project was read from or last saved to. Empty when it has
    // none.
    QString projectFile;
    OpenedFile openFile;
    // What the project file said of itself: kept so that saving gives it back.
    ShaderInfo projectInfo;
    float projectVersion = 0.1f;

    // Texts or channels differ from what was loaded or saved, or such changes were discarded by New. Kept by
    // OnStageChanged and what replaces or saves the project.
    bool shaderModified = false;
    SavedProject saved;
    std::array<bool, kStageCount> stageDiffers{};  // from saved
    bool changesDiscarded = false;  // by New, which leaves the mark of them standing until a save or a load
    std::unique_ptr<EditedProject> previousProject;  // gave way to another with changes that no file has
};

}  // namespace pixelgrove
