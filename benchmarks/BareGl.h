// What both bare programs of bench_startup draw with: a program of one shader and a quad, by the driver's own
// entry points. To be included ahead of all that includes OpenGL's headers.
#pragma once

#define GL_GLEXT_PROTOTYPES
#include <GL/gl.h>
#include <GL/glext.h>

#include <utility>

constexpr const char* kBareFragmentText = R"(#version 330
uniform vec3 iResolution;
out vec4 colour;
void main() { colour = vec4(gl_FragCoord.xy / iResolution.xy, 0.5, 1.0); }
)";

// Linked and in use, with iResolution set.
inline GLuint UseBareProgram(const char* fragmentText, float width, float height) {
    constexpr const char* kVertexText = R"(#version 330 core
layout(location = 0) in vec2 position;
out vec2 texCoord;
void main() { texCoord = 0.5 + 0.5 * position; gl_Position = vec4(position, 0.0, 1.0); }
)";
    const GLuint program = glCreateProgram();
    for (const auto& [kind, text] :
         {std::pair{GL_VERTEX_SHADER, kVertexText}, std::pair{GL_FRAGMENT_SHADER, fragmentText}}) {
        const GLuint shader = glCreateShader(GLenum(kind));
        glShaderSource(shader, 1, &text, nullptr);
        glCompileShader(shader);
        glAttachShader(program, shader);
    }
    glLinkProgram(program);
    glUseProgram(program);
    glUniform3f(glGetUniformLocation(program, "iResolution"), width, height, 1);
    return program;
}

inline void BindBareQuad() {
    constexpr float kQuad[] = {-1, -1, -1, 1, 1, -1, 1, -1, -1, 1, 1, 1};
    GLuint array = 0, buffer = 0;
    glGenVertexArrays(1, &array);
    glBindVertexArray(array);
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_ARRAY_BUFFER, buffer);
    glBufferData(GL_ARRAY_BUFFER, sizeof kQuad, kQuad, GL_STATIC_DRAW);
    glEnableVertexAttribArray(0);
    glVertexAttribPointer(0, 2, GL_FLOAT, GL_FALSE, 0, nullptr);
}

inline void DrawBareQuad() {
    glDrawArrays(GL_TRIANGLES, 0, 6);
}
