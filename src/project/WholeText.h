// Whether a file's bytes look like all of a project or source text, or like what a program has written of it
// so far. Pure; any thread.
#pragma once

#include <QByteArray>

namespace pixelgrove {

// False for what is empty, or has brackets that are not closed; strings of JSON and comments of GLSL don't
// count. True says little, but what is cut off anywhere within its brackets is found.
bool LooksWhole(const QByteArray& bytes);

}  // namespace pixelgrove
