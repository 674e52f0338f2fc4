#include "render/ProjectCompiler.h"

#include <GL/glew.h>

#include <deque>
#include <memory>
#include <utility>
#include <vector>

#include "controls/BakedNote.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "render/ChannelTextures.h"
#include "render/GlSetup.h"
#include "render/KeptTargets.h"
#include "render/LiveTextures.h"
#include "render/StageTargets.h"
#include "render/source/LogMapping.h"
#include "render/source/OuterLines.h"
#include "render/source/SourceAssembly.h"

namespace pixelgrove {

namespace {

constexpr const char* kVertexText = R"(#version 330 core
layout(location = 0) in vec2 position;
layout(location = 1) in vec2 inTexCoord;

out vec2 texCoord;
void main() {
    texCoord = inTexCoord;
    gl_Position = vec4(position.x, position.y, 0.0f, 1.0f);
}
)";

class ShaderObject {
  public:
    explicit ShaderObject(GLenum type) : name_(glCreateShader(type)) {}
    ~ShaderObject() { glDeleteShader(name_); }
    ShaderObject(const ShaderObject&) = delete;
    ShaderObject& operator=(const ShaderObject&) = delete;

    void Compile(const char* text) {
        glShaderSource(name_, 1, &text, nullptr);
        glCompileShader(name_);
    }
    // Waits for the compiler.
    bool IsGood() const {
        GLint status = 0;
        glGetShaderiv(name_, GL_COMPILE_STATUS, &status);
        return status == 1;
    }
    GLuint Name() const { return name_; }

  private:
    GLuint name_;
};

void CaptureInfoLog(GLuint shader, ShaderStage& stage) {
    GLint length = 0;
    glGetShaderiv(shader, GL_INFO_LOG_LENGTH, &length);
    if (length <= 0) return;
    QByteArray log(length, '\0');
    GLsizei written = 0;
    glGetShaderInfoLog(shader, length, &written, log.data());
    log.truncate(written);
    stage.log = log;
}

// A stage's program between the moment in which the driver gets its texts and the one in which it is asked
// what came of them.
class ProgramInWork {
  public:
    explicit ProgramInWork(const QByteArray& fragmentText) : program_(glCreateProgram()) {
        vertex_.Compile(kVertexText);
        fragment_.Compile(fragmentText.constData());
        glAttachShader(program_, vertex_.Name());
        glAttachShader(program_, fragment_.Name());
        glLinkProgram(program_);
    }
    ~ProgramInWork() { glDeleteProgram(program_); }
    ProgramInWork(const ProgramInWork&) = delete;
    ProgramInWork& operator=(const ProgramInWork&) = delete;

    // Doesn't wait. True of drivers that don't know the question.
    bool IsDone() const {
        GLint done = 1;
        glGetProgramiv(program_, GL_COMPLETION_STATUS_KHR, &done);
        return done != 0;
    }
    // The program, which is the caller's then, or 0. Waits for the driver. A link failure leaves no log:
    // linkers give no place in the user's text.
    GLuint Take(ShaderStage& stage, bool& linkFailed) {
        for (const ShaderObject* shader : {&vertex_, &fragment_}) {
            if (shader->IsGood()) continue;
            CaptureInfoLog(shader->Name(), stage);
            return 0;
        }
        GLint status = 0;
        glGetProgramiv(program_, GL_LINK_STATUS, &status);
        linkFailed = status == 0;
        if (linkFailed) return 0;
        glDetachShader(program_, vertex_.Name());
        glDetachShader(program_, fragment_.Name());
        return std::exchange(program_, 0);
    }

