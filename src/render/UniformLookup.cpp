#include "render/UniformLookup.h"

#include <GL/glew.h>

#include "platform/CodePage.h"

namespace pixelgrove {

namespace {

std::optional<ControlValueType> TypeOf(GLenum type) {
    switch (type) {
        case GL_FLOAT:
            return kControlFloat;
        case GL_INT:
            return kControlInt;
        case GL_UNSIGNED_INT:
            return kControlUint;
        case GL_BOOL:
            return kControlBool;
        default:
            return std::nullopt;
    }
}

}  // namespace

std::optional<ControlValueType> FindUniformType(const RenderContext& context, const QString& name) {
    const QByteArray narrow = ToCodePage(name);
    const char* names[] = {narrow.constData()};
    for (const ShaderStage& stage : context.project.stages) {
        if (stage.program == 0) continue;
        GLuint index = GL_INVALID_INDEX;
        glGetUniformIndices(stage.program, 1, names, &index);
        if (index == GL_INVALID_INDEX) continue;
        GLint type = 0;
        glGetActiveUniformsiv(stage.program, 1, &index, GL_UNIFORM_TYPE, &type);
        if (const auto found = TypeOf(GLenum(type))) return found;
    }
    return std::nullopt;
}

}  // namespace pixelgrove
