#include "recording/KeyCombos.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;

using Keys = std::optional<std::vector<uint32_t>>;

// A small keyboard.
KeyNameTable Names() {
    KeyNameTable names;
    const auto add = [&names](uint32_t key, const QString& name) { names[key] = {name, key}; };
    add(9, u"Tab"_s);
    add(16, u"Shift"_s);
    add(17, u"Ctrl"_s);
    add(18, u"Alt"_s);
    add(33, u"PageUp"_s);
    add(34, u"PageDown"_s);
    add(45, u"Insert"_s);
    for (uint32_t letter = 'A'; letter <= 'Z'; ++letter)
        add(letter, QChar(letter));
    add(91, u"Windows"_s);
    for (uint32_t f = 1; f <= 12; ++f)
        add(111 + f, u"F%1"_s.arg(f));
    add(188, u","_s);
    add(219, u"["_s);
    return names;
}

TEST(KeyCombos, ParseByNamesInTheirOrder) {
    const struct {
        QString text;
        Keys keys;
    } cases[] = {
        {u"Alt+["_s, {{18, 219}}},
        {u"F9"_s, {{120}}},
        {u"O+Alt+Ctrl"_s, {{'O', 18, 17}}},
        {u" ctrl +\tALT+ p "_s, {{17, 18, 'P'}}},
        {u"Windows+win+SHIFT"_s, {{91, 91, 16}}},
        {u"Ctrl++"_s, {{17, 0, 0}}},
        {u"+Ctrl+A"_s, {{17, 'A', 0}}},
        {u"+"_s, {{0, 0}}},
        {u"Alt+"_s + QString(36, u' ') + u'x', {{18, 'X'}}},
        {u"Alt+"_s + QString(37, u' ') + u'x', {}},
        {QString(), {}},
        {u" "_s, {}},
        {u"Ctrl+ +A"_s, {}},
        {u"Ctl+A"_s, {}},
        {u"Ctrl+Home"_s, {}},
    };
    const KeyNameTable names = Names();
    for (const auto& c : cases)
        EXPECT_EQ(ParseKeyCombo(c.text, names), c.keys) << c.text.toStdString();
    // No row without a name is one of an empty name.
    EXPECT_EQ(ParseKeyCombo(u"Alt+A"_s, {}), Keys());
}

TEST(KeyCombos, DistanceWeighsWhatWasTyped) {
    const struct {
        QStringView source, target;
        int distance;
    } cases[] = {
        {u"Ctrl", u"cTRL", 0},
        {u"Ctrl", u"ctl", 4},
        {u"Ctl", u"Ctrl", 5},
        {u"Alt", u"Ald", 5},
        {u"", u"abc", 15},
        {u"abc", u"", 12},
        {u"PageUp", u"Page", 8},
        // Swapped letters are seen as such by the case of the second of them alone.
        {u"Alt", u"ATL", 4},
        {u"Alt", u"atL", 4},
        {u"Alt", u"ATl", 9},
        {u"Alt", u"atl", 9},
        {u"F12", u"f21", 4},
    };
    for (const auto& c : cases)
        EXPECT_EQ(KeyNameDistance(c.source, c.target), c.distance)
            << c.source.toString().toStdString() << " " << c.target.toString().toStdString();
}

TEST(KeyCombos, WhatIsTypedBecomesNames) {
    const struct {
        QString typed, normal;
    } cases[] = {
        {u"ctl-alt-o"_s, u"Ctrl+Alt+O"_s},
        {u"windows.alt.r"_s, u"Windows+Alt+R"_s},
        {u"wi+x"_s, u"I+X"_s},
        {u"wim+x"_s, u"Windows+X"_s},
        {u"crtl+pgup"_s, u"Ctrl+PageUp"_s},
        // The first key is cut at other marks than those behind it.
        {u"Ctrl+,"_s, u"Ctrl+,"_s},
        {u",Ctrl,["_s, u"Ctrl+["_s},
        {u"alt;f9 ["_s, u"Alt+F9+["_s},
        {u"pagedown up"_s, u"PageDown"_s},
        {u"+-. ,"_s, u" "_s},
        {u"--"_s, QString()},
        {QString(), QString()},
        {QString(60, u'q'), u"Windows"_s},
        {u"a"_s + u"-pagedow"_s.repeated(9), u"A"_s + u"+PageDown"_s.repeated(4) + u"+Pa"_s},
    };
    const KeyNameTable names = Names();
    for (const auto& c : cases)
        EXPECT_EQ(NormaliseKeyCombo(c.typed, names), c.normal) << c.typed.toStdString();
    EXPECT_EQ(NormaliseKeyCombo(u"ctl+a"_s, {}), u"???+A"_s);
}

QStringList NamesOf(const RecorderTable& table) {
    QStringList names;
    for (const KeyCombo& row : table.rows)
        names.append(row.name);
    return names;
}

TEST(RecorderTable, ADeletedChoicePassesToTheFirstRow) {
    RecorderTable table;
    RecorderSettings chosen;
    chosen.friendlyName = u"obs studio"_s;
    EXPECT_TRUE(DeleteKeyCombo(table, u"OBS STUDIO"_s, chosen));
    EXPECT_EQ(NamesOf(table), QStringList({u"XBOX Game Bar"_s, u"NVidia Recorder"_s}));
    EXPECT_EQ(chosen.friendlyName, u"obs studio"_s) << "chosen by its exact name only";
    EXPECT_FALSE(DeleteKeyCombo(table, u"OBS Studio"_s, chosen));

    chosen.friendlyName = u"XBOX Game Bar"_s;
    EXPECT_TRUE(DeleteKeyCombo(table, u"XBOX Game Bar"_s, chosen));
    EXPECT_EQ(chosen.friendlyName + chosen.start + chosen.stop, u"NVidia RecorderAlt+F9Alt+F9"_s);
    EXPECT_EQ(table.current.name + table.current.start, u"CurrentAlt+F9"_s);
    EXPECT_TRUE(DeleteKeyCombo(table, u"NVidia Recorder"_s, chosen));
    EXPECT_TRUE(chosen.friendlyName.isEmpty() && table.current.start.isEmpty());

    for (size_t i = 0; i < RecorderTable::kCapacity; ++i)
        EXPECT_TRUE(AddKeyCombo(table, {QString::number(i), u"A"_s, u"B"_s}));
    EXPECT_FALSE(AddKeyCombo(table, {u"more"_s, u"A"_s, u"B"_s}));
    EXPECT_TRUE(MergeKeyCombo(table, {u"31"_s, u"C"_s, u"D"_s}));
    EXPECT_EQ(FindKeyCombo(table, u"31"_s)->stop, u"D"_s);
}

}  // namespace
}  // namespace pixelgrove
