#include "controls/BakedText.h"

#include "platform/CodePage.h"

namespace pixelgrove {

QByteArray PlainStageText(const QString& stageText) {
    QByteArray bytes = ToCodePage(stageText);
    return bytes.replace('\r', '\n');
}

}  // namespace pixelgrove
