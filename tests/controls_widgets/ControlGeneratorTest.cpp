#include "controls/widgets/ControlGenerator.h"

#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QTest>
#include <map>

#include "support/DisplayTest.h"

namespace pixelgrove {
namespace {

class ControlGeneratorTest : public DisplayTest {
  protected:
    void SetUp() override {
        DisplayTest::SetUp();
        if (!App()) return;
        dialog = std::make_unique<ControlGenerator>(nullptr,
                                                    [this](const QString& line) { inserted.append(line); });
        dialog->show();
        dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        for (QWidget* control : dialog->Client()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (const QVariant id = control->property("controlId"); id.isValid())
                controls[id.toInt()] = control;
    }
    void TearDown() override {
        dialog.reset();
        DisplayTest::TearDown();
    }

    QString Text(int id) const {
        return controls.at(id)->property(id == 114 ? "plainText" : "text").toString();
    }
    std::string Line() const { return Text(114).toStdString(); }
    // By the keys, as often as it takes.
    void Choose(int id, int row) const {
        auto* combo = qobject_cast<QComboBox*>(controls.at(id));
        combo->setFocus();
        for (int i = 0; i < combo->count() && combo->currentIndex() != row; ++i)
            QTest::keyClick(combo, combo->currentIndex() < row ? Qt::Key_Down : Qt::Key_Up);
        ASSERT_EQ(combo->currentIndex(), row);
    }
    void Type(int id, const QString& text) const {
        auto* edit = qobject_cast<QLineEdit*>(controls.at(id));
        QTest::mouseClick(edit, Qt::LeftButton);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    // The ids of what takes no input.
    std::string Disabled() const {
        std::string ids;
        for (const auto& [id, control] : controls)
            if (!control->isEnabled()) ids += (ids.empty() ? "" : " ") + std::to_string(id);
        return ids;
    }

    std::unique_ptr<ControlGenerator> dialog;
    std::map<int, QWidget*> controls;  // by id
    QStringList inserted;
};

TEST_F(ControlGeneratorTest, BeginsWithAnExampleAndNoLine) {
    ASSERT_EQ(controls.size(), 13u);
    EXPECT_EQ(Line(), "");
    EXPECT_EQ(Disabled(), "1046");
    EXPECT_EQ(Text(1047), QStringLiteral("parent_node!child_node!grandchild_node"));
    QGuiApplication::clipboard()->setText(QStringLiteral("kept"));
    for (const int id : {1111, 115})
        QTest::mouseClick(controls[id], Qt::LeftButton);
    EXPECT_TRUE(inserted.isEmpty());
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("kept"));
}

TEST_F(ControlGeneratorTest, EachChoiceEnablesItsFieldsAndShowsItsLine) {
    const struct {
        int list, row;
        const char *disabled, *numbers, *line;
    } steps[] = {
        {111, 1, "1046", "0 1 0", "uniform int identifier;\t// p: d [0..1, 0]"},
        {111, 0, "1046", "0.00 1.00 0.00", "uniform float identifier;\t// p: d [0.00..1.00, 0.00]"},
        // By way of the row between, whose form stays.
        {111, 2, "1043 1044 1045", "0 1 0", "uniform combo identifier;\t// p: d [@a, b]"},
        {116, 2, "1043 1044 1045", "0 1 0", "#define identifier\ta\t// p: d [@a, b]"},
        {111, 1, "1046", "0 1 0", "#define identifier\t0\t// p: d [0..1, 0]"},
        // From one row to its neighbour: a flag takes what it can.
        {116, 1, "111 112 1043 1044 1045", "0 1 0", "#define a\t\t// p: d [@a, b]"},
        {116, 0, "1043 1044 1045", "0 1 0", "uniform combo identifier;\t// p: d [@a, b]"},
    };
    qobject_cast<QLineEdit*>(controls[1046])->setText(QStringLiteral("@a, b"));
    Type(1047, QStringLiteral("p"));
    Type(1048, QStringLiteral("d"));
    EXPECT_EQ(Line(), "uniform float identifier;\t// p: d [0.0..1.0, 0.5]");
    for (const auto& step : steps) {
        SCOPED_TRACE(step.line);
        Choose(step.list, step.row);
        EXPECT_EQ(Disabled(), step.disabled);
        EXPECT_EQ((Text(1044) + u' ' + Text(1045) + u' ' + Text(1043)).toStdString(), step.numbers);
        EXPECT_EQ(Line(), step.line);
    }
}

TEST_F(ControlGeneratorTest, InsertsAndCopiesTheLineByMouseAndKeys) {
    Type(112, QStringLiteral("gain"));
    const QString line = Text(114);
    EXPECT_TRUE(line.startsWith(QStringLiteral("uniform float gain;\t// ")));
    // What has the focus takes Enter only where it is a button.
    for (const int id : {116, 112, 114, 1111}) {
        controls[id]->setFocus();
        QTest::keyClick(controls[id], Qt::Key_Return);
    }
    QTest::mouseClick(controls[1111], Qt::LeftButton);
    EXPECT_EQ(inserted, QStringList(5, line));
    QTest::mouseClick(controls[115], Qt::LeftButton);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), line);
    EXPECT_TRUE(dialog->isVisible());

    Type(112, QString());
    EXPECT_EQ(Text(114), line) << "without a name there is no new one";
    QTest::keyClick(controls[112], Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
}

}  // namespace
}  // namespace pixelgrove
