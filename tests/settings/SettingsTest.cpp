#include "settings/Settings.h"

#include <gtest/gtest.h>

#include <functional>

#include "audio/AudioParameters.h"
#include "core/AppState.h"
#include "look/UiColours.h"
#include "persist/RecentList.h"
#include "platform/Files.h"
#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"
#include "support/ImageTestSupport.h"
#include "windows/WindowLayout.h"

namespace pixelgrove {
namespace {

struct Records {
    RecorderSettings recorder;
    RecorderTable keyCombos;
    AudioParameters audio;
    WindowLayout layout;
    UiColours colours;
    Settings settings{{*App(), recorder, keyCombos, audio, layout, colours}};
};

class SettingsTest : public ImageFileTest {
  protected:
    void SetUp() override { Load("missing.xml"); }
    void TearDown() override { FreeGlobals(); }

    // All records as they are when a program starts. Those before are gone.
    void Renew() {
        FreeGlobals();
        ASSERT_TRUE(AllocateGlobals());
        for (auto* list :
             {&App()->recent.recentFiles, &App()->recent.recentProjects, &App()->recent.recentPlaylists})
            *list = std::make_unique<StringList>();
        records = std::make_unique<Records>();
    }
    bool LoadHere(const char* name) { return records->settings.Load(Path(name), Path("colours.xml")); }
    // By a program that starts with that file.
    bool Load(const char* name) {
        Renew();
        return LoadHere(name);
    }
    bool LoadText(const QByteArray& text) { return WriteBytes(Path("s.xml"), text) && Load("s.xml"); }
    bool LoadGlobals(const QByteArray& elements) { return LoadText(Globals(elements)); }
    static QByteArray Globals(const QByteArray& elements) { return "\n<Globals>" + elements + "</Globals>"; }
    bool Save(const char* name) { return records->settings.Save(Path(name)); }
    QByteArray Saved() {
        return Save("saved.xml") ? ReadWholeFile(Path("saved.xml")).value_or("") : QByteArray();
    }
    const QString& Notice() const { return records->settings.Notice(); }

