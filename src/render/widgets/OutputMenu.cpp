#include "render/widgets/OutputMenu.h"

#include <QAction>
#include <QMenu>

#include "commands/Commands.h"

namespace pixelgrove {
namespace {

struct SizeEntry {
    const char16_t* text;
    int width, height;
};

// In the order of the commands from kCmdWindowSizeFirst. The commas at two ends belong to the texts.
constexpr SizeEntry kSizes[] = {
    {u"640 x 480 (480p)", 640, 480},   {u"720 x 480", 720, 480},
    {u"800 x 600", 800, 600},          {u"1024 x 768", 1024, 768},
    {u"1280 x 720 (720p)", 1280, 720}, {u"1280 x 800,", 1280, 800},
    {u"1280 x 1024", 1280, 1024},      {u"1360 x 768,", 1360, 768},
    {u"1400 x 1050", 1400, 1050},      {u"1600 x 1200", 1600, 1200},
    {u"1680 x 1050", 1680, 1050},      {u"1920 x 1080 (1080p)", 1920, 1080},
    {u"1920 x 1200", 1920, 1200},      {u"2560 x 1440 (1440p)", 2560, 1440},
};
static_assert(std::size(kSizes) == kCmdWindowSizeLast - kCmdWindowSizeFirst + 1);

// In the order of the commands from kCmdRecordForFirst.
constexpr const char16_t* kRecordings[] = {u"Record for 10 seconds", u"Record for 20 seconds",
                                           u"Record for 30 seconds", u"Record for 1 minute",
                                           u"Record w/manual stop"};
static_assert(std::size(kRecordings) == kCmdRecordForLast - kCmdRecordForFirst + 1);

}  // namespace

void FillOutputMenu(QMenu& menu, bool alwaysOnTop, bool fullScreen, bool (*isAvailable)(int commandId)) {
    auto add = [isAvailable](QMenu* to, const char16_t* text, int commandId) {
        QAction* action = to->addAction(QString::fromUtf16(text));
        action->setData(commandId);
        action->setEnabled(isAvailable(commandId));
        return action;
    };
    QMenu* sizes = menu.addMenu(QStringLiteral("Window Size"));
    for (int i = 0; i < int(std::size(kSizes)); ++i) {
        add(sizes, kSizes[i].text, kCmdWindowSizeFirst + i);
    }
    QMenu* recording = menu.addMenu(QStringLiteral("Recording"));
    for (int i = 0; i < int(std::size(kRecordings)); ++i) {
        add(recording, kRecordings[i], kCmdRecordForFirst + i);
    }
    const auto addTick = [&](const char16_t* text, int commandId, bool ticked) {
        QAction* action = add(&menu, text, commandId);
        action->setCheckable(true);
        action->setChecked(ticked);
    };
    addTick(u"Always on Top", kCmdAlwaysOnTop, alwaysOnTop);
    add(&menu, u"8K Screen Capture", kCmdScreenCapture8k);
    addTick(u"Full Screen\tF11", kCmdFullScreen, fullScreen);
}

std::optional<QSize> OutputMenuSize(int commandId) {
    if (commandId < kCmdWindowSizeFirst || commandId > kCmdWindowSizeLast) return std::nullopt;
    const SizeEntry& entry = kSizes[commandId - kCmdWindowSizeFirst];
    return QSize(entry.width, entry.height);
}

}  // namespace pixelgrove
