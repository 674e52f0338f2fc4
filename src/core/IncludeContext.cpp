#include "core/IncludeContext.h"

#include "core/BaseFolders.h"
#include "platform/Files.h"

namespace pixelgrove {

std::unique_ptr<IncludeContext> CreateIncludeContext() {
    auto context = std::make_unique<IncludeContext>();
    const QString folder = PathOf(PathId::Shaders) + QStringLiteral("/Include");
    if (IsFolder(folder)) context->searchFolder = folder;
    return context;
}

}  // namespace pixelgrove