    std::unique_ptr<Records> records;
};

TEST_F(SettingsTest, WritesEveryElementInOrder) {
    Hold(*records->recorder.framePath)->folder = S("/shots");
    records->layout.desktop = {-1, 0, 1920, 1080};
    records->layout.windows = {{S("EditWin"), false, {44, 0, 1, -1, -1, -1, -1, {16, 32, 800, 600}}}};
    ASSERT_TRUE(PushRecent(App()->recent.recentFiles.get(), dir.path()));
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
    App()->run->fpsTarget = 144;
    App()->run->recordWidth = 720;
    App()->run->recordHeight = 480;
    records->recorder.method = 1;
    App()->display.snapToEdges = 1;
    Hold(*records->recorder.framePath)->format = S("a-%d.bmp");
    App()->run->recordFrameDelayMs = 10000;
    records->recorder.friendlyName = S("Mine");
    records->recorder.start = S("F1");
    records->recorder.stop = S("F2");
    records->keyCombos.rows[1].stop = S("F3");
    records->keyCombos.rows.push_back({S("Mine"), S("F1"), S("F2")});
    records->audio.smoothingWeight = 128;
    records->audio.noiseLevel = 100;
    records->audio.homingFactor = 0.5;
    records->audio.maximizeRange = true;
    records->layout.lockWindows = true;
    records->layout.windows = {{S("EditWin"), true, {44, 2, 3, 4, 5, 6, 7, {-8, 9, 10, INT32_MAX}}},
                               {S("OutputWin"), false, {}}};
    ASSERT_TRUE(PushRecent(App()->recent.recentPlaylists.get(), dir.path()));
    const QByteArray saved = Saved();
    ASSERT_FALSE(saved.isEmpty());
    EXPECT_EQ(records->keyCombos.current.name, S("Current"));

    EXPECT_FALSE(Load("saved.xml")) << "no colours";
    EXPECT_EQ(records->keyCombos.current.stop, S("F2"));
    EXPECT_EQ(App()->run->recordWidth, 720u);
    EXPECT_EQ(records->layout.windows[0].placement.normal.bottom, INT32_MAX);
    EXPECT_TRUE(records->audio.maximizeRange);
    EXPECT_EQ(Saved(), saved);
}

TEST_F(SettingsTest, KeepsNumbersInTheirRanges) {
    const struct {
        const char* element;
        const char* text;
        std::function<double()> value;
        double expected;
    } rows[] = {
        {"FPSTarget", "5", [] { return App()->run->fpsTarget.load(); }, 10},
        {"FPSTarget", "99999999999", [] { return App()->run->fpsTarget.load(); }, 240},
        {"FPSTarget", "-1", [] { return App()->run->fpsTarget.load(); }, 10},
        {"FPSTarget", " \n+42kg", [] { return App()->run->fpsTarget.load(); }, 42},
        {"FrameRecordDelay", "x7", [] { return App()->run->recordFrameDelayMs.load(); }, 0},
        {"AudioHoming", "7.5e-1x", [this] { return records->audio.homingFactor.load(); }, 0.75},
        {"FrameRecordWidth", "-1", [] { return App()->run->recordWidth.load(); }, 1920},
        {"FrameRecordDelay", "10000", [] { return App()->run->recordFrameDelayMs.load(); }, 10000},
        {"FrameRecordDelay", "10001", [] { return App()->run->recordFrameDelayMs.load(); }, 500},
        {"SnapEdges", "-3", [] { return App()->display.snapToEdges; }, 1},
        {"AudioSensitivity", "128", [this] { return records->audio.smoothingWeight.load(); }, 128},
        {"AudioSensitivity", "129", [this] { return records->audio.smoothingWeight.load(); }, 8},
        {"AudioSmoothing", "-1", [this] { return records->audio.noiseLevel.load(); }, 1},
        {"AudioHoming", "1e999", [this] { return records->audio.homingFactor.load(); }, 1},
        {"AudioHoming", "-0.1", [this] { return records->audio.homingFactor.load(); }, 0},
        {"AudioHoming", "nan", [this] { return records->audio.homingFactor.load(); }, 0.999},
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
        EXPECT_TRUE(Notice().contains(S("damaged")));
        EXPECT_TRUE(Save("s.xml"));
        EXPECT_EQ(ReadWholeFile(Path("s.xml.bad")), text);
        EXPECT_EQ(ReadWholeFile(Path("s.xml")), defaults);
    }
    // Cut off behind what is read first, and never written to its end.
    for (const QByteArray& text : {defaults.left(defaults.indexOf("</RecentProjects>")),
                                   defaults.left(defaults.size() - 4), defaults + QByteArray(100, '\0')}) {
        LoadText(text);
        EXPECT_TRUE(Notice().contains(S("damaged"))) << text.right(40).constData();
    }
    LoadGlobals("<FPSTarget>20</FPSTarget><FrameRecordFormat>" + QByteArray(260, 'x') +
                "</FrameRecordFormat><FriendlyName>" + QByteArray(42, 'x') +
                "</FriendlyName><FrameRecordFolder>" + QByteArray(259, 'x') + "</FrameRecordFolder>");
    EXPECT_EQ(records->recorder.framePath->Copy().format, S("Untitled-%04d.png"));
    EXPECT_EQ(records->recorder.friendlyName, QString());
    EXPECT_EQ(records->recorder.framePath->Copy().folder, QString(259, u'x'));
    EXPECT_EQ(App()->run->fpsTarget, 20u);
}

TEST_F(SettingsTest, FileThatCannotBeReadIsLeftAlone) {
    EXPECT_FALSE(Load("missing.xml"));
    EXPECT_EQ(Notice(), QString());
    EXPECT_TRUE(Save("missing.xml"));
    // Larger than any that the program writes.
    ASSERT_TRUE(WriteBytes(Path("s.xml"), "") && QFile::resize(Path("s.xml"), XmlStore::kMaxCharacters + 2));
    Load("s.xml");
    EXPECT_TRUE(Notice().contains(S("File too large")));
    // Neither while it is unreadable nor when it can be read again.
    EXPECT_FALSE(Save("s.xml"));
    EXPECT_EQ(QFile(Path("s.xml")).size(), XmlStore::kMaxCharacters + 2);
    ASSERT_TRUE(WriteBytes(Path("s.xml"), "kept"));
    EXPECT_FALSE(Save("s.xml"));
    EXPECT_EQ(ReadWholeFile(Path("s.xml")), QByteArray("kept"));
}

TEST_F(SettingsTest, TextsOfTheUserComeBackAsTheyAre) {
    const QString texts[] = {QStringLiteral(u"\u03c9 <\U0001F600> & 'x' \"y\""), S("Alt+<"),
                             S("</Combo3></Globals>"), S("&#x3C;")};
    QStringList paths;
    for (const QString& text : texts) {
        const QString path = dir.filePath(QString(text).replace(u'/', u'|'));
        ASSERT_TRUE(WriteBytes(path, "") && PushRecent(App()->recent.recentFiles.get(), path));
        paths.prepend(path);
        records->keyCombos.rows.push_back({text, S("F1"), text});
    }
    records->recorder.friendlyName = records->recorder.start = records->recorder.stop = texts[0];
    *Hold(*records->recorder.framePath) = {texts[0] + u'/', texts[0] + S("-%d.png")};
    const QByteArray saved = Saved();
    Load("saved.xml");
    EXPECT_EQ(App()->recent.recentFiles->entries, paths);
    ASSERT_EQ(records->keyCombos.rows.size(), 3 + std::size(texts)) << saved.constData();
    for (size_t i = 0; i < std::size(texts); ++i) {
        EXPECT_EQ(records->keyCombos.rows[3 + i].name, texts[i]);
        EXPECT_EQ(records->keyCombos.rows[3 + i].stop, texts[i]);
    }
    EXPECT_EQ(records->recorder.friendlyName, texts[0]);
    EXPECT_EQ(records->keyCombos.current.stop, texts[0]);
    EXPECT_EQ(records->recorder.framePath->Copy().folder, texts[0] + u'/');
    EXPECT_EQ(records->recorder.framePath->Copy().format, texts[0] + S("-%d.png"));
    EXPECT_EQ(Saved(), saved);

    const FramePathTemplate before = RecorderSettings().framePath->Copy();
    LoadGlobals("<FrameRecordFormat></FrameRecordFormat>");
    EXPECT_EQ(records->recorder.framePath->Copy().format, before.format) << "an empty one is none";
}

TEST_F(SettingsTest, RecentEntriesOfAnotherInstanceStay) {
    QStringList paths;
    for (const char* name : {"old", "here", "there"}) {
        ASSERT_TRUE(WriteBytes(Path(name), ""));
        paths.append(Path(name));
    }
    const auto list = [] { return App()->recent.recentProjects.get(); };
    ASSERT_TRUE(PushRecent(list(), paths[0]) && Save("s.xml"));
    Load("s.xml");
    ASSERT_TRUE(PushRecent(list(), paths[2]) && Save("s.xml"));
    list()->entries = {paths[1], paths[0]};  // of an instance that read the first file
    EXPECT_TRUE(Save("s.xml"));
    EXPECT_TRUE(Save("s.xml")) << "once more";
    Load("s.xml");
    EXPECT_EQ(list()->entries, QStringList({paths[1], paths[2], paths[0]}));
    ASSERT_TRUE(QFile::remove(paths[2]));
    Load("s.xml");
    EXPECT_EQ(list()->entries, QStringList({paths[1], paths[0]})) << "what is gone is forgotten";
}

TEST_F(SettingsTest, MergesKeyCombinationsByName) {
    QByteArray combos;
    for (int i = 0; i < 34; ++i) {
        const QByteArray n = QByteArray::number(i);
        const QByteArray name = i == 0 ? "obs studio" : "R" + n;
        combos += "<Combo" + n + "><Name>" + name + "</Name><Start>s" + n + "</Start></Combo" + n + ">";
    }
    LoadGlobals("<ScreenRecorders>" + combos + "</ScreenRecorders>");
    const RecorderTable& table = records->keyCombos;
    ASSERT_EQ(table.rows.size(), RecorderTable::kCapacity);
    EXPECT_EQ(table.rows[1].name, S("OBS Studio"));
    EXPECT_EQ(table.rows[1].start, S("s0"));
    EXPECT_EQ(table.rows[1].stop, QString());
    EXPECT_EQ(table.rows[31].name, S("R29"));
    // Nothing was chosen: what is in force counts as chosen.
    EXPECT_EQ(table.current.name, S("XBOX Game Bar"));
    EXPECT_EQ(records->recorder.start, S("Windows+Alt+R"));

    LoadGlobals("<ScreenRecorders><Combo1><Name>A</Name></Combo1></ScreenRecorders>");
    EXPECT_EQ(records->keyCombos.rows.size(), 3u);
}

TEST_F(SettingsTest, LayoutRowsAreFoundByName) {
    WindowLayout& layout = records->layout;
    layout.windows = {{S("EditWin"), true, {}}, {S("OutputWin"), true, {}}};
    ASSERT_TRUE(WriteBytes(
        Path("s.xml"),
        Globals("<Window1><Name>EditWin</Name><Open>0</Open><Position>2C00000001zz</Position></Window1>"
                "<Window2><Name>" +
                QByteArray(64, 'x') +
                "</Name></Window2>"
                "<Window3><Name>Third</Name></Window3>"
                "<Window5><Name>Fifth</Name></Window5><DTRect>0100</DTRect>")));
    LoadHere("s.xml");
    ASSERT_EQ(layout.windows.size(), 3u);
    EXPECT_FALSE(layout.windows[0].open);
    EXPECT_EQ(layout.windows[0].placement, (WindowPlacement{44, 1}));
    EXPECT_EQ(layout.windows[1].name, S("OutputWin"));
    EXPECT_EQ(layout.windows[2].name, S("Third"));
    EXPECT_TRUE(layout.windows[2].open);
    EXPECT_EQ(layout.desktop, (EdgeRect{1, 0, 0, 0}));
}

TEST_F(SettingsTest, ColoursCarryOverToRowsThatAreMissing) {
    ASSERT_TRUE(WriteBytes(Path("colours.xml"),
                           "\n<UIColors><Meter_Low>255</Meter_Low><Timer>-1</Timer>"
                           "<TreeView_Planes_Branch_Text>7</TreeView_Planes_Branch_Text></UIColors>"));
    // Without a settings file the colours aren't looked at.
    EXPECT_FALSE(Load("missing.xml"));
    EXPECT_EQ(records->colours.values, UiColours().values);

    EXPECT_TRUE(LoadGlobals(""));
    EXPECT_EQ(records->colours[UiColour::MeterHigh], 0x5050fau);
    EXPECT_EQ(records->colours[UiColour::MeterLow], 255u);
    EXPECT_EQ(records->colours[UiColour::TimerBackground], 255u);
    EXPECT_EQ(records->colours[UiColour::TreeViewRootText], 0xffffffu);
    EXPECT_EQ(records->colours[UiColour::ListViewTextBackground], 7u);
}

}  // namespace
}  // namespace pixelgrove
