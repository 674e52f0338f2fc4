// The six faces of a cube map, from six files beside each other or from one picture of an unfolded cube.
//
// Faces come in the order +X -X +Y -Y +Z -Z, each top-down, whichever way they were stored, so that both
// sources give the same cube. Pure but for reading files; any thread.
#pragma once

#include <QString>
#include <array>

#include "media/Bitmap.h"
#include "media/ImageFiles.h"

namespace pixelgrove {

// The file of face n: the path itself for 0, else the path with "_n" before the extension:
// "dir/sky.jpg" gives "dir/sky_3.jpg". Either slash ends the folder part; the last dot behind it starts the
// extension.
QString CubeFacePath(const QString& path, int n);

// Fills the faces. With the file of face 1 present, each face is its own file, in that file's own depth and
// size: a missing file leaves its face null, a file that can't be read fails the whole. Without it, the path
// is one picture for SplitCubeCross. False on failure, with all faces null. maxBytes is the most that the
// faces may take together. The optional reason gets a clause for the user, as LoadImageFile's, when anything
// is wrong, a missing file too.
bool LoadCubemapFaces(const QString& path, std::array<BitmapRef, 6>& faces, QString* reason = nullptr,
                      qint64 maxBytes = kMaxMediaBytes);

// Cuts a horizontal cross, four columns by three rows, into six 32-bit square faces of equal size. A margin
// in the colour of the picture's bottom left pixel is cut away first. Pictures without alpha give opaque
// faces. False, with all faces null, for a picture of one colour, one whose faces would be no more than
// 4 pixels wide or high, an incomplete bitmap, or faces that would fill more than kMaxBitmapBytes together.
bool SplitCubeCross(const Bitmap& bitmap, std::array<BitmapRef, 6>& faces);

}  // namespace pixelgrove
