#include "render/ProjectCompiler.h"

#include <GL/glew.h>

#include "controls/BakedNote.h"
#include "platform/Clock.h"
#include "platform/CodePage.h"
#include "render/ChannelTextures.h"
#include "render/GlSetup.h"
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

    bool Compile(const char* text) {
        glShaderSource(name_, 1, &text, nullptr);
        glCompileShader(name_);
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

// The program, or 0. A link failure leaves no log: linkers give no place in the user's text.
GLuint LinkProgram(ShaderStage& stage, const QByteArray& fragmentText, bool& linkFailed) {
    const GLuint program = glCreateProgram();
    ShaderObject vertex(GL_VERTEX_SHADER);
    ShaderObject fragment(GL_FRAGMENT_SHADER);
    for (auto& [shader, text] : {std::pair<ShaderObject&, const char*>{vertex, kVertexText},
                                 std::pair<ShaderObject&, const char*>{fragment, fragmentText.constData()}}) {
        if (!shader.Compile(text)) {
            CaptureInfoLog(shader.Name(), stage);
            glDeleteProgram(program);
            return 0;
        }
        glAttachShader(program, shader.Name());
    }
    glLinkProgram(program);
    GLint status = 0;
    glGetProgramiv(program, GL_LINK_STATUS, &status);
    if (status == 0) {
        linkFailed = true;
        glDeleteProgram(program);
        return 0;
    }
    glDetachShader(program, vertex.Name());
    glDetachShader(program, fragment.Name());
    return program;
}

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

}  // namespace

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

bool CompileStage(RenderContext& context, uint32_t stageId, CompileOutcome& outcome) {
    ShaderStage& stage = context.project.stages[stageId];
    SetSelfReference(context, stageId);
    const std::optional<QByteArray> text =
        AssembleStageSource(context.project, context.includeContext, stageId, context.versionLine);
    if (!text) {
        Fail(outcome, stageId, context.includeContext.failure);
        return false;
    }
    bool linkFailed = false;
    stage.program = LinkProgram(stage, *text, linkFailed);
    if (stage.program == 0) {
        Fail(outcome, stageId,
             linkFailed ? QStringLiteral("%1: linking failed.").arg(StageName(stageId)) : QString());
        return false;
    }
    const SurfaceSize size = context.renderSize;
    if (!CreateStageTargets(context, stage, size.width, size.height)) {
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

CompileOutcome CompileProject(RenderContext& context, const std::function<bool()>& shouldStop) {
    CompileOutcome outcome;
    SetVersionLine(context);
    context.runStartMs = TickCountMs();
    context.frameCounter = -1;
    for (uint32_t id = 0; id < kStageCount; ++id) {
        if (!IsRenderedStage(context.project.stages[id].kind)) continue;
        if (shouldStop && shouldStop()) {
            outcome.result = CompileResult::Stopped;
            return outcome;
        }
        if (!CompileStage(context, id, outcome) || !PrepareChannels(context, id, outcome)) return outcome;
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
