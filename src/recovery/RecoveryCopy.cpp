#include "recovery/RecoveryCopy.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "project/ProjectModel.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {

namespace {

constexpr int kForm = 1;

// Keys of the file.
const QString kKeyForm = QStringLiteral("pixelgroveRecovery");
const QString kKeyProject = QStringLiteral("project");
const QString kKeyPrevious = QStringLiteral("previous");
const QString kKeyName = QStringLiteral("name");
const QString kKeyFile = QStringLiteral("file");
const QString kKeyShown = QStringLiteral("shown");
const QString kKeyVersion = QStringLiteral("version");
const QString kKeyInfo = QStringLiteral("info");
const QString kKeyStages = QStringLiteral("stages");
const QString kKeyStage = QStringLiteral("stage");
const QString kKeyText = QStringLiteral("text");
const QString kKeyChannels = QStringLiteral("channels");
const QString kKeyChannel = QStringLiteral("channel");
const QString kKeySource = QStringLiteral("source");

struct TextField {
    const char* key;
    QString ShaderInfo::*field;
    qsizetype capacity;
};
constexpr TextField kInfoTexts[] = {
    {"id", &ShaderInfo::id, 20},
    {"date", &ShaderInfo::date, 32},
    {"name", &ShaderInfo::name, 128},
    {"username", &ShaderInfo::username, 64},
    {"description", &ShaderInfo::description, 260},
    {"tags", &ShaderInfo::tags, 256},
};

template <typename Record>
struct CountField {
    const char* key;
    uint32_t Record::*field;
    std::initializer_list<uint32_t> allowed = {};  // empty for any
};
const CountField<ShaderInfo> kInfoCounts[] = {
    {"viewed", &ShaderInfo::viewed},
    {"likes", &ShaderInfo::likes},
    {"published", &ShaderInfo::published},
    {"flags", &ShaderInfo::flags},
    {"usePreview", &ShaderInfo::usePreview},
    {"hasliked", &ShaderInfo::hasliked},
    {"size", &ShaderInfo::size},
};
const CountField<ChannelInput> kChannelCounts[] = {
    {"kind", &ChannelInput::kind, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    {"wrap", &ChannelInput::wrap, {0, gl::kRepeat, gl::kClampToEdge, gl::kMirroredRepeat}},
    {"filter", &ChannelInput::filter, {0, gl::kNearest, gl::kLinear, gl::kLinearMipmapLinear}},
    {"vflip", &ChannelInput::vflip, {0, 1}},
    {"srgb", &ChannelInput::srgb, {0, 1}},
    {"internal", &ChannelInput::internalFormat, {0, 1}},
};

template <typename Record, size_t N>
void WriteCounts(QJsonObject& object, const Record& record, const CountField<Record> (&fields)[N]) {
    for (const auto& row : fields)
        object.insert(QLatin1String(row.key), qint64(record.*row.field));
}

template <typename Record, size_t N>
void ReadCounts(const QJsonObject& object, Record& record, const CountField<Record> (&fields)[N]) {
    for (const auto& row : fields) {
        const qint64 value = object.value(QLatin1String(row.key)).toInteger(-1);
        if (value < 0 || value > 0xFFFFFFFF) continue;
        const bool isAllowed =
            row.allowed.size() == 0 || std::ranges::count(row.allowed, uint32_t(value)) > 0;
        if (isAllowed) record.*row.field = uint32_t(value);
    }
}

// Empty when it is too long for its field, the terminating zero counted.
QString FittingText(const QJsonValue& value, qsizetype capacity) {
    const QString text = value.toString();
    return text.size() < capacity ? text : QString();
}

// The number when it is one of a stage; 0, which is none, otherwise.
uint32_t StageOf(const QJsonValue& value) {
    const qint64 id = value.toInteger(0);
    return id > 0 && id < kStageCount ? uint32_t(id) : uint32_t(kStageNone);
}

QJsonObject WriteInfo(const ShaderInfo& info) {
    QJsonObject object;
    for (const TextField& row : kInfoTexts)
        object.insert(QLatin1String(row.key), info.*row.field);
    WriteCounts(object, info, kInfoCounts);
    return object;
}

ShaderInfo ReadInfo(const QJsonObject& object) {
    ShaderInfo info;
    for (const TextField& row : kInfoTexts)
        info.*row.field = FittingText(object.value(QLatin1String(row.key)), row.capacity);
    ReadCounts(object, info, kInfoCounts);
    return info;
}

QJsonObject WriteChannel(const ChannelInput& channel) {
    QJsonObject object;
    WriteCounts(object, channel, kChannelCounts);
    object.insert(kKeySource, channel.sourceStage);
    object.insert(kKeyFile, channel.fileName);
    return object;
}

ChannelInput ReadChannel(const QJsonObject& object) {
    ChannelInput channel;
    ReadCounts(object, channel, kChannelCounts);
    const qint64 source = object.value(kKeySource).toInteger(-1);
    channel.sourceStage = source >= 0 && source < kStageCount ? int32_t(source) : -1;
    channel.fileName = FittingText(object.value(kKeyFile), kFileNameCapacity);
    return channel;
}

QJsonObject WriteStage(const EditedProject& project, uint32_t id) {
    QJsonObject stage{{kKeyStage, qint64(id)}};
    if (project.documents[id].hasText) stage.insert(kKeyText, project.documents[id].text);
    QJsonArray channels;
    for (qint64 i = 0; i < kChannelCount; ++i) {
        const ChannelInput& channel = project.channels[id][size_t(i)];
        if (channel.kind == kChannelUnused && channel.fileName.isEmpty()) continue;
        QJsonObject object = WriteChannel(channel);
        object.insert(kKeyChannel, i);
        channels.append(object);
    }
    stage.insert(kKeyChannels, channels);
    return stage;
}

void ReadStage(const QJsonObject& stage, EditedProject& project) {
    const uint32_t id = StageOf(stage.value(kKeyStage));
    if (id == kStageNone) return;
    const QJsonValue text = stage.value(kKeyText);
    if (text.isString()) SetDocumentText(project.documents[id], text.toString());
    for (const QJsonValue& value : stage.value(kKeyChannels).toArray()) {
        const qint64 index = value[kKeyChannel].toInteger(-1);
        if (index < 0 || index >= kChannelCount) continue;
        ChannelInput& channel = project.channels[id][size_t(index)];
        channel = ReadChannel(value.toObject());
        channel.channelIndex = uint32_t(index);
        channel.samplerCountdown = 2;
    }
}

QJsonObject WriteProject(const EditedProject& project) {
    QJsonArray stages;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        stages.append(WriteStage(project, id));
    return {
        {kKeyName, project.fileName},
        {kKeyFile, project.projectFile},
        {kKeyShown, qint64(project.shownStage)},
        {kKeyVersion, double(project.version)},
        {kKeyInfo, WriteInfo(project.info)},
        {kKeyStages, stages},
    };
}

EditedProject ReadProject(const QJsonObject& object) {
    EditedProject project;
    project.fileName = FittingText(object.value(kKeyName), kFileNameCapacity);
    project.projectFile = object.value(kKeyFile).toString();
    const uint32_t shown = StageOf(object.value(kKeyShown));
    project.version = float(object.value(kKeyVersion).toDouble());
    project.info = ReadInfo(object.value(kKeyInfo).toObject());
    for (const QJsonValue& stage : object.value(kKeyStages).toArray())
        ReadStage(stage.toObject(), project);
    project.shownStage = project.documents[shown].hasText ? shown : uint32_t(kStageImage);
    project.changesDiscarded = true;
    return project;
}

// Loads what the channels name, and says what can't be had.
QStringList LoadMedia(EditedProject& edited) {
    ShaderProject project;
    for (uint32_t id = kStageCommon; id < kStageCount; ++id) {
        project.stages[id].kind = id;
        project.stages[id].channels = std::move(edited.channels[id]);
    }
    const QFileInfo file(edited.projectFile);
    QStringList unusable =
        PrepareProjectChannels(project, file.isAbsolute() ? file.absolutePath() : QString());
    for (uint32_t id = kStageCommon; id < kStageCount; ++id)
        edited.channels[id] = std::move(project.stages[id].channels);
    return unusable;
}

}  // namespace

QByteArray WriteRecoveryCopy(const RecoveryCopy& copy) {
    try {
        QJsonObject root{{kKeyForm, kForm}, {kKeyProject, WriteProject(copy.project)}};
        if (copy.previous) root.insert(kKeyPrevious, WriteProject(*copy.previous));
        return QJsonDocument(root).toJson(QJsonDocument::Compact);
    } catch (const std::bad_alloc&) {
        return {};
    }
}

std::optional<RecoveryCopy> ReadRecoveryCopy(QByteArrayView bytes) {
    try {
        const QJsonDocument document =
            QJsonDocument::fromJson(QByteArray::fromRawData(bytes.data(), bytes.size()));
        const QJsonObject root = document.object();
        if (root.value(kKeyForm).toInt() != kForm || !root.value(kKeyProject)[kKeyStages].isArray())
            return std::nullopt;
        RecoveryCopy copy;
        copy.project = ReadProject(root.value(kKeyProject).toObject());
        const QJsonValue previous = root.value(kKeyPrevious);
        if (previous.isObject()) copy.previous = ReadProject(previous.toObject());
        return copy;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

RecoveryCopy TakeRecoveryCopy(const EditingForm& form) {
    const std::unique_ptr<EditedProject>& previous = form.previousProject;
    return {CopyOfProject(form), previous ? std::optional(*previous) : std::nullopt};
}

QStringList ShowRecoveryCopy(EditingForm& form, RecoveryCopy copy) {
    QStringList unusable = LoadMedia(copy.project);
    form.previousProject = std::make_unique<EditedProject>(std::move(copy.project));
    RestorePreviousProject(form);
    if (copy.previous) {
        LoadMedia(*copy.previous);
        form.previousProject = std::make_unique<EditedProject>(*std::move(copy.previous));
    }
    return unusable;
}

}  // namespace pixelgrove
