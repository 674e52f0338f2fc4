#include "recording/widgets/RecordingDialog.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QRegularExpression>
#include <QSlider>
#include <QTest>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>

#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"
#include "recording/widgets/KeyComboDialog.h"
#include "support/DisplayTest.h"

namespace pixelgrove {
namespace {

using namespace Qt::StringLiterals;

class RecordingDialogTest : public DisplayTest {
  protected:
    // Without the focus it loses none; a message that is gone before it had it may leave it nowhere.
    void Activate() const {
        dialog->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
    }
    void Show(FrameDialog* shown) {
        dialog.reset(shown);
        dialog->show();
        Activate();
        controls.clear();
        for (QWidget* control : dialog->Client()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (const QVariant id = control->property("controlId"); id.isValid())
                controls[id.toInt()] = control;
    }
    void ShowRecording() { Show(new RecordingDialog(nullptr, *App(), recorder, table)); }
    void ShowCombos() { Show(new KeyComboDialog(nullptr, recorder, table)); }
    void TearDown() override {
        dialog.reset();
        DisplayTest::TearDown();
    }

    QString Text(int id) const { return controls.at(id)->property("text").toString(); }
    QString Texts(std::initializer_list<int> ids) const {
        QStringList texts;
        for (const int id : ids)
            texts.append(Text(id));
        return texts.join(u'|');
    }
    QString Combo() const { return Texts({1136, 1156, 1157}); }
    QString Size() const { return Texts({1042, 1051}); }
    void Click(int id) const { QTest::mouseClick(controls.at(id), Qt::LeftButton); }
    void Type(int id, const QString& text) const {
        auto* edit = qobject_cast<QLineEdit*>(controls.at(id));
        Activate();
        QTest::mouseClick(edit, Qt::LeftButton);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    // By the keys, as often as it takes.
    void Choose(const QString& name) const {
        auto* list = qobject_cast<QComboBox*>(controls.at(1159));
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Home);
        for (int i = 0; i < list->count() && list->currentText() != name; ++i)
            QTest::keyClick(list, Qt::Key_Down);
        ASSERT_EQ(list->currentText(), name);
    }
    QStringList Names() const {
        const auto* list = qobject_cast<QComboBox*>(controls.at(1159));
        QStringList names;
        for (int i = 0; i < list->count(); ++i)
            names.append(list->itemText(i));
        return names;
    }
    QString Selected() const { return qobject_cast<QComboBox*>(controls.at(1159))->currentText(); }
    // Presses the button and has the window that comes answered.
    void ClickAndAnswer(int id, const std::function<void(QWidget& box)>& answer) const {
        QTimer watch;
        watch.callOnTimeout([&] {
            QWidget* box = QApplication::activeModalWidget();
            if (!box || box == dialog.get()) return;
            watch.stop();
            answer(*box);
        });
        Activate();
        watch.start(5);
        Click(id);
    }
    // Confirms the message, whose caption and text these are.
    QString MessageOf(int id) const {
        QString message;
        ClickAndAnswer(id, [&](QWidget& box) {
            message = box.windowTitle() + u": "_s + box.findChild<QLabel*>(u"questionText"_s)->text();
            QTest::keyClick(&box, Qt::Key_Escape);
        });
        return message;
    }
    QString InForce() const { return table.current.start + u'|' + table.current.stop; }
    QString Chosen() const { return recorder.friendlyName + u'|' + recorder.start + u'|' + recorder.stop; }

    RecorderSettings recorder;
    RecorderTable table;
    std::unique_ptr<FrameDialog> dialog;
    std::map<int, QWidget*> controls;  // by id
};

TEST_F(RecordingDialogTest, ShowsWhatIsSetAndStoresWhatItShows) {
    recorder.method = 7;
    recorder.friendlyName = u"OBS Studio"_s;
    Hold(*recorder.framePath)->folder = u"/frames"_s;
    App()->run->recordFrameDelayMs = 250;
    ShowRecording();
    ASSERT_EQ(controls.size(), 26u);
    EXPECT_EQ(recorder.method, 1u);
    EXPECT_EQ(Names(), QStringList({u"NVidia Recorder"_s, u"OBS Studio"_s, u"XBOX Game Bar"_s}));
    EXPECT_EQ(Combo(), u"OBS Studio|Alt+[|Alt+]"_s);
    EXPECT_EQ(Texts({1037, 1039, 1042, 1051, 1137}), u"/frames|Untitled-%04d.png|1920|1080|250"_s);
    EXPECT_TRUE(QRegularExpression(u"^/frames/Untitled-\\d{4,5}\\.png$"_s).match(Text(1151)).hasMatch())
        << Text(1151).toStdString();

    Choose(u"NVidia Recorder"_s);
    EXPECT_EQ(Combo(), u"NVidia Recorder|Alt+F9|Alt+F9"_s);
    EXPECT_EQ(recorder.friendlyName, u"OBS Studio"_s);
    Click(1160);
    Type(1037, u"/other"_s);
    Type(1039, u"f.png"_s);
    Click(1109);
    EXPECT_TRUE(Text(1151).startsWith(u"The filename format doesn't contain"_s));
    Type(1137, u"123456789012"_s);
    QTest::keyClick(controls[1137], Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    const FramePathTemplate path = recorder.framePath->Copy();
    EXPECT_EQ(recorder.method, 0u);
    EXPECT_EQ(Chosen(), u"NVidia Recorder|Alt+F9|Alt+F9"_s);
    EXPECT_EQ(path.folder + path.format, u"/otherf.png"_s);
    EXPECT_EQ(App()->run->recordFrameDelayMs, 10000u);
}

TEST_F(RecordingDialogTest, CancelLeavesAllButTheSelectedRecorderAndTheSlidersRest) {
    ShowRecording();
    EXPECT_EQ(Texts({1136, 1156}), u"|Windows+Alt+R"_s) << "nothing was chosen yet";
    Choose(u"OBS Studio"_s);
    Click(1154);
    Click(1049);
    auto* slider = qobject_cast<QSlider*>(controls[1147]);
    QTest::keyClick(slider, Qt::Key_PageUp);
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(Text(1137), u"555"_s);
    Type(1137, u"9000"_s);
    EXPECT_EQ(slider->value(), 9000);
    QTest::keyClick(controls[1137], Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(InForce(), u"Alt+[|Alt+]"_s);
    EXPECT_EQ(recorder.method, 0u);
    EXPECT_TRUE(recorder.friendlyName.isEmpty());
    EXPECT_EQ(App()->run->recordWidth, 1920u);
    EXPECT_EQ(App()->run->recordFrameDelayMs, 555u);
}

TEST_F(RecordingDialogTest, SizesByButtonsAndByKeys) {
    ShowRecording();
    const std::pair<int, QString> presets[] = {{1041, u"720|480"_s},   {1046, u"1280|720"_s},
                                               {1047, u"1920|1080"_s}, {1048, u"2560|1440"_s},
                                               {1049, u"3840|2160"_s}, {1050, u"7680|4320"_s}};
    for (const auto& [id, size] : presets) {
        Click(id);
        EXPECT_EQ(Size(), size);
    }
    Click(1052);
    EXPECT_EQ(Size(), u"4320|7680"_s);
    Click(1052);
    EXPECT_EQ(Size(), u"7680|4320"_s);

    const struct {
        QString typed, shown;
        bool isSize;
        uint32_t stored;  // the one before where the field holds no number
    } cases[] = {{u"64"_s, u"64"_s, true, 64},
                 {u"12ab-3"_s, u"123"_s, true, 123},
                 {u"99999999999"_s, u"99999999999"_s, false, 123},
                 {QString(), QString(), false, 123},
                 {u"0"_s, u"0"_s, false, 0},
                 {u"32769"_s, u"32769"_s, false, 32769}};
    for (const auto& c : cases) {
        ShowRecording();
        const auto* note = dialog->findChild<QLabel*>(u"sizeNote"_s);
        Type(1051, u"100"_s);
        Type(1042, c.typed);
        EXPECT_EQ(Text(1042), c.shown);
        EXPECT_EQ(note->text().isEmpty(), c.isSize) << c.typed.toStdString();
        Click(1);
        EXPECT_EQ(App()->run->recordWidth, c.stored) << c.typed.toStdString();
    }
}

TEST_F(RecordingDialogTest, CombosAreAddedUnderNewNames) {
    ShowCombos();
    ASSERT_EQ(controls.size(), 9u);
    EXPECT_EQ(MessageOf(1109), u"Name Required: Please provide a name for the keystroke combination."_s);
    Type(1136, u"obs studio"_s);
    EXPECT_EQ(MessageOf(1109),
              u"Name Exists: A combination with this name already exists. Please use a different name."_s);
    Type(1136, u"Mine"_s);
    Type(1156, u"ctl-alt-o"_s);
    Type(1157, u"Ctrl+,"_s);
    EXPECT_EQ(MessageOf(1109), u"Success: Key combination added successfully."_s);
    EXPECT_EQ(Texts({1156, 1157}), u"Ctrl+Alt+O|Ctrl+,"_s) << "normalised when the focus left";
    EXPECT_EQ(Names(), QStringList({u"Mine"_s, u"NVidia Recorder"_s, u"OBS Studio"_s, u"XBOX Game Bar"_s}));
    EXPECT_EQ(Selected(), QString());
    EXPECT_EQ(InForce(), u"Windows+Alt+R|Windows+Alt+R"_s);
    Choose(u"Mine"_s);
    EXPECT_EQ(InForce(), u"Ctrl+Alt+O|Ctrl+,"_s);

    while (table.rows.size() < RecorderTable::kCapacity)
        AddKeyCombo(table, {QString::number(table.rows.size()), u"A"_s, u"B"_s});
    Type(1136, u"One too many"_s);
    EXPECT_EQ(MessageOf(1109), u"Error: Failed to add the key combination. Please try again."_s);
    EXPECT_EQ(table.rows.size(), RecorderTable::kCapacity);
}

TEST_F(RecordingDialogTest, CombosAreDeletedAtOnceAndChosenByOk) {
    recorder.friendlyName = u"XBOX Game Bar"_s;
    ShowCombos();
    EXPECT_EQ(Selected(), u"XBOX Game Bar"_s);
    Click(1110);
    EXPECT_EQ(Combo(), u"OBS Studio|Alt+[|Alt+]"_s);
    EXPECT_EQ(Chosen(), u"OBS Studio|Alt+[|Alt+]"_s);
    EXPECT_EQ(InForce(), u"Alt+[|Alt+]"_s);
    Click(1110);
    Click(1110);
    EXPECT_EQ(Names(), QStringList());
    EXPECT_FALSE(controls[1110]->isEnabled());
    Type(1136, u"New"_s);
    Type(1156, u"f7"_s);
    // Enter leaves the field by OK.
    Type(1157, u"shft-f8"_s);
    QTest::keyClick(controls[1157], Qt::Key_Return);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(Chosen(), u"New|F7|Shift+F8"_s);
    EXPECT_EQ(InForce(), u"F7|Shift+F8"_s);
    EXPECT_TRUE(table.rows.empty());

    // From the settings, too, also where it is no row of the list.
    ShowRecording();
    ClickAndAnswer(1105, [](QWidget& box) {
        box.findChild<QLineEdit*>(u"startEdit"_s)->setText(u"F6"_s);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_EQ(Texts({1136, 1156, 1157}), u"New|F6|Shift+F8"_s);
}

}  // namespace
}  // namespace pixelgrove
