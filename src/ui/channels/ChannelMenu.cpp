#include "ui/channels/ChannelMenu.h"

#include <QMenu>
#include <algorithm>
#include <iterator>

#include "commands/Commands.h"
#include "core/BaseFolders.h"
#include "media/CubeFaces.h"
#include "media/ImageFiles.h"
#include "render/ChannelTextures.h"
#include "shadertoy/ProjectMedia.h"
#include "ui/channels/PickFiles.h"
#include "windows/widgets/MenuBuilder.h"

namespace pixelgrove {

namespace {

// The entries that need no file.
struct EntryRow {
    int id;
    uint32_t kind;
    int32_t sourceStage;
};
constexpr EntryRow kLiveEntries[] = {
    {kChannelMenuBufferA, kChannelBuffer, kStageBufferA},
    {kChannelMenuBufferB, kChannelBuffer, kStageBufferB},
    {kChannelMenuBufferC, kChannelBuffer, kStageBufferC},
    {kChannelMenuBufferD, kChannelBuffer, kStageBufferD},
    {kChannelMenuCubeA, kChannelCubeA, kStageCubeA},
    {kChannelMenuKeyboard, kChannelKeyboard, -1},
    {kChannelMenuWebcam, kChannelWebcam, -1},
    {kChannelMenuAudio, kChannelAudio, -1},
};

void UseKind(ChannelInput& channel, uint32_t kind) {
    channel.kind = kind;
    DefaultSampler(channel);
    channel.internalFormat = 0;
}

// A picture that can't be read takes the place of the old one all the same: the channel then keeps its kind
// and shows that it has nothing.
bool ChoosePicture(ChannelInput& channel, uint32_t kind, const UserDialogs& dialogs) {
    const QString path = PickImageFile(dialogs, channel.fileName, CacheRoot());
    if (path.isEmpty()) return false;
    if (channel.kind != kind) ReleaseChannel(channel);
    channel.mediaProblem.clear();
    if (kind == kChannelCubemap) {
        LoadCubemapFaces(path, channel.faces, &channel.mediaProblem);
    } else {
        channel.faces[0] = LoadImageFile(path, &channel.mediaProblem);
    }
    channel.fileName = FittedFileName(path);
    if (!channel.faces[0]) return true;
    channel.kind = kind;
    DefaultSampler(channel);
    return true;
}

// The name goes into the record before that is released: a channel that was in use loses it again and ends
// Unused, and only the next choice fills it.
bool ChooseVolume(ChannelInput& channel, const UserDialogs& dialogs) {
    const QString path =
        PickFile(dialogs, channel.fileName, CacheRoot() + u'/' + kCacheAssets,
                 QStringLiteral("Volume Files (*.bin)\t*.bin\tAll Files (*.*)\t*.*\t"), false);
    if (path.isEmpty()) return false;
    channel.fileName = FittedFileName(path);
    ReleaseChannel(channel);
    QString problem;
    VolumeRef volume = LoadVolumeFile(channel.fileName, &problem);
    if (!volume) return true;
    channel.mediaProblem = problem;
    channel.volumeData = std::move(volume);
    UseKind(channel, kChannelVolume);
    return true;
}

}  // namespace

QMenu* MakeChannelMenu(QWidget* parent, bool inUse, std::function<void(int entryId)> run) {
    auto* menu = new QMenu(parent);
    menu->setObjectName(QStringLiteral("channelMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    FillMenu(*menu, ChannelMenuRows(inUse), AlwaysAvailable);
    // A submenu's choices arrive here too.
    QObject::connect(menu, &QMenu::triggered, parent,
                     [run = std::move(run)](const QAction* action) { run(action->data().toInt()); });
    return menu;
}

bool RunChannelMenu(int entryId, ChannelInput& channel, const UserDialogs& dialogs) {
    switch (entryId) {
        case kChannelMenuReset:
            ReleaseChannel(channel);
            return true;
        case kChannelMenuTexture:
            return ChoosePicture(channel, kChannelTexture, dialogs);
        case kChannelMenuCubemap:
            return ChoosePicture(channel, kChannelCubemap, dialogs);
        case kChannelMenuVolume:
            return ChooseVolume(channel, dialogs);
        default:
            break;
    }
    const auto* row = std::ranges::find(kLiveEntries, entryId, &EntryRow::id);
    if (row == std::end(kLiveEntries)) return false;
    ReleaseChannel(channel);
    channel.sourceStage = row->sourceStage;
    UseKind(channel, row->kind);
    return true;
}

}  // namespace pixelgrove
