// The editor's line commands. In the rows '|' stands for the caret, '^' for the other end of a selection.
#include "ui/text/LineEdits.h"

#include <gtest/gtest.h>

#include <functional>

namespace pixelgrove {
namespace {

struct Row {
    const char* before;
    const char* after;
};

std::string Done(const char* before, const std::function<LineEdit(QStringView, TextSelection)>& act) {
    QString text = QString::fromLatin1(before);
    TextSelection selection{text.indexOf(u'^'), text.indexOf(u'|')};
    if (selection.anchor < 0) {
        selection.anchor = selection.caret;
    } else {
        (selection.anchor < selection.caret ? selection.caret : selection.anchor) -= 1;
    }
    text.remove(u'^').remove(u'|');
    const LineEdit edit = act(text, selection);
    for (auto change = edit.changes.rbegin(); change != edit.changes.rend(); ++change)
        text.replace(change->position, change->length, change->text);
    const auto [anchor, caret] = edit.selection;
    text.insert(caret, u'|');
    if (anchor != caret) text.insert(anchor > caret ? anchor + 1 : anchor, u'^');
    return text.toStdString();
}

TEST(LineEditsTest, Comments) {
    const Row rows[] = {
        {"\ta|b\nc", "\t// a|b\nc"},
        {"\t// a|b\nc", "\ta|b\nc"},
        {"|", "// |"},
        {"// |", "|"},
        {"|a", "// |a"},
        {"//|a", "|a"},
        {"/|/ a", "|a"},
        {"^\ta\n\n\t\tb\n|c", "^\t// a\n\n\t// \tb\n|c"},
        {"|\t// a\n\n\t// \tb\n^c", "|\ta\n\n\t\tb\n^c"},
        {"^// a\nb|", "^// // a\n// b|"},
        {"a^\n    b\n\t|c", "// a^\n//     b\n// \t|c"},
        {"  ^a\n \tb|", " //  ^a\n // \tb|"},
        {"^\n|\na", "^// \n|\na"},
        {"x\n//^a\n//|", "x\n^a\n|"},
    };
    for (const auto& [before, after] : rows)
        EXPECT_EQ(Done(before, ToggleComments), after) << before;
}

TEST(LineEditsTest, Copies) {
    const Row rows[] = {
        {"a|b\nc", "ab\na|b\nc"}, {"|", "\n|"}, {"a\n\tb|", "a\n\tb\n\tb|"}, {"a^bc|d", "abc^bc|d"},
        {"|a\n^b", "a\n|a\n^b"},
    };
    for (const auto& [before, after] : rows)
        EXPECT_EQ(Done(before, Duplicate), after) << before;
}

TEST(LineEditsTest, Moves) {
    const Row ups[] = {
        {"a\nb|c\nd", "b|c\na\nd"},           {"|a\nb", "|a\nb"},         {"a\n\n|b", "a\n|b\n"},
        {"a\nb^b\nc|c\nd", "b^b\nc|c\na\nd"}, {"a\n^b\n|c", "^b\n|a\nc"}, {"\n|", "|\n"},
    };
    for (const auto& [before, after] : ups)
        EXPECT_EQ(Done(before, [](auto text, auto lines) { return MoveLines(text, lines, true); }), after)
            << before;
    const Row downs[] = {
        {"a|a\nb\nc", "b\na|a\nc"},       {"a\n|b", "a\n|b"}, {"|a\n", "\n|a"}, {"^a\n|b", "b\n^a|"},
        {"|a\nb^\nc\nd", "c\n|a\nb^\nd"},
    };
    for (const auto& [before, after] : downs)
        EXPECT_EQ(Done(before, [](auto text, auto lines) { return MoveLines(text, lines, false); }), after)
            << before;
}

}  // namespace
}  // namespace pixelgrove
