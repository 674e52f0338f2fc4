#include "settings/Settings.h"

#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include "audio/AudioParameters.h"
#include "core/AppState.h"
#include "core/BaseFolders.h"
#include "persist/RecentList.h"
#include "persist/XmlStore.h"
#include "platform/FileLock.h"
#include "platform/Files.h"
#include "recording/RecorderSettings.h"
#include "recording/RecorderTable.h"
#include "settings/ColourFile.h"
#include "settings/SettingsFile.h"
#include "windows/WindowLayout.h"

namespace pixelgrove {

namespace {

const QString kGlobals = QStringLiteral("Globals");
const QString kFpsTarget = QStringLiteral("FPSTarget");
const QString kFormat = QStringLiteral("FrameRecordFormat");
const QString kFolder = QStringLiteral("FrameRecordFolder");
const QString kWidth = QStringLiteral("FrameRecordWidth");
const QString kHeight = QStringLiteral("FrameRecordHeight");
const QString kDelay = QStringLiteral("FrameRecordDelay");
const QString kMethod = QStringLiteral("FrameRecordMethod");
const QString kFriendlyName = QStringLiteral("FriendlyName");
const QString kStart = QStringLiteral("FrameRecordStart");
const QString kStop = QStringLiteral("FrameRecordStop");
const QString kScreenRecorders = QStringLiteral("ScreenRecorders");
const QString kComboName = QStringLiteral("Name");
const QString kComboStart = QStringLiteral("Start");
const QString kComboStop = QStringLiteral("Stop");
const QString kSnapEdges = QStringLiteral("SnapEdges");
const QString kAudioSensitivity = QStringLiteral("AudioSensitivity");
const QString kAudioSmoothing = QStringLiteral("AudioSmoothing");
const QString kAudioHoming = QStringLiteral("AudioHoming");
const QString kAudioMaximizeRange = QStringLiteral("AudioMaximizeRange");

// The lists at the root of the file, in its order.
struct RecentElement {
    const char* name;
    std::unique_ptr<StringList> RecentLists::*list;
};
constexpr std::array<RecentElement, 4> kRecentElements{{
    {"RecentFiles", &RecentLists::recentFiles},
    {"RecentProjects", &RecentLists::recentProjects},
    {"RecentPalettes", &RecentLists::recentPalettes},
    {"RecentPlaylists", &RecentLists::recentPlaylists},
}};

QString ComboElement(size_t index) {
    return QStringLiteral("Combo%1").arg(index);
}

// Leaves the field when there is no such element or its text is too long.
void ReadText(const XmlStore& store, const QString& element, qsizetype maxLength, QString& field) {
    std::optional<QString> text = XmlFindUserText(store, element);
    if (text && text->size() <= maxLength) field = *std::move(text);
}

// The number when it is there and within 0..max.
std::optional<int32_t> ReadUpTo(const XmlStore& store, const QString& element, int32_t max) {
    const std::optional<int32_t> value = XmlFindInt(store, element);
    return value && *value >= 0 && *value <= max ? value : std::nullopt;
}

std::optional<int32_t> ReadUnsigned(const XmlStore& store, const QString& element) {
    return ReadUpTo(store, element, INT32_MAX);
}

// An empty element is no path, and leaves the default.
void ReadPath(const XmlStore& store, const QString& element, QString& field) {
    QString path;
    ReadText(store, element, RecorderSettings::kMaxPathLength, path);
    if (!path.isEmpty()) field = std::move(path);
}

void ReadRecorder(const XmlStore& store, AppState& app, RecorderSettings& recorder) {
    {
        const Hold path(*recorder.framePath);
        ReadPath(store, kFormat, path->format);
        ReadPath(store, kFolder, path->folder);
    }
    if (const auto width = ReadUnsigned(store, kWidth)) app.run->recordWidth = uint32_t(*width);
    if (const auto height = ReadUnsigned(store, kHeight)) app.run->recordHeight = uint32_t(*height);
    if (const auto delay = ReadUpTo(store, kDelay, kMaxRecordFrameDelayMs))
        app.run->recordFrameDelayMs = uint32_t(*delay);
    if (const auto method = ReadUnsigned(store, kMethod)) recorder.method = uint32_t(*method);
    ReadText(store, kFriendlyName, kMaxKeyComboLength, recorder.friendlyName);
    ReadText(store, kStart, kMaxKeyComboLength, recorder.start);
    ReadText(store, kStop, kMaxKeyComboLength, recorder.stop);
}

void ReadKeyCombos(XmlStore& store, RecorderTable& table) {
    if (!XmlEnter(store, kScreenRecorders)) return;
    for (size_t i = 0; i < RecorderTable::kCapacity && XmlEnter(store, ComboElement(i)); ++i) {
        KeyCombo combo;
        ReadText(store, kComboName, kMaxKeyComboLength, combo.name);
        ReadText(store, kComboStart, kMaxKeyComboLength, combo.start);
        ReadText(store, kComboStop, kMaxKeyComboLength, combo.stop);
        XmlLeave(store);
        MergeKeyCombo(table, combo);
    }
    XmlLeave(store);
}

// A combination that the user chose is the one in force; without one, what is in force counts as chosen.
void ReconcileCurrentCombo(RecorderSettings& recorder, RecorderTable& table) {
    if (recorder.start.isEmpty() || recorder.stop.isEmpty()) {
        recorder.start = table.current.start;
        recorder.stop = table.current.stop;
    } else {
        PutInForce(table, recorder.start, recorder.stop);
    }
}

void ReadAudio(const XmlStore& store, AudioParameters& audio) {
    if (const auto weight = ReadUpTo(store, kAudioSensitivity, AudioParameters::kMaxSmoothingWeight))
        audio.smoothingWeight = *weight;
    if (const auto level = ReadUpTo(store, kAudioSmoothing, AudioParameters::kMaxNoiseLevel))
        audio.noiseLevel = *level;
    const auto homing = XmlFindReal(store, kAudioHoming);
    if (homing && !std::isnan(*homing)) audio.homingFactor = std::clamp(*homing, 0.0, 1.0);
    if (const auto maximize = XmlFindInt(store, kAudioMaximizeRange)) audio.maximizeRange = *maximize != 0;
}

void ReadGlobals(XmlStore& store, const SettingsRecords& records) {
    AppState& app = records.app;
    if (const auto fps = XmlFindInt(store, kFpsTarget)) app.run->fpsTarget = ClampedFps(*fps);
    ReadRecorder(store, app, records.recorder);
    ReadKeyCombos(store, records.keyCombos);
    if (const auto snap = XmlFindInt(store, kSnapEdges)) app.display.snapToEdges = *snap != 0 ? 1 : 0;
    ReadAudio(store, records.audio);
    LoadLayout(store, records.layout);
}

QString DefaultRecordFolder() {
    const QString folder = PathOf(PathId::DatBase);
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/ScreenShots");
}

void WriteRecorder(XmlStore& store, const AppState& app, const RecorderSettings& recorder) {
    const FramePathTemplate path = recorder.framePath->Copy();
    XmlWriteUserText(store, kFormat, path.format);
    XmlWriteUserText(store, kFolder, path.folder);
    XmlWriteInt(store, kWidth, int32_t(app.run->recordWidth));
    XmlWriteInt(store, kHeight, int32_t(app.run->recordHeight));
    XmlWriteInt(store, kDelay, int32_t(app.run->recordFrameDelayMs));
    XmlWriteInt(store, kMethod, int32_t(recorder.method));
    XmlWriteUserText(store, kFriendlyName, recorder.friendlyName);
    XmlWriteUserText(store, kStart, recorder.start);
    XmlWriteUserText(store, kStop, recorder.stop);
}

void WriteKeyCombos(XmlStore& store, const RecorderTable& table) {
    XmlOpenElement(store, kScreenRecorders);
    for (size_t i = 0; i < table.rows.size(); ++i) {
        XmlOpenElement(store, ComboElement(i));
        XmlWriteUserText(store, kComboName, table.rows[i].name);
        XmlWriteUserText(store, kComboStart, table.rows[i].start);
        XmlWriteUserText(store, kComboStop, table.rows[i].stop);
        XmlCloseElement(store);
    }
    XmlCloseElement(store);
}

void WriteAudio(XmlStore& store, const AudioParameters& audio) {
    XmlWriteInt(store, kAudioSensitivity, audio.smoothingWeight);
    XmlWriteInt(store, kAudioSmoothing, audio.noiseLevel);
    XmlWriteReal(store, kAudioHoming, audio.homingFactor);
    XmlWriteInt(store, kAudioMaximizeRange, audio.maximizeRange ? 1 : 0);
}

// Each list with what other instances stored since it was read.
void WriteRecentLists(XmlStore& store, const AppState& app, XmlStore* stored,
                      const std::array<QStringList, kRecentElements.size()>& asRead) {
    for (size_t i = 0; i < kRecentElements.size(); ++i) {
        const QString name = QString::fromLatin1(kRecentElements[i].name);
        const StringList* own = (app.recent.*kRecentElements[i].list).get();
        StringList merged, theirs;
        if (stored) LoadRecent(&theirs, *stored, name);
        merged.entries = MergeRecent(own ? own->entries : QStringList(), theirs.entries, asRead[i]);
        WriteRecent(&merged, store, name);
    }
}

}  // namespace

QString SettingsPath() {
    const QString folder = PathOf(PathId::DatBase);
    return folder.isEmpty() ? QString() : folder + QStringLiteral("/PixelgroveGlobals.XML");
}

bool Settings::Load(const QString& settingsPath, const QString& coloursPath) {
    Hold(*records_.recorder.framePath)->folder = DefaultRecordFolder();
    const SettingsFile file = ReadSettingsFile(settingsPath);
    leaveAlone_ = file.state == SettingsFileState::Unreadable;
    notice_ = SettingsNotice(file, settingsPath);
    recentAsRead_ = {};
    if (!file.store) return false;
    // Elements that stand elsewhere are none of ours.
    if (XmlEnter(*file.store, kGlobals)) {
        ReadGlobals(*file.store, records_);
        XmlLeave(*file.store);
    }
    ReconcileCurrentCombo(records_.recorder, records_.keyCombos);
    for (size_t i = 0; i < kRecentElements.size(); ++i) {
        StringList* list = (records_.app.recent.*kRecentElements[i].list).get();
        LoadRecent(list, *file.store, QString::fromLatin1(kRecentElements[i].name));
        if (list) recentAsRead_[i] = list->entries;
    }
    return LoadUiColours(coloursPath, records_.colours);
}

bool Settings::Save(const QString& settingsPath, QString* reason) {
    QString ignored;
    QString& words = reason ? *reason : ignored;
    words.clear();
    const AppState& app = records_.app;
    const std::unique_ptr<XmlStore> store = XmlCreate();
    if (!store) return false;
    // A write that is refused is remembered by the store, which then saves nothing.
    XmlOpenElement(*store, kGlobals);
    XmlWriteInt(*store, kFpsTarget, int32_t(app.run->fpsTarget));
    WriteRecorder(*store, app, records_.recorder);
    WriteKeyCombos(*store, records_.keyCombos);
    ReconcileCurrentCombo(records_.recorder, records_.keyCombos);
    XmlWriteInt(*store, kSnapEdges, app.display.snapToEdges);
    WriteAudio(*store, records_.audio);
    SaveLayout(*store, records_.layout);
    XmlCloseElement(*store);

    // From here to the end no other instance may come between what is read and what is written.
    const std::optional<FileLock> lock =
        FileLock::WaitForFolder(QFileInfo(NormalizePath(settingsPath)).path());
    const SettingsFile stored = ReadSettingsFile(settingsPath);
    if (leaveAlone_ || stored.state == SettingsFileState::Unreadable) {
        words = QStringLiteral("The file could not be read");
        return false;
    }
    if (stored.state == SettingsFileState::Damaged &&
        !WriteWholeFile(BadSettingsPath(settingsPath), stored.bytes, &words))
        return false;
    WriteRecentLists(*store, app, stored.store.get(), recentAsRead_);
    return XmlSave(*store, settingsPath, &words);
}

}  // namespace pixelgrove
