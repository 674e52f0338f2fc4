#include "ui/PlaybackCommands.h"

#include <QtGlobal>
#include <algorithm>
#include <iterator>
#include <memory>
#include <set>

#include "commands/CommandRegistry.h"
#include "commands/Commands.h"
#include "core/AppState.h"
#include "platform/SharedMemory.h"
#include "ui/Playback.h"
#include "ui/channels/ChannelPanel.h"

namespace pixelgrove {

namespace {

struct FormatRow {
    int commandId;
    uint32_t format;  // GL internal format
    bool isAccepted;
};

// GL_RGB16F stands on the menu and is not accepted: it can't be counted on as a colour target.
constexpr FormatRow kFormats[] = {
    {kCmdFormatRgba8, 0x8058, true},         {kCmdFormatRgb8, 0x8051, true},
    {kCmdFormatRgba16f, 0x881A, true},       {kCmdFormatRgb16f, 0x881B, false},
    {kCmdFormatRgba16, 0x805B, true},        {kCmdFormatRgb16, 0x8054, true},
    {kCmdFormatRgba32f, gl::kRgba32f, true},
};

int CommandOfFormat(uint32_t format) {
    const auto* row = std::ranges::find(kFormats, format, &FormatRow::format);
    return row == std::end(kFormats) ? 0 : row->commandId;
}

// A choice takes the tick of the format in force away and gives the chosen entry one, also where the format
// stays as it was.
void RegisterFormats(CommandRegistry& commands, AppState& app) {
    const auto ticked =
        std::make_shared<std::set<int>>(std::set{CommandOfFormat(app.run->frameBufferFormat)});
    const auto choose = [&app, ticked](int id) {
        ticked->erase(CommandOfFormat(app.run->frameBufferFormat));
        const FormatRow& chosen = *std::ranges::find(kFormats, id, &FormatRow::commandId);
        if (chosen.isAccepted) app.run->frameBufferFormat = chosen.format;
        ticked->insert(id);
    };
    commands.Add(
        {.first = kCmdFormatRgba8, .last = kCmdFormatRgba32f, .run = choose, .isTicked = [ticked](int id) {
             return ticked->contains(id);
         }});
}

void TakeSharedPalette(const PaletteRecord& palette) {
    PaletteBlock block;
    if (palette.shared && palette.shared->Read(&block, sizeof block))
        UnpackPalette(block, *Hold(*palette.table));
}

}  // namespace

void RegisterPlaybackCommands(CommandRegistry& commands, Playback& playback) {
    commands.Add(kCmdPlay, [&playback] { playback.Play(); });
    commands.Add(kCmdPlayAnew, [&playback] { playback.PlayAnew(); });
    commands.Add(kCmdRecord, [&playback] { playback.Record(); });
    commands.Add(kCmdPause, [&playback] { playback.Pause(); });
    commands.Add(kCmdStop, [&playback] { playback.Stop(); });
    commands.Add(kCmdStart, [&playback] { playback.Start(); });
    commands.Add(kCmdCompileResult, [&playback] { playback.OnCompileResult(); });
    commands.Add(kCmdRestart, [&playback] { playback.Restart(); });
    commands.Add(kCmdRandomize, [&playback] { playback.OnRandomize(); });
    commands.Add(kCmdSetStartToCurrent, [&playback] { playback.SetStartToCurrent(); });
    commands.Add(kCmdFpsTarget, [&playback] { playback.CommitFpsTarget(); });
}

void RegisterPictureCommands(CommandRegistry& commands, AppState& app, ChannelPanel& channels) {
    commands.AddToggle(
        kCmdUseGdiDisplay, [&app] { app.run->useGdiDisplay = app.run->useGdiDisplay ? 0 : 1; },
        [&app] { return app.run->useGdiDisplay != 0; });
    commands.AddToggle(
        kCmdShowChannelBuffers,
        [&app, &channels] {
            app.run->showChannelBuffers = app.run->showChannelBuffers ? 0 : 1;
            channels.Refresh();
        },
        [&app] { return app.run->showChannelBuffers != 0; });
    commands.Add(
        {.first = kCmdMultisampleNone,
         .last = kCmdMultisample32,
         .run = [&app](int id) { app.display.multisampleIndex = uint32_t(id - kCmdMultisampleNone); },
         .isTicked =
             [&app](int id) { return uint32_t(id - kCmdMultisampleNone) == app.display.multisampleIndex; }});
    RegisterFormats(commands, app);
    commands.Add(kCmdScreenCapture8k, [&app] { app.run->captureRequested = 1; });
    commands.Add(kCmdPaletteChanged, [&app] { TakeSharedPalette(app.palette); });
}

}  // namespace pixelgrove
