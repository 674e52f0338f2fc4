// UndoHistory against texts that are really edited, and the search for addresses.
#include "ui/text/UndoHistory.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

#include "ui/text/Links.h"

namespace pixelgrove {
namespace {

// A text that is edited by its user and by the editor, with the history beside it.
struct Edited {
    QString text;
    UndoHistory history;

    void Replace(qsizetype position, qsizetype length, const QString& with) {
        const QString gone = text.sliced(position, length);
        text.replace(position, length, with);
        history.Record(position, gone, with);
    }
    void Type(const QString& characters) {
        for (const QChar unit : characters)
            Replace(text.size(), 0, unit);
    }
    void ReplaceUnrecorded(qsizetype position, qsizetype length, const QString& with) {
        text.replace(position, length, with);
        history.Note(position, length, with.size());
    }
    bool Apply(const std::optional<UndoHistory::Change>& change) {
        if (change) text.replace(change->position, change->length, change->text);
        return change.has_value();
    }
    bool Undo() { return Apply(history.Undo(text)); }
    bool Redo() { return Apply(history.Redo(text)); }
};

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

TEST(UndoHistoryTest, AtMostAHundredSteps) {
    Edited e;
    for (int i = 0; i < 150; ++i)
        e.Replace(e.text.size(), 0, QStringLiteral("%1,").arg(i));
    int steps = 0;
    while (e.Undo())
        ++steps;
    EXPECT_EQ(steps, 100);
    EXPECT_TRUE(e.text.endsWith(Text(",49,"))) << e.text.toStdString();
    while (e.Redo()) {
    }
    EXPECT_TRUE(e.text.endsWith(Text(",149,")));
}

TEST(UndoHistoryTest, UnrecordedEditsStayBesideUndo) {
    Edited e;
    e.Type(Text("a{"));
    e.Type(Text("\n"));
    e.ReplaceUnrecorded(e.text.size(), 0, Text("\t"));
    e.Type(Text("b"));
    e.ReplaceUnrecorded(0, 0, Text("  "));
    EXPECT_EQ(e.text, Text("  a{\n\tb"));
    e.Undo();
    EXPECT_EQ(e.text, Text("  a{\n\t"));
    e.Undo();
    EXPECT_EQ(e.text, Text("  a{\t")) << "the line end goes, the indentation stays";
    e.ReplaceUnrecorded(0, 2, QString());
    e.Undo();
    EXPECT_EQ(e.text, Text("\t"));
    for (int i = 0; i < 3; ++i)
        EXPECT_TRUE(e.Redo());
    EXPECT_EQ(e.text, Text("a{\n\tb"));

    // At the very start of a step it stays too.
    e = Edited();
    e.Type(Text("ab"));
    e.ReplaceUnrecorded(0, 0, Text("\t"));
    e.Undo();
    EXPECT_EQ(e.text, Text("\t"));

    // Inside a step it goes with the step.
    e = Edited();
    e.Replace(0, 0, Text("x y z"));
    e.ReplaceUnrecorded(2, 1, Text("inner"));
    e.Undo();
    EXPECT_EQ(e.text, QString());
    e.Redo();
    EXPECT_EQ(e.text, Text("x inner z"));

    // Across the edge of a step there is nothing that undo could restore.
    e.Replace(0, 0, Text("new "));
    e.ReplaceUnrecorded(2, 4, QString());
    EXPECT_FALSE(e.Undo());
    EXPECT_EQ(e.text, Text("neinner z"));
}

// What is erased to the one side and what is erased to the other are two steps.
TEST(UndoHistoryTest, TurningRoundBeginsAStep) {
    for (const auto& positions : {std::array{1, 1, 0}, {2, 1, 1}}) {
        Edited e;
        e.text = Text("abcd");
        for (const int position : positions)
            e.Replace(position, 1, QString());
        for (const char* before : {"ad", "abcd"}) {
            EXPECT_TRUE(e.Undo());
            EXPECT_EQ(e.text, Text(before)) << positions[0];
        }
    }
}

// Whatever is done in between, undoing everything and doing it again leads back to the same text.
TEST(UndoHistoryTest, RandomEditsComeBack) {
    std::mt19937 random(5);
    const auto below = [&random](qsizetype limit) { return limit <= 0 ? 0 : qsizetype(random()) % limit; };
    for (int round = 0; round < 300; ++round) {
        Edited e;
        e.text = Text("abcdefghij");
        const QString start = e.text;
        const bool withUnrecorded = round % 2 == 1;
        for (int i = 0; i < 40; ++i) {
            const qsizetype position = below(e.text.size() + 1);
            const qsizetype length = below(std::min<qsizetype>(4, e.text.size() - position + 1));
            const QString with(below(4), QChar(u'A' + i % 26));
            switch (random() % (withUnrecorded ? 5 : 4)) {
                case 0:
                    e.Undo();
                    break;
                case 4:
                    e.ReplaceUnrecorded(position, length, with);
                    break;
                default:
                    if (length > 0 || !with.isEmpty()) e.Replace(position, length, with);
                    break;
            }
        }
        const QString end = e.text;
        int undone = 0;
        while (e.Undo())
            ++undone;
        if (!withUnrecorded) {
            EXPECT_EQ(e.text, start);
        }
        for (; undone > 0; --undone)
            EXPECT_TRUE(e.Redo());
        EXPECT_EQ(e.text, end) << "round " << round;
    }
}

TEST(LinksTest, AddressesInALine) {
    const QString line =
        Text("// see (https://example.org/a_(b)?q=1#c), http://x.org. xhttp://no http:// end");
    std::vector<QString> found;
    for (qsizetype column = -1; column <= line.size(); ++column) {
        const auto link = FindLinkAt(line, column);
        if (!link) continue;
        EXPECT_TRUE(column >= link->start && column < link->start + link->length);
        const QString text = line.sliced(link->start, link->length);
        if (found.empty() || found.back() != text) found.push_back(text);
    }
    EXPECT_EQ(found, (std::vector<QString>{Text("https://example.org/a_(b)?q=1#c"), Text("http://x.org")}));
}

}  // namespace
}  // namespace pixelgrove