  private:
    GLuint program_;
    ShaderObject vertex_{GL_VERTEX_SHADER};
    ShaderObject fragment_{GL_FRAGMENT_SHADER};
};

// Nothing where the text couldn't be put together.
struct StageInWork {
    std::unique_ptr<ProgramInWork> program;
    QString failure;
};

void Fail(CompileOutcome& outcome, uint32_t stage, const QString& failure) {
    outcome.result = CompileResult::Failed;
    outcome.failedStage = stage;
    outcome.failure = failure;
}

// Pixels of the first frame see the middle of the window until the mouse state replaces it.
void SetInitialMouse(RenderContext& context) {
    const float x = float(context.clientSize.width) / 2;
    const float y = float(context.clientSize.height) / 2;
    context.mouse = {x, y, -x, -y};
}

bool PrepareChannels(RenderContext& context, uint32_t stageId, CompileOutcome& outcome) {
    for (uint32_t i = 0; i < kChannelCount; ++i) {
        const ChannelInput& channel = context.project.stages[stageId].channels[i];
        switch (channel.kind) {
            case kChannelTexture:
            case kChannelCubemap:
            case kChannelVolume:
                if (!UploadChannelTexture(context, stageId, i)) {
                    Fail(outcome, stageId, UnusableMedium(stageId, i, channel));
                    return false;
                }
                break;
            case kChannelKeyboard:
            case kChannelWebcam:
            case kChannelAudio:
                CreateLiveTexture(context, channel.kind);
                break;
            default:
                break;
        }
    }
    return true;
}

StageInWork BeginStage(RenderContext& context, uint32_t stageId) {
    SetSelfReference(context, stageId);
    const std::optional<QByteArray> text =
        AssembleStageSource(context.project, context.includeContext, stageId, context.versionLine);
    if (!text) return {nullptr, context.includeContext.failure};
    return {std::make_unique<ProgramInWork>(*text), {}};
}

// On failure outcome says why, and a compiler's log stays in the stage.
bool FinishStage(RenderContext& context, uint32_t stageId, const StageInWork& work, CompileOutcome& outcome) {
    if (!work.program) {
        Fail(outcome, stageId, work.failure);
        return false;
    }
    ShaderStage& stage = context.project.stages[stageId];
    bool linkFailed = false;
    stage.program = work.program->Take(stage, linkFailed);
    if (stage.program == 0) {
        Fail(outcome, stageId,
             linkFailed ? QStringLiteral("%1: linking failed.").arg(StageName(stageId)) : QString());
        return false;
    }
    const SurfaceSize size = context.renderSize;
    if (!HasKeptPicture(context, stageId) && !CreateStageTargets(context, stage, size.width, size.height)) {
        Fail(outcome, stageId,
             QStringLiteral("%1: the graphics driver has no room for pictures of %2 by %3 pixels.")
                 .arg(StageName(stageId))
                 .arg(size.width)
                 .arg(size.height));
        return false;
    }
    SetInitialMouse(context);
    return true;
}

std::vector<uint32_t> StagesToCompile(const RenderContext& context) {
    std::vector<uint32_t> ids;
    for (uint32_t id = 0; id < kStageCount; ++id)
        if (IsRenderedStage(context.project.stages[id].kind)) ids.push_back(id);
    return ids;
}

// No more threads than there are programs: the rest of the machine has other work.
void AllowThreads(size_t count) {
    if (glMaxShaderCompilerThreadsKHR)
        glMaxShaderCompilerThreadsKHR(GLuint(count));
    else if (glMaxShaderCompilerThreadsARB)
        glMaxShaderCompilerThreadsARB(GLuint(count));
}

}  // namespace

CompileOrder OrderOfDriver() {
    const bool isParallel = GLEW_KHR_parallel_shader_compile || GLEW_ARB_parallel_shader_compile;
    return isParallel ? CompileOrder::AllAtOnce : CompileOrder::OneByOne;
}

void SetVersionLine(RenderContext& context) {
    GLint major = 0;
    GLint minor = 0;
    glGetIntegerv(GL_MAJOR_VERSION, &major);
    glGetIntegerv(GL_MINOR_VERSION, &minor);
    context.versionLine = "#version " + QByteArray::number((major * 10 + minor) * 10);
}

