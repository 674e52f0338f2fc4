// The project of pixelgrove-render's command line: loaded, its controls and uniforms set, its sources
// printed.
//
// Each function gives an ExitCode, and has said why where it isn't kExitDone. The program's one thread.
#pragma once

#include <QString>
#include <utility>
#include <vector>

#include "app/RenderOptions.h"
#include "core/ControlSet.h"
#include "core/EditingForm.h"
#include "render/ProjectCompiler.h"
#include "render/RenderContext.h"
#include "render/RenderThread.h"

namespace pixelgrove {

using NamedTexts = std::vector<std::pair<QString, QString>>;

// The project that the options name, one of several shaders in a file by what they pick.
int LoadIntoEditingForm(EditingForm& form, const RenderOptions& options);

// The Image stage's controls, as the tree of the workbench has them.
void ScanControls(const StageDocument& image, const RenderOptions& options, ControlSet& controls);

// Gives each --set that names a live control to its record. The others go to `others`.
int SetControls(const RenderOptions& options, ControlSet& controls, NamedTexts& others);

// A stage before Image with other controls in its records threw away what was set there; its own bake is
// over by then.
void BakeImageAnew(const StageDocument& image, const RenderOptions& options, ControlSet& controls,
                   RunRequest& request);

// Turns a --set of what is no control into a value of the type that the compiled programs declare.
int SetUniform(const QString& name, const QString& text, RenderContext& context);

// The whole text that the stage's compiler gets, to stdout.
int PrintSource(RenderContext& context, uint32_t stage);

// The messages of a compile that failed. kExitCompileFailed.
int ReportCompileFailure(RenderRun& run, const CompileOutcome& outcome, const RenderOptions& options);

}  // namespace pixelgrove
