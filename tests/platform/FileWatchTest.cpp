// Another program's ways of writing a file, done in place.
#include "platform/FileWatch.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <functional>

#include "platform/Files.h"

namespace pixelgrove {
namespace {

class FileWatchTest : public ::testing::Test {
  protected:
    void Write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    // What was told until so long after `act`; the first time ends it.
    QByteArrayList ToldWithin(int ms, const std::function<void()>& act) {
        told_.clear();
        QTimer::singleShot(0, act);
        QTimer end;
        end.setSingleShot(true);
        QObject::connect(&end, &QTimer::timeout, &loop_, &QEventLoop::quit);
        end.start(ms);
        loop_.exec();
        return told_;
    }

    int argc_ = 1;
    char name_[5] = "test";
    char* argv_[2] = {name_, nullptr};
    QCoreApplication application_{argc_, argv_};
    QEventLoop loop_;
    QTemporaryDir folder_;
    QString path_ = folder_.filePath(QStringLiteral("a.glsl"));
    QString beside_ = folder_.filePath(QStringLiteral("b"));
    QByteArrayList told_;
    FileWatch watch_{[this] {
                         told_.append(ReadWholeFile(path_).value_or("none"));
                         loop_.quit();
                     },
                     [](const QByteArray& bytes) { return bytes.endsWith('}'); }};
};

TEST_F(FileWatchTest, EveryWayOfWritingIsToldOnceItIsComplete) {
    Write(path_, "{0}");
    ASSERT_TRUE(watch_.Watch(path_));
    const std::pair<const char*, std::function<void()>> rows[] = {
        {"written over", [this] { Write(path_, "{1}"); }},
        {"renamed onto",
         [this] {
             Write(beside_, "{2}");
             rename(qPrintable(beside_), qPrintable(path_));
         }},
        {"moved away, then made anew",
         [this] {
             rename(qPrintable(path_), qPrintable(beside_));
             QTimer::singleShot(100, &loop_, [this] { Write(path_, "{3}"); });
         }},
        {"truncated and written slowly",
         [this] {
             auto file = std::make_shared<QFile>(path_);
             ASSERT_TRUE(file->open(QIODevice::WriteOnly | QIODevice::Unbuffered));
             file->write("{}");
             QTimer::singleShot(200, &loop_, [file] { file->write("{4}"); });
             QTimer::singleShot(300, &loop_, [file] { file->close(); });
         }},
        {"closed after each part",
         [this] {
             Write(path_, "{");
             QTimer::singleShot(200, &loop_, [this] { Write(path_, "{5}"); });
         }},
        {"folder gone and back",
         [this] {
             rename(qPrintable(folder_.path()), qPrintable(folder_.path() + u'x'));
             QDir().mkdir(folder_.path());
             Write(path_, "{6}");
             QDir(folder_.path() + u'x').removeRecursively();
         }},
        // A cut off text is told in the end.
        {"cut off", [this] { Write(path_, "{7"); }},
    };
    for (const auto& [what, act] : rows) {
        ToldWithin(5000, act);
        const std::optional<QByteArray> held = ReadWholeFile(path_);
        ASSERT_TRUE(held) << what;
        EXPECT_EQ(told_, QByteArrayList{*held}) << what;
    }
}

TEST_F(FileWatchTest, WhatHoldsTheSameOrIsKnownIsNotTold) {
    Write(path_, "{0}");
    ASSERT_TRUE(watch_.Watch(path_));
    EXPECT_EQ(ToldWithin(150, [this] { Write(path_, "{0}"); }), QByteArrayList());
    EXPECT_EQ(ToldWithin(150, [this] { Write(beside_, "{1}"); }), QByteArrayList());
    EXPECT_EQ(ToldWithin(150,
                         [this] {
                             WriteWholeFile(path_, "{2}");
                             watch_.Watch(path_);
                         }),
              QByteArrayList());
    EXPECT_EQ(ToldWithin(150, [this] { QFile::remove(path_); }), QByteArrayList());
    // By way of a link.
    Write(beside_, "{3}");
    ASSERT_TRUE(QFile::link(beside_, path_) && watch_.Watch(path_));
    EXPECT_EQ(ToldWithin(5000, [this] { WriteWholeFile(beside_, "{4}"); }), QByteArrayList{"{4}"});
    QString reason;
    EXPECT_FALSE(watch_.Watch(folder_.filePath(QStringLiteral("none/a.glsl")), &reason));
    EXPECT_FALSE(reason.isEmpty());
}

}  // namespace
}  // namespace pixelgrove
