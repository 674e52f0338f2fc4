#include "settings/ColourFile.h"

#include <memory>
#include <optional>

#include "persist/XmlStore.h"

namespace pixelgrove {

namespace {

constexpr uint32_t kColourBits = 0xffffff;

}  // namespace

bool LoadUiColours(const QString& path, UiColours& colours) {
    const std::unique_ptr<XmlStore> store = XmlLoad(path);
    if (!store || !XmlEnter(*store, QStringLiteral("UIColors"))) return false;
    std::optional<uint32_t> last;
    for (size_t i = 0; i < colours.values.size(); ++i) {
        const QString element = UiColourName(UiColour(i)).replace(u' ', u'_');
        if (const auto value = XmlFindInt(*store, element)) last = uint32_t(*value) & kColourBits;
        if (last) colours.values[i] = *last;
    }
    return true;
}

}  // namespace pixelgrove
