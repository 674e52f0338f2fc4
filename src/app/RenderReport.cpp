#include "app/RenderReport.h"

#include <cstdio>

namespace pixelgrove {

void PrintError(const QString& text) {
    QByteArray line = text.toLocal8Bit();
    if (!line.endsWith('\n')) line += '\n';
    std::fwrite(line.constData(), 1, size_t(line.size()), stderr);
}

int Refuse(const QString& sentence) {
    PrintError(QStringLiteral("pixelgrove-render: ") + sentence);
    return kExitUsage;
}

int PrintToStdout(const QByteArray& text) {
    const bool written =
        std::fwrite(text.constData(), 1, size_t(text.size()), stdout) == size_t(text.size()) &&
        std::fflush(stdout) == 0;
    return written ? kExitDone
                   : Refuse(QStringLiteral("the text can't be written: %1.").arg(qt_error_string()));
}

}  // namespace pixelgrove
