#include "ui/PictureCommands.h"

#include <QClipboard>
#include <QGuiApplication>
#include <memory>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "media/ImageFiles.h"
#include "render/Player.h"
#include "render/RenderThread.h"
#include "render/widgets/BitmapImage.h"
#include "ui/MessagePane.h"
#include "ui/channels/PickFiles.h"

namespace pixelgrove {

namespace {

void Copy(const Bitmap& picture, MessagePane& pane) {
    QGuiApplication::clipboard()->setImage(StretchedImage(picture, picture.width, picture.height));
    pane.Say(QStringLiteral("Picture copied."));
}

void Save(const Bitmap& picture, const UserDialogs& dialogs, MessagePane& pane) {
    const QString path = PickFile(dialogs, QStringLiteral("Picture.png"), LastImageFolder(),
                                  QStringLiteral("PNG Pictures (*.png)\t*.png\tJPEG Pictures (*.jpg)\t*.jpg\t"
                                                 "TIFF Pictures (*.tif)\t*.tif\t"
                                                 "Windows Bitmaps (*.bmp)\t*.bmp\t"),
                                  true);
    if (path.isEmpty()) return;
    QString reason;
    const bool saved = SaveBitmapImage(picture, path, &reason);
    pane.Say(saved ? QStringLiteral("Picture saved.")
                   : QStringLiteral("Error saving picture: %1.").arg(reason));
}

}  // namespace

void RegisterPictureTaking(CommandRegistry& commands, const Player& player, const UserDialogs& dialogs,
                           MessagePane& pane) {
    const auto chosen = std::make_shared<int>(0);
    commands.Add(
        {.first = kCmdCopyPicture,
         .last = kCmdSavePicture,
         .run =
             [&player, chosen](int id) {
                 *chosen = id;
                 player.currentRun->pictureRequested = 1;
             },
         .isAvailable = [&player](int) { return player.currentRun && player.currentRun->framesDrawn > 0; }});
    commands.Add(kCmdPictureTaken, [&player, &dialogs, &pane, chosen] {
        // A run that was ended meanwhile took its picture along.
        const BitmapRef picture = player.currentRun ? player.currentRun->picture.Exchange(nullptr) : nullptr;
        if (!picture) return;
        if (*chosen == kCmdCopyPicture)
            Copy(*picture, pane);
        else
            Save(*picture, dialogs, pane);
    });
}

}  // namespace pixelgrove
