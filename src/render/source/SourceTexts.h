// The fixed texts that every fragment shader is wrapped in.
//
// Constants; any thread. LF line ends, each text ends in one.
#pragma once

#include <QByteArrayView>

namespace pixelgrove {

// What follows the version line: the standard uniforms and st_assert.
QByteArrayView PrefixText();

// main() of the stages that define mainImage: Buffer A to D and Image.
QByteArrayView ImageFooterText();

// main() of Cube A, which defines mainCubemap.
QByteArrayView CubeFooterText();

}  // namespace pixelgrove
