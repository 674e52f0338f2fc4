// Source assembly: from the text of one stage to a complete fragment shader.
//
// The pieces (prefix with version line, uniforms and samplers; Common; the stage; a footer with main) are
// registered as in-memory files, and a driver text of a few #include lines pulls them through the include
// expander. So the expander's table of what landed on which lines covers user files and pieces alike, and
// LogMapping needs nothing else.
//
// All functions take the IncludeContext that they work on and touch no other state but the disk, read
// only. Whoever owns the context calls them: in the workbench the render thread. Cost is linear in the
// size of the assembled text.
#pragma once

#include <QByteArray>
#include <QString>
#include <cstdint>
#include <optional>

#include "core/IncludeContext.h"
#include "core/ShaderProject.h"

namespace pixelgrove {

constexpr qint64 kMaxIncludeFileBytes = qint64(64) << 20;       // a larger file is not read
constexpr qsizetype kMaxAssembledBytes = qsizetype(256) << 20;  // a longer output fails the assembly
constexpr qsizetype kMaxIncludeNameLength = 260;                // a longer name fails the assembly

// The whole fragment shader of a rendered stage (2 to 7), in the code page, LF line ends, the last line
// ended. versionLine is like "#version 460", without a line end. Channels of kind Unused are not declared.
//
// Nothing when the stage is no rendered one, an #include is malformed or indented, or a limit of the
// context is exceeded: context.failure then says where and why. In both cases context.virtualFiles is empty
// afterwards, and context.includedFiles holds what was expanded, for MapShaderLog.
std::optional<QByteArray> AssembleStageSource(const ShaderProject& project, IncludeContext& context,
                                              uint32_t stage, QByteArrayView versionLine);

// Appends text to output with every `#include "name"` that stands at the start of a line replaced by the
// file's text; nothing of such a line remains. Inside block comments it stays as text. Line comments are
// unknown here: a "/*" in one opens a block comment. Text ends at its first zero byte. lineCounter is the
// line of output, from 1, on which the next character lands. depth is 0 for a driver text.
//
// False when an #include is indented or lacks its quoted name, when a name is too long, when files nest
// deeper than kMaxIncludeDepth, or when there are more than kMaxIncludeRows; output then holds a part.
bool ExpandIncludes(IncludeContext& context, QByteArrayView text, QByteArray& output, int& lineCounter,
                    int depth);

// The text to expand for a name: an in-memory file (letter case ignored), else a file of that name from
// the process's folder, else from the search folder; line ends are LF, exactly one stands at the end. A
// row with the file's name is added to context.includedFiles, and entry becomes its index.
//
// Nothing, with error false, when the same name was expanded before, nothing could be read (a missing file
// is no failure: the compiler complains about what is then undefined), or the file is empty. Nothing, with
// error true, when the table of included files is full. missing becomes true when nothing could be read.
std::optional<QByteArray> ResolveInclude(IncludeContext& context, const QString& name, int& entry,
                                         bool& error, bool* missing = nullptr);

// CR LF, LF CR, CR and LF each become one LF. Stops at the first zero byte.
QByteArray NormalizeLineEnds(QByteArrayView source);

}  // namespace pixelgrove
