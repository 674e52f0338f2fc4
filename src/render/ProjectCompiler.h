// Turns the running form of a project into GL programs, and GL's logs into messages in terms of the user's
// files and lines.
//
// Render thread, with the context current.
#pragma once

#include <QByteArray>
#include <QString>
#include <array>
#include <functional>
#include <optional>

#include "controls/BakedText.h"
#include "core/CompileMessage.h"
#include "render/RenderContext.h"

namespace pixelgrove {

enum class CompileResult { Good, Failed, Stopped };

struct CompileOutcome {
    CompileResult result = CompileResult::Good;
    uint32_t failedStage = kStageNone;
    // What failed when there is no log to show for it: a plain sentence, else empty.
    QString failure;
};

// What a failed compile shows, per stage.
using StageErrorArray = std::array<CompileMessages, kStageCount>;

// OneByOne asks the driver what came of a stage before it gets the next one. AllAtOnce hands over all stages
// first, for drivers that compile them beside each other; what is reported is the same.
enum class CompileOrder { OneByOne, AllAtOnce };

// AllAtOnce where the driver says that it compiles in parallel.
CompileOrder OrderOfDriver();

// Compiles and links every stage in order, makes targets and uploads channels; stops at the first failure:
// the outcome says why, and a compiler's log stays in the stage. shouldStop is asked between stages, as a
// compiler may take long over each, and while it waits for one of several in work; may be empty. The order is
// the driver's where none is given.
CompileOutcome CompileProject(RenderContext& context, const std::function<bool()>& shouldStop = {},
                              std::optional<CompileOrder> order = std::nullopt);

// Asks the driver for its version and sets the version line: major times 10 plus minor, times 10.
void SetVersionLine(RenderContext& context);

// Gives the first free channel of a stage the stage itself as its source: shaders read their own last frame
// there without being told.
void SetSelfReference(RenderContext& context, uint32_t stage);

// Maps the logs of all stages; to be called once after CompileProject failed. Lines that name Common are
// under kStageCommon.
StageErrorArray MapStageErrors(RenderContext& context);

struct FailureReport {
    StageErrorArray errors;
    CompileMessages failure;  // the sentence of CompileOutcome::failure; empty when there is a log
};

// What a failed compile tells the user: the mapped logs, or the failure's sentence, with one line more where
// a control's value stands in the stage that doesn't compile. To be called once.
FailureReport ReportOf(RenderContext& context, const CompileOutcome& outcome, const BakedStages& baked);

}  // namespace pixelgrove
