#include "settings/Settings.h"

#include <gtest/gtest.h>

#include <functional>

#include "core/AppState.h"
#include "persist/RecentList.h"
#include "platform/Files.h"
#include "support/ImageTestSupport.h"

namespace pixelgrove {
namespace {

class SettingsTest : public ImageFileTest {
  protected:
    void SetUp() override {
        ASSERT_TRUE(AllocateGlobals());
        for (auto* list : {&App()->recentFiles, &App()->recentProjects, &App()->recentPlaylists})
            *list = std::make_unique<StringList>();
        StoredSettings().file = {};
        StoredSettings().layout = WindowLayout();
        SetDefaultSettings();
    }
    void TearDown() override { FreeGlobals(); }

    bool LoadText(const QByteArray& text) {
        return WriteBytes(Path("s.xml"), text) && LoadSettings(Path("s.xml"), Path("colours.xml"));
    }
    bool LoadGlobals(const QByteArray& elements) { return LoadText("\n<Globals>" + elements + "</Globals>"); }
    QByteArray Saved() {
        return SaveSettings(Path("saved.xml")) ? ReadWholeFile(Path("saved.xml")).value_or("") : QByteArray();
    }
};

TEST_F(SettingsTest, WritesEveryElementInOrder) {
    StoredSettings().recorder.folder = S("/shots");
    StoredSettings().layout.desktop = {-1, 0, 1920, 1080};
    StoredSettings().layout.windows = {{S("EditWin"), false, {44, 0, 1, -1, -1, -1, -1, {16, 32, 800, 600}}}};
    ASSERT_TRUE(PushRecent(App()->recentFiles.get(), dir.path()));
    const QByteArray expected = QByteArray(R"(<?xml version="1.0"?>
<Globals>
	<FPSTarget>30</FPSTarget>
	<FrameRecordFormat>Untitled-%04d.png</FrameRecordFormat>
	<FrameRecordFolder>/shots</FrameRecordFolder>
	<FrameRecordWidth>1920</FrameRecordWidth>
	<FrameRecordHeight>1080</FrameRecordHeight>
	<FrameRecordDelay>500</FrameRecordDelay>
	<FrameRecordMethod>0</FrameRecordMethod>
	<FriendlyName></FriendlyName>
	<FrameRecordStart></FrameRecordStart>
	<FrameRecordStop></FrameRecordStop>
	<ScreenRecorders>
		<Combo0>
			<Name>XBOX Game Bar</Name>
			<Start>Windows+Alt+R</Start>
			<Stop>Windows+Alt+R</Stop>
		</Combo0>
		<Combo1>
			<Name>OBS Studio</Name>
			<Start>Alt+[</Start>
			<Stop>Alt+]</Stop>
		</Combo1>
		<Combo2>
			<Name>NVidia Recorder</Name>
			<Start>Alt+F9</Start>
			<Stop>Alt+F9</Stop>
		</Combo2>
	</ScreenRecorders>
	<SnapEdges>0</SnapEdges>
	<AudioSensitivity>8</AudioSensitivity>
	<AudioSmoothing>1</AudioSmoothing>
	<AudioHoming>0.999000</AudioHoming>
	<AudioMaximizeRange>0</AudioMaximizeRange>
	<DTRect>ffffffff000000008007000038040000</DTRect>
	<Window1>
		<Name>EditWin</Name>
		<Open>0</Open>
		<Position>2c0000000000000001000000ffffffffffffffffffffffffffffffff10000000200000002003000058020000</Position>
	</Window1>
	<LockWin>0</LockWin>
</Globals>
<RecentFiles>
	<File_00>@</File_00>
</RecentFiles>
<RecentProjects>
</RecentProjects>
<RecentPalettes>
</RecentPalettes>
<RecentPlaylists>
</RecentPlaylists>)")
                                    .replace("@", dir.path().toLatin1()) +
                                '\0';
    EXPECT_EQ(Saved(), expected);
}

TEST_F(SettingsTest, ReadsBackWhatItWrote) {
    SettingsRecords& settings = StoredSettings();
    AppState& app = *App();
    app.fpsTarget = 144;
    app.recordWidth = 720;
    app.recordHeight = 480;
    app.recordMethod = 1;
    app.snapToEdges = 1;
    settings.recorder.format = S("a-%d.bmp");
    settings.recorder.frameDelayMs = 10000;
    settings.recorder.friendlyName = S("Mine");
    settings.recorder.start = S("F1");
    settings.recorder.stop = S("F2");
    settings.keyCombos.rows[1].stop = S("F3");
    settings.keyCombos.rows.push_back({S("Mine"), S("F1"), S("F2")});
    settings.audio.smoothingWeight = 128;
    settings.audio.noiseLevel = 100;
    settings.audio.homingFactor = 0.5;
    settings.audio.maximizeRange = true;
    settings.layout.lockWindows = true;
    settings.layout.windows = {{S("EditWin"), true, {44, 2, 3, 4, 5, 6, 7, {-8, 9, 10, INT32_MAX}}},
                               {S("OutputWin"), false, {}}};
    ASSERT_TRUE(PushRecent(app.recentPlaylists.get(), dir.path()));
    const QByteArray saved = Saved();
    ASSERT_FALSE(saved.isEmpty());
    EXPECT_EQ(settings.keyCombos.current.name, S("Current"));

    SetDefaultSettings();
    settings.layout = WindowLayout();
    app.recentPlaylists->entries.clear();
    EXPECT_FALSE(LoadSettings(Path("saved.xml"), Path("colours.xml")));
    EXPECT_EQ(settings.keyCombos.current.stop, S("F2"));
    EXPECT_EQ(app.recordWidth, 720u);
    EXPECT_EQ(settings.layout.windows[0].placement.normal.bottom, INT32_MAX);
    EXPECT_TRUE(settings.audio.maximizeRange);
    EXPECT_EQ(Saved(), saved);
}

TEST_F(SettingsTest, KeepsNumbersInTheirRanges) {
    const AppState& app = *App();
    const SettingsRecords& settings = StoredSettings();
    const struct {
        const char* element;
        const char* text;
        std::function<double()> value;
        double expected;
    } rows[] = {
        {"FPSTarget", "5", [&] { return app.fpsTarget.load(); }, 10},
        {"FPSTarget", "99999999999", [&] { return app.fpsTarget.load(); }, 240},
        {"FPSTarget", "-1", [&] { return app.fpsTarget.load(); }, 10},
        {"FPSTarget", " \n+42kg", [&] { return app.fpsTarget.load(); }, 42},
        {"FrameRecordDelay", "x7", [&] { return settings.recorder.frameDelayMs.load(); }, 0},
        {"AudioHoming", "7.5e-1x", [&] { return settings.audio.homingFactor.load(); }, 0.75},
        {"FrameRecordWidth", "-1", [&] { return app.recordWidth.load(); }, 1920},
        {"FrameRecordDelay", "10000", [&] { return settings.recorder.frameDelayMs.load(); }, 10000},
        {"FrameRecordDelay", "10001", [&] { return settings.recorder.frameDelayMs.load(); }, 500},
        {"SnapEdges", "-3", [&] { return app.snapToEdges; }, 1},
        {"AudioSensitivity", "128", [&] { return settings.audio.smoothingWeight.load(); }, 128},
        {"AudioSensitivity", "129", [&] { return settings.audio.smoothingWeight.load(); }, 8},
        {"AudioSmoothing", "-1", [&] { return settings.audio.noiseLevel.load(); }, 1},
        {"AudioHoming", "1e999", [&] { return settings.audio.homingFactor.load(); }, 1},
        {"AudioHoming", "-0.1", [&] { return settings.audio.homingFactor.load(); }, 0},
        {"AudioHoming", "nan", [&] { return settings.audio.homingFactor.load(); }, 0.999},
    };
    for (const auto& row : rows) {
        LoadGlobals(QByteArray("<") + row.element + ">" + row.text + "</" + row.element + ">");
        EXPECT_EQ(row.value(), row.expected) << row.element << " " << row.text;
    }
}

TEST_F(SettingsTest, DamagedFilesLeaveDefaults) {
    // The second save knows the combination in force.
    Saved();
    const QByteArray defaults = Saved();
    ASSERT_FALSE(defaults.isEmpty());
    QByteArray binary;
    for (int i = 0; i < 3000; ++i)
        binary.append(char(i * 37 + i / 7));
    const QByteArray texts[] = {"", binary, defaults.left(defaults.indexOf("</Globals>")),
                                "\n<FPSTarget>77</FPSTarget>"};
    for (const QByteArray& text : texts) {
        LoadText(text);
        EXPECT_EQ(Saved(), defaults) << text.left(40).toHex().constData();
        EXPECT_TRUE(StoredSettings().file.notice.contains(S("damaged")));
        EXPECT_TRUE(SaveSettings(Path("s.xml")));
        EXPECT_EQ(ReadWholeFile(Path("s.xml.bad")), text);
        EXPECT_EQ(ReadWholeFile(Path("s.xml")), defaults);
    }
    // Cut off behind what is read first, and never written to its end.
    for (const QByteArray& text : {defaults.left(defaults.indexOf("</RecentProjects>")),
                                   defaults.left(defaults.size() - 4), defaults + QByteArray(100, '\0')}) {
        LoadText(text);
        EXPECT_TRUE(StoredSettings().file.notice.contains(S("damaged"))) << text.right(40).constData();
    }
    LoadGlobals("<FPSTarget>20</FPSTarget><FrameRecordFormat>" + QByteArray(260, 'x') +
                "</FrameRecordFormat><FriendlyName>" + QByteArray(42, 'x') +
                "</FriendlyName><FrameRecordFolder>" + QByteArray(259, 'x') + "</FrameRecordFolder>");
    EXPECT_EQ(StoredSettings().recorder.format, S("Untitled-%04d.png"));
    EXPECT_EQ(StoredSettings().recorder.friendlyName, QString());
    EXPECT_EQ(StoredSettings().recorder.folder, QString(259, u'x'));
    EXPECT_EQ(App()->fpsTarget, 20u);
}

TEST_F(SettingsTest, FileThatCannotBeReadIsLeftAlone) {
    EXPECT_FALSE(LoadSettings(Path("missing.xml"), QString()));
    EXPECT_EQ(StoredSettings().file.notice, QString());
    EXPECT_TRUE(SaveSettings(Path("missing.xml")));
    // Larger than any that the program writes.
    ASSERT_TRUE(WriteBytes(Path("s.xml"), "") && QFile::resize(Path("s.xml"), XmlStore::kMaxCharacters + 2));
    LoadSettings(Path("s.xml"), QString());
    EXPECT_TRUE(StoredSettings().file.notice.contains(S("File too large")));
    // Neither while it is unreadable nor when it can be read again.
    EXPECT_FALSE(SaveSettings(Path("s.xml")));
    EXPECT_EQ(QFile(Path("s.xml")).size(), XmlStore::kMaxCharacters + 2);
    ASSERT_TRUE(WriteBytes(Path("s.xml"), "kept"));
    EXPECT_FALSE(SaveSettings(Path("s.xml")));
    EXPECT_EQ(ReadWholeFile(Path("s.xml")), QByteArray("kept"));
}

TEST_F(SettingsTest, PathsThatTheCodePageLacksAreNotStored) {
    const QString folder = StoredSettings().recorder.folder, format = StoredSettings().recorder.format;
    const QString path = dir.filePath(QStringLiteral(u"\u03c9.glsl"));
    StoredSettings().recorder.folder = QStringLiteral(u"/shots/\u03c9");
    StoredSettings().recorder.format = QStringLiteral(u"\u03c9-%d.png");
    ASSERT_TRUE(WriteBytes(path, ""));
    ASSERT_TRUE(PushRecent(App()->recentFiles.get(), path) &&
                PushRecent(App()->recentFiles.get(), dir.path()));
    const QByteArray saved = Saved();
    EXPECT_TRUE(saved.contains("<FrameRecordFolder></FrameRecordFolder>")) << saved.constData();
    EXPECT_TRUE(saved.contains("<File_00></File_00>\n\t<File_01>/"));
    EXPECT_FALSE(saved.contains('?' + QByteArray("-%d")));
    LoadSettings(Path("saved.xml"), QString());
    EXPECT_EQ(StoredSettings().recorder.folder, folder);
    EXPECT_EQ(StoredSettings().recorder.format, format);
    EXPECT_EQ(App()->recentFiles->entries, QStringList({dir.path()}));
}

TEST_F(SettingsTest, RecentEntriesOfAnotherInstanceStay) {
    QStringList paths;
    for (const char* name : {"old", "here", "there"}) {
        ASSERT_TRUE(WriteBytes(Path(name), ""));
        paths.append(Path(name));
    }
    StringList& list = *App()->recentProjects;
    ASSERT_TRUE(PushRecent(&list, paths[0]) && SaveSettings(Path("s.xml")));
    LoadSettings(Path("s.xml"), QString());
    ASSERT_TRUE(PushRecent(&list, paths[2]) && SaveSettings(Path("s.xml")));
    list.entries = {paths[1], paths[0]};  // of an instance that read the first file
    EXPECT_TRUE(SaveSettings(Path("s.xml")));
    EXPECT_TRUE(SaveSettings(Path("s.xml"))) << "once more";
    LoadSettings(Path("s.xml"), QString());
    EXPECT_EQ(list.entries, QStringList({paths[1], paths[2], paths[0]}));
    ASSERT_TRUE(QFile::remove(paths[2]));
    LoadSettings(Path("s.xml"), QString());
    EXPECT_EQ(list.entries, QStringList({paths[1], paths[0]})) << "what is gone is forgotten";
}

TEST_F(SettingsTest, MergesKeyCombinationsByName) {
    QByteArray combos;
    for (int i = 0; i < 34; ++i) {
        const QByteArray n = QByteArray::number(i);
        const QByteArray name = i == 0 ? "obs studio" : "R" + n;
        combos += "<Combo" + n + "><Name>" + name + "</Name><Start>s" + n + "</Start></Combo" + n + ">";
    }
    LoadGlobals("<ScreenRecorders>" + combos + "</ScreenRecorders>");
    const RecorderTable& table = StoredSettings().keyCombos;
    ASSERT_EQ(table.rows.size(), RecorderTable::kCapacity);
    EXPECT_EQ(table.rows[1].name, S("OBS Studio"));
    EXPECT_EQ(table.rows[1].start, S("s0"));
    EXPECT_EQ(table.rows[1].stop, QString());
    EXPECT_EQ(table.rows[31].name, S("R29"));
    // Nothing was chosen: what is in force counts as chosen.
    EXPECT_EQ(table.current.name, S("XBOX Game Bar"));
    EXPECT_EQ(StoredSettings().recorder.start, S("Windows+Alt+R"));

    LoadGlobals("<ScreenRecorders><Combo1><Name>A</Name></Combo1></ScreenRecorders>");
    EXPECT_EQ(table.rows.size(), 3u);
}

TEST_F(SettingsTest, LayoutRowsAreFoundByName) {
    WindowLayout& layout = StoredSettings().layout;
    layout.windows = {{S("EditWin"), true, {}}, {S("OutputWin"), true, {}}};
    LoadGlobals(
        "<Window1><Name>EditWin</Name><Open>0</Open><Position>2C00000001zz</Position></Window1>"
        "<Window2><Name>" +
        QByteArray(64, 'x') +
        "</Name></Window2>"
        "<Window3><Name>Third</Name></Window3>"
        "<Window5><Name>Fifth</Name></Window5><DTRect>0100</DTRect>");
    ASSERT_EQ(layout.windows.size(), 3u);
    EXPECT_FALSE(layout.windows[0].open);
    EXPECT_EQ(layout.windows[0].placement, (WindowPlacement{44, 1}));
    EXPECT_EQ(layout.windows[1].name, S("OutputWin"));
    EXPECT_EQ(layout.windows[2].name, S("Third"));
    EXPECT_TRUE(layout.windows[2].open);
    EXPECT_EQ(layout.desktop, (EdgeRect{1, 0, 0, 0}));
}

TEST_F(SettingsTest, ColoursCarryOverToRowsThatAreMissing) {
    const UiColours& colours = StoredSettings().colours;
    ASSERT_TRUE(WriteBytes(Path("colours.xml"),
                           "\n<UIColors><Meter_Low>255</Meter_Low><Timer>-1</Timer>"
                           "<TreeView_Planes_Branch_Text>7</TreeView_Planes_Branch_Text></UIColors>"));
    // Without a settings file the colours aren't looked at.
    EXPECT_FALSE(LoadSettings(Path("missing.xml"), Path("colours.xml")));
    EXPECT_EQ(colours.values, UiColours().values);

    EXPECT_TRUE(LoadGlobals(""));
    EXPECT_EQ(colours[UiColour::MeterHigh], 0x5050fau);
    EXPECT_EQ(colours[UiColour::MeterLow], 255u);
    EXPECT_EQ(colours[UiColour::TimerBackground], 255u);
    EXPECT_EQ(colours[UiColour::TreeViewRootText], 0xffffffu);
    EXPECT_EQ(colours[UiColour::ListViewTextBackground], 7u);
    EXPECT_EQ(StoredSettings().meterLow.green, 0xfa);
}

}  // namespace
}  // namespace pixelgrove