void SetSelfReference(RenderContext& context, uint32_t stage) {
    auto& channels = context.project.stages[stage].channels;
    for (uint32_t i = 0; i < kChannelCount; ++i) {
        if (channels[i].kind != kChannelUnused) continue;
        ChannelInput self;
        self.kind = kChannelBuffer;
        self.sourceStage = int32_t(stage);
        self.wrap = gl::kMirroredRepeat;
        self.filter = gl::kLinear;
        self.samplerCountdown = 2;
        SetChannel(context, stage, i, self);
        return;
    }
}

CompileOutcome CompileProject(RenderContext& context, const std::function<bool()>& shouldStop,
                              std::optional<CompileOrder> order) {
    CompileOutcome outcome;
    SetVersionLine(context);
    context.runStartMs = TickCountMs();
    context.frameCounter = -1;
    const std::vector<uint32_t> ids = StagesToCompile(context);
    std::deque<StageInWork> work;
    const auto begin = [&](uint32_t id) { work.push_back(BeginStage(context, id)); };
    const auto isStopped = [&] {
        if (!shouldStop || !shouldStop()) return false;
        outcome.result = CompileResult::Stopped;
        return true;
    };
    const bool allAtOnce = order.value_or(OrderOfDriver()) == CompileOrder::AllAtOnce;
    if (allAtOnce) {
        AllowThreads(ids.size());
        for (const uint32_t id : ids) {
            // A driver may also take its time here.
            if (isStopped()) return outcome;
            begin(id);
            // It fails, or one before it does.
            if (!work.back().program) break;
        }
    }
    for (const uint32_t id : ids) {
        if (isStopped()) return outcome;
        if (!allAtOnce) begin(id);
        while (allAtOnce && work.front().program && !work.front().program->IsDone()) {
            SleepMs(1);
            if (isStopped()) return outcome;
        }
        if (!FinishStage(context, id, work.front(), outcome) || !PrepareChannels(context, id, outcome))
            return outcome;
        work.pop_front();
    }
    ShowGLError();
    return outcome;
}

StageErrorArray MapStageErrors(RenderContext& context) {
    StageErrorArray errors;
    for (uint32_t id = kStageBufferA; id <= kStageImage; ++id) {
        const ShaderStage& stage = context.project.stages[id];
        if (stage.log.isEmpty()) continue;
        const std::optional<QByteArray> text =
            AssembleStageSource(context.project, context.includeContext, id, context.versionLine);
        const std::vector<IncludedFile> rows = context.includeContext.includedFiles;
        const QString log = FromCodePage(stage.log);
        QString mapped = MapShaderLog(context.includeContext, log, StageName(id));
        if (mapped.isEmpty()) continue;
        LogColumns columns = text ? ColumnsOf(log, mapped, *text) : LogColumns();
        if (text) mapped = ExplainOuterLines(mapped, log, *text, rows);
        // First, where no message stands before them: a note goes with the one before it.
        QString missing;
        for (const QString& note : context.includeContext.missingFiles)
            missing += note + u'\n';
        StageErrors own = SplitErrors(missing + ExplainUnsetChannels(mapped, StageName(id)));
        PlaceColumns(columns, own.common);
        PlaceColumns(columns, own.stage);
        CompileMessages& common = errors[kStageCommon];
        common.insert(common.end(), own.common.begin(), own.common.end());
        errors[id] = std::move(own.stage);
    }
    return errors;
}

FailureReport ReportOf(RenderContext& context, const CompileOutcome& outcome, const BakedStages& baked) {
    const uint32_t stage = outcome.failedStage;
    FailureReport report{MapStageErrors(context), MessagesOf(outcome.failure)};
    // What comes after the program, targets and media, has nothing to do with the text.
    if (context.project.stages[stage].program != 0) return report;
    CompileMessages& common = report.errors[kStageCommon];
    CompileMessages& own = report.errors[stage].empty() && !common.empty() ? common : report.errors[stage];
    if (const std::optional<CompileMessage> note = BakedNote(stage, baked, report.errors))
        (report.failure.empty() ? own : report.failure).push_back(*note);
    return report;
}

}  // namespace pixelgrove
