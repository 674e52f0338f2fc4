// Where frames go: files, or a pipe to an encoder.
#pragma once

#include <QString>
#include <memory>

#include "app/RenderOptions.h"
#include "media/Bitmap.h"

namespace pixelgrove {

class FrameOutput {
  public:
    virtual ~FrameOutput() = default;
    // A whole frame. A sentence for the user when it can't be written, else empty. Files are written whole or
    // not at all, by any threads at once; a pipe takes frames one after the other.
    virtual QString Write(int frame, const Bitmap& picture) = 0;
};

// As the options say. Null, with a sentence, when nothing can be written there. For a pipe, SIGPIPE is
// ignored from now on, so that the end of its reader is a failure like any other.
std::unique_ptr<FrameOutput> OpenFrameOutput(const RenderOptions& options, QString* problem);

}  // namespace pixelgrove
