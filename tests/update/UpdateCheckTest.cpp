// Build stamps, and what an update check makes of what a server says.
#include "update/UpdateCheck.h"

#include <gtest/gtest.h>

#include <QStringEncoder>

#include "platform/Clock.h"
#include "support/TestService.h"
#include "update/BuildStamp.h"
#include "update/UpdateWorker.h"

namespace pixelgrove {
namespace {

const QString kOwn = QStringLiteral("(REL) Nov 11 2024 @ 01:42:05");
const QString kFailed = QStringLiteral("Failed to load URL for update check.\n");

// The form in which a server has it.
QByteArray Utf16(const QString& text) {
    QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
    return encoder(text);
}

TEST(BuildStampTest, NormalisedStampsAreInTheOrderOfTime) {
    const std::pair<const char*, const char*> rows[] = {
        {"(REL) Nov 11 2024 @ 01:42:05", "2024-11-11 01:42:05 (REL)"},
        {"(DEV)\t jAN\n 1 999  @23:00:00 x", "0999-01-01 23:00:00 (DEV)"},
        {"(REL) Dec 31 2026 @", "2026-12-31  (REL)"},
        {"(REL) Nov 11 2024 at 01:42:05", "2024-11-11  (REL)"},
        {"(REL) May -1 20260 @ 1", "20260-05-4294967295 1 (REL)"},
        {"(REL) Smarch 1 2024 @ 1", "2024-00-01 1 (REL)"},
        {"(REL) eb 1 2024 @ 1", "2024-02-01 1 (REL)"},
        {"(REL) Nov eleven", "0000-11-00  (REL)"},
        {"", "0000-00-00  "},
    };
    for (const auto& [stamp, normalised] : rows)
        EXPECT_EQ(NormaliseBuildStamp(QString::fromLatin1(stamp)).toStdString(), normalised) << stamp;
}

TEST(UpdateCheckTest, TheServersTextAgainstOneOwn) {
    const QString page = QStringLiteral("http://h/p/"),
                  latest = QStringLiteral("The latest release build is: ");
    const QString later = QStringLiteral(
                              "An update is available. Download from %1\r\n\r\nYou are running build: "
                              "%2\r\n\r\n")
                              .arg(page, kOwn) +
                          latest;
    const QString earlier = QStringLiteral(
                                "You are running an unreleased build: %1\r\n\r\nThe latest released "
                                "version is available from %2\r\n\r\n")
                                .arg(kOwn, page) +
                            latest;
    const QString equal = QStringLiteral("You are running the latest build: ");
    const QString bom(QChar(0xfeff)), notes = QStringLiteral("\r\nNotes: gr\u00fc\u00dfe");
    const QString newer = QStringLiteral("(REL) Nov 11 2024 @ 01:42:06"), same = kOwn,
                  older = QStringLiteral("(REL) Oct 31 2024 @ 23:59:59");
    const struct {
        const char* what;
        QByteArray body;
        QString expected;
    } rows[] = {
        {"later", Utf16(newer + notes), later + bom + newer + notes},
        {"equal", Utf16(same + notes), equal + bom + same + notes},
        {"earlier", Utf16(older + notes), earlier + bom + older + notes},
        {"UTF-8 with its mark", (bom + newer + notes).toUtf8(), later + bom + newer + notes},
        {"a blank for a mark, no line end", (u' ' + same).toUtf8(), equal + u' ' + same},
        {"garbage", "\xff\xff<html>\r", earlier + QStringLiteral("\ufffd\ufffd<html>\r")},
        {"nothing behind the mark", Utf16({}), earlier + bom},
        {"empty", "", kFailed},
        {"too long", QByteArray(1 << 20, 'x'), (earlier + QString(1 << 20, u'x')).left(8191)},
    };
    for (const auto& row : rows) {
        QString asked;
        const QString text = CheckForUpdate(QStringLiteral("http://h/p"), kOwn, [&](const QString& url) {
            asked = url;
            return FetchResult{FetchFailure::None, {}, row.body};
        });
        EXPECT_EQ(text, row.expected) << row.what;
        EXPECT_EQ(asked, QStringLiteral("http://h/p/mlupdate.txt"));
    }
}

std::optional<QString> TextOf(const QString& address, const FetchLimits& limits) {
    UpdateWorker worker(limits);
    EXPECT_TRUE(worker.Start(address, kOwn));
    std::optional<QString> text;
    for (int turn = 0; turn < 2000 && !text; ++turn) {
        SleepMs(5);
        text = worker.TakeText();
    }
    return text;
}

TEST(UpdateWorkerTest, AsksTheServer) {
    test::TestService service;
    ASSERT_TRUE(service.IsReady());
    const FetchLimits limits{.bytes = 2 << 20};
    const auto ask = [&](const char* mode) { return TextOf(service.Http(mode), limits).value_or(QString()); };
    service.Put("media/mlupdate.txt", Utf16(kOwn));
    EXPECT_TRUE(ask("/plain/media/a").startsWith(QStringLiteral("You are running the latest build: ")));
    service.Put("media/mlupdate.txt", QByteArray(1 << 20, 'x'));
    EXPECT_EQ(ask("/gzip/media/a").size(), kMaxUpdateText);
    for (const char* mode : {"/empty", "/cut", "/garbage", "/endless"})
        EXPECT_EQ(ask(mode), kFailed) << mode;
    EXPECT_EQ(TextOf(service.Http("/pause/media/a"), {.silence = std::chrono::milliseconds(100)}), kFailed);
    {
        // Closed in the middle: nothing is waited for.
        UpdateWorker worker;
        ASSERT_TRUE(worker.Start(service.Silent("https"), kOwn));
    }
    service.Stop();
    EXPECT_EQ(ask("/plain/media/a"), kFailed);
    EXPECT_EQ(TextOf(QStringLiteral("no address"), limits), kFailed);
}

}  // namespace
}  // namespace pixelgrove
