#include "commands/CommandRegistry.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QStringList>
#include <set>
#include <string>

#include "commands/CommandQueue.h"
#include "commands/MenuTable.h"

namespace pixelgrove {
namespace {

// Ids 10 to 12 and 20 have handlers; 11's condition doesn't hold.
TEST(CommandRegistry, RunsWhatIsThereAndAvailable) {
    CommandRegistry commands;
    std::string ran;
    const auto note = [&ran](int id) { ran += std::to_string(id) + ' '; };
    EXPECT_TRUE(commands.Add({.first = 10,
                              .last = 12,
                              .run = note,
                              .isAvailable = [](int id) { return id != 11; },
                              .isTicked = [](int id) { return id == 12; }}));
    EXPECT_TRUE(commands.Add(20, [note] { note(20); }));
    const struct { int first, last; } refused[] = {{10, 10}, {12, 12}, {9, 10}, {12, 15}, {1, 30}, {5, 4}};
    for (const auto& [first, last] : refused)
        EXPECT_DEBUG_DEATH(EXPECT_FALSE(commands.Add({.first = first, .last = last, .run = note})), "isGood")
            << first << ' ' << last;
    EXPECT_DEBUG_DEATH(EXPECT_FALSE(commands.Add(13, nullptr)), "isGood");

    for (int id = 8; id <= 21; ++id)
        EXPECT_EQ(commands.Run(id), id == 10 || id == 12 || id == 20) << id;
    EXPECT_EQ(ran, "10 12 20 ");
    EXPECT_TRUE(commands.StateOf(12).isTicked && !commands.StateOf(10).isTicked);
    EXPECT_FALSE(commands.StateOf(11).isAvailable || commands.StateOf(13).isAvailable);
}

TEST(CommandQueue, PostponedCommandsComeInTheirOrder) {
    int count = 1;
    char name[] = "test";
    char* arguments[] = {name, nullptr};
    const QCoreApplication application(count, arguments);
    struct Receiver : QObject {
        CommandQueue queue{this};
        std::string ran;
        bool event(QEvent* event) override {
            if (event->type() != CommandQueue::EventType()) return QObject::event(event);
            if (const auto command = queue.Take()) ran += std::to_string(command->id) + ' ';
            return true;
        }
    } receiver;
    const auto handleEvents = [] { QCoreApplication::sendPostedEvents(); };
    receiver.queue.PostCommand(1, 0);
    receiver.queue.Postpone(true);
    receiver.queue.PostCommand(2, 0);
    receiver.queue.PostCommand(3, 0);
    receiver.queue.CancelPostedCommand(2);
    handleEvents();
    EXPECT_EQ(receiver.ran, "");
    receiver.queue.Postpone(false);
    receiver.queue.PostCommand(4, 0);
    handleEvents();
    EXPECT_EQ(receiver.ran, "1 3 4 ");
}

TEST(MenuTable, MenusCloseAndKeysAreGivenOnce) {
    for (const auto rows : {MenuBarRows(), EditorMenuRows(), OutputMenuRows(), ChannelMenuRows(true),
                            ChannelMenuRows(false), StageMenuRows()}) {
        int depth = 0;
        std::set<int> ids;
        for (const MenuRow& row : rows) {
            depth += row.kind == MenuRowKind::Menu ? 1 : row.kind == MenuRowKind::End ? -1 : 0;
            EXPECT_GE(depth, 0);
            EXPECT_TRUE(row.commandId == 0 || ids.insert(row.commandId).second) << row.commandId;
        }
        EXPECT_EQ(depth, 0);
    }
    std::set<QString> keys;
    const auto take = [&keys](const char* list) {
        for (const QString& key : QString::fromLatin1(list).split(QLatin1String("; "), Qt::SkipEmptyParts))
            EXPECT_TRUE(keys.insert(key).second) << qPrintable(key);
    };
    for (const MenuRow& row : MenuBarRows())
        take(row.keys);
    for (const KeyRow& row : KeyRows())
        take(row.keys);
    EXPECT_GT(keys.size(), 20u);
}

}  // namespace
}  // namespace pixelgrove
