#include "update/UpdateCheck.h"

#include <QStringDecoder>

#include "update/BuildStamp.h"

namespace pixelgrove {

namespace {

// The mark stays: it is the code unit in front of the stamp.
QString Decoded(const QByteArray& bytes) {
    const auto encoding = QStringConverter::encodingForData(bytes);
    QStringDecoder decoder(encoding.value_or(QStringConverter::Utf8),
                           QStringConverter::Flag::ConvertInitialBom);
    return decoder(bytes);
}

QString Verdict(const QString& remote, const QString& own, const QString& ownStamp, const QString& page) {
    if (remote == own) return QStringLiteral("You are running the latest build: ");
    const QString end = QStringLiteral("\r\n\r\nThe latest release build is: ");
    if (remote > own)
        return QStringLiteral("An update is available. Download from ") + page +
               QStringLiteral("\r\n\r\nYou are running build: ") + ownStamp + end;
    return QStringLiteral("You are running an unreleased build: ") + ownStamp +
           QStringLiteral("\r\n\r\nThe latest released version is available from ") + page + end;
}

}  // namespace

QString UpdateAddress() {
    QString address = qEnvironmentVariable("PIXELGROVE_UPDATE_URL").trimmed();
    while (address.endsWith(u'/'))
        address.chop(1);
    return address;
}

QString CheckForUpdate(const QString& address, const QString& ownStamp, const FetchFunction& fetch) {
    const FetchResult answer = fetch(address + u'/' + kUpdateFile);
    const QString text = answer.failure == FetchFailure::None ? Decoded(answer.body) : QString();
    if (text.isEmpty()) return QStringLiteral("Failed to load URL for update check.\n");
    const QStringView behindMark = QStringView(text).sliced(1);
    const qsizetype end = behindMark.indexOf(u'\r');
    const QString remote = NormaliseBuildStamp(end < 0 ? behindMark : behindMark.first(end));
    const QString verdict = Verdict(remote, NormaliseBuildStamp(ownStamp), ownStamp, address + u'/');
    return (verdict + text).left(kMaxUpdateText);
}

}  // namespace pixelgrove
