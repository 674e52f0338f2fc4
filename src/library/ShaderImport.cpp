#include "library/ShaderImport.h"

#include <QElapsedTimer>

#include "library/ShaderService.h"
#include "platform/TextScan.h"

namespace pixelgrove {

void ShaderImport::GoOn(qint64 milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (!IsDone()) {
        const FoundShader& shader = shaders_[next_++];
        const QString problem = KeepShader(shader);
        if (problem.isEmpty()) {
            ++kept_;
        } else if (firstProblem_.isEmpty()) {
            const QString name =
                shader.name.isEmpty() ? QStringLiteral("one without a name") : InQuotes(shader.name);
            firstProblem_ = QStringLiteral("%1, as %2").arg(name, problem);
        }
        if (clock.elapsed() >= milliseconds) return;
    }
}

QString ShaderImport::Outcome() const {
    if (!IsDone()) return QStringLiteral("Importing, %1 of %2...").arg(next_).arg(shaders_.size());
    QString words = kept_ == 1 ? QStringLiteral("1 shader is in the library now.")
                               : QStringLiteral("%1 shaders are in the library now.").arg(kept_);
    if (const size_t leftOut = next_ - kept_; leftOut > 0) {
        words += QStringLiteral(" Left out: %1").arg(firstProblem_);
        if (leftOut > 1) words += QStringLiteral(", and %1 more").arg(leftOut - 1);
        words += u'.';
    }
    return words;
}

}  // namespace pixelgrove
