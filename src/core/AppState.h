// AppState: the first global record. What is edited (documents, channels), what is asked of the run
// (rate, pause, stop), and what the run reports.
//
// Allocated at the very start, freed last, never moved; reached through App(). The main thread owns every
// plain field. Fields that the render thread touches are atomic; each names its one writer.
#pragma once

#include <QString>
#include <array>
#include <atomic>
#include <memory>
#include <vector>

#include "core/ControlSet.h"
#include "core/Host.h"
#include "core/IncludeContext.h"
#include "core/ShaderProject.h"
#include "core/Stages.h"
#include "core/StringList.h"
#include "media/PaletteBlock.h"

class QWidget;

namespace pixelgrove {

struct RenderContext;
struct RenderRun;
class OutputSurface;
class SharedMemory;

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

// What a file holds of the editing form, as it was when it was loaded or saved.
struct SavedProject {
    std::array<QString, kStageCount> texts;
    std::array<bool, kStageCount> hasText{};
    StageChannels channels;
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

// The rates that fpsTarget may have.
constexpr uint32_t kMinFps = 10;
constexpr uint32_t kMaxFps = 240;

struct AppState {
    QWidget* mainWindow = nullptr;
    QWidget* outputWindow = nullptr;  // as created from the menu, null when closed
    QWidget* browserWindow = nullptr;
    QWidget* audioConfigWindow = nullptr;
    uint32_t alwaysOnTop = 0;
    // The render target: what the output window last registered. Null until one was opened, stays after a
    // close. A run holds its own reference.
    std::shared_ptr<OutputSurface> outputSurface;
    Host* host = &SilentHost();

    std::atomic<uint32_t> fpsTarget{30};          // main; 10..240
    std::atomic<uint32_t> fpsCurrent{0};          // render thread (and main at Play)
    std::atomic<uint32_t> showChannelBuffers{0};  // main
    std::atomic<uint32_t> paused{0};              // main
    uint32_t snapToEdges = 0;
    std::atomic<uint32_t> useGdiDisplay{0};     // main
    std::atomic<uint32_t> recordingActive{0};   // main; cleared by the render thread at its end
    std::atomic<uint32_t> captureRequested{0};  // main; consumed by the render thread
    std::atomic<uint32_t> recordWidth{1920};    // main
    std::atomic<uint32_t> recordHeight{1080};   // main
    uint32_t recordMethod = 0;
    std::atomic<uint32_t> recordFrameTotal{0};  // main
    std::atomic<uint32_t> recordFrameIndex{0};  // render thread (and main at Play)
    // The context of the current run; set by the render thread through its run's gate, cleared by main.
    std::atomic<RenderContext*> renderContext{nullptr};
    bool openGlOk = false;
    uint32_t multisampleIndex = 0;                          // 0 none, n means 2 to the power n samples
    std::atomic<uint32_t> frameBufferFormat{gl::kRgba32f};  // main; read when targets are made
    std::unique_ptr<IncludeContext> includeContext;
    QString fileName;  // path of the open file or project
    // Where Save Project writes: the file that the project was read from or last saved to. Empty when it has
    // none.
    QString projectFile;
    std::atomic<uint32_t> restartRequested{0};  // main sets, render thread consumes
    std::shared_ptr<RenderRun> renderThread;    // null when no run was started
    std::atomic<uint32_t> compileFailed{0};     // render thread, before it reports
    std::unique_ptr<StringList> recentFiles, recentProjects, recentPalettes, recentPlaylists;

    StageChannels channels;
    std::array<StageDocument, kStageCount> documents;
    StageDocument* currentDocument = nullptr;
    std::array<QString, kStageCount> stageErrors;
    uint32_t currentStage = 0;  // StageId in the editor
    float startTime = 0.1f;     // value of the Start box
    // What the project file said of itself: kept so that saving gives it back.
    ShaderInfo projectInfo;
    float projectVersion = 0.1f;
    SavedProject saved;
    std::array<bool, kStageCount> stageDiffers{};  // from saved
    bool changesDiscarded = false;  // by New, which leaves the mark of them standing until a save or a load
    std::unique_ptr<EditedProject> previousProject;  // gave way to another with changes that no file has

    PaletteTable palette;
    std::unique_ptr<SharedMemory> sharedPalette;

    AppState();
    ~AppState();
};

// Texts or channels differ from what was loaded or saved, or such changes were discarded by New. Kept by
// OnStageChanged and what replaces or saves the project. Main thread.
extern bool shaderModified;

// The record made at start-up. Main thread for plain fields. Null before AllocateGlobals and after
// FreeGlobals.
AppState* App();

// Makes both records; false when there is no memory for one (neither is kept then).
bool AllocateGlobals();
// Frees both, AppState first. Only with no run alive.
void FreeGlobals();
// From now on FreeGlobals clears the accessors but leaves the memory: a render thread that hangs in the
// driver may still look at it.
void PinGlobals();

}  // namespace pixelgrove
