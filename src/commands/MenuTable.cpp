#include "commands/MenuTable.h"

#include <algorithm>
#include <iterator>

#include "commands/Commands.h"

namespace pixelgrove {

namespace {

using enum MenuRowKind;

// New has no key: it asks nothing, and a slip of the hand would take the text away.
constexpr MenuRow kMenuBar[] = {
    {Menu, 0, u"&FIle"},
    {Entry, kCmdNew, u"&New"},
    {Entry, kCmdRestorePrevious, u"Res&tore Previous Project"},
    {Separator},
    {Entry, kCmdOpenFile, u"&Open File...", "Ctrl+Shift+O"},
    {Entry, kCmdSaveFileAs, u"&Save File As..."},
    {Separator},
    {Entry, kCmdOpenProject, u"Open Project...", "Ctrl+O"},
    {Entry, kCmdSaveProject, u"Sa&ve Project", "Ctrl+S"},
    {Entry, kCmdSaveProjectAs, u"&Save Project As", "Ctrl+Shift+S"},
    {Tick, kCmdReloadWhenChanged, u"Re&load when Changed on Disk"},
    {Separator},
    {Menu, 0, u"Recent Files"},
    {Placeholder, 0, u"N/A"},
    {End},
    {Menu, 0, u"Recent Projects"},
    {Placeholder, 0, u"N/A"},
    {End},
    {Menu, 0, u"Recent Palette Files"},
    {Placeholder, 0, u"N/A"},
    {End},
    {Separator},
    {Entry, kCmdLoadPalette, u"Load Palette..."},
    {Separator},
    {Entry, kCmdCancel, u"E&xit", "Ctrl+Q"},
    {End},

    {Menu, 0, u"&Edit"},
    {FocusEntry, kCmdEditUndo, u"Undo", "Ctrl+Z"},
    {FocusEntry, kCmdEditRedo, u"Redo", "Ctrl+Y; Ctrl+Shift+Z"},
    {Separator},
    {FocusEntry, kCmdEditCut, u"Cut", "Ctrl+X"},
    {FocusEntry, kCmdEditCopy, u"Copy", "Ctrl+C"},
    {FocusEntry, kCmdEditPaste, u"Paste", "Ctrl+V"},
    {Entry, kCmdPasteProject, u"Paste Project", "Ctrl+Shift+V"},
    {FocusEntry, kCmdEditDelete, u"Delete"},
    {Separator},
    {FocusEntry, kCmdEditSelectAll, u"Select All", "Ctrl+A"},
    {Separator},
    {Entry, kCmdFind, u"&Find", "Ctrl+F"},
    {Entry, kCmdFindNext, u"Find Next", "F3"},
    {Entry, kCmdFindPrevious, u"Find Previous", "Shift+F3"},
    {Entry, kCmdReplace, u"&Replace", "Ctrl+H"},
    {Entry, kCmdGoToLine, u"&Go to Line...", "Ctrl+G"},
    {Separator},
    {FocusEntry, kCmdToggleComments, u"Comment Lines", "Ctrl+/"},
    {FocusEntry, kCmdDuplicate, u"Duplicate Line", "Ctrl+D"},
    {FocusEntry, kCmdMoveLinesUp, u"Move Lines Up", "Alt+Up"},
    {FocusEntry, kCmdMoveLinesDown, u"Move Lines Down", "Alt+Down"},
    {Separator},
    {Menu, 0, u"Zoom"},
    {Entry, kCmdZoomIn, u"Larger", "Ctrl++; Ctrl+="},
    {Entry, kCmdZoomOut, u"Smaller", "Ctrl+-"},
    {Entry, kCmdZoomNormal, u"Normal Size", "Ctrl+0"},
    {End},
    {Separator},
    {Menu, 0, u"Frame Buffer Format"},
    {Tick, kCmdFormatRgba8, u"GL_RGBA8"},
    {Tick, kCmdFormatRgb8, u"GL_RGB8"},
    {Tick, kCmdFormatRgba16f, u"GL_RGBA16F"},
    {Tick, kCmdFormatRgb16f, u"GL_RGB16F"},
    {Tick, kCmdFormatRgba16, u"GL_RGBA16"},
    {Tick, kCmdFormatRgb16, u"GL_RGB16"},
    {Tick, kCmdFormatRgba32f, u"GL_RGBA32F"},
    {End},
    {Tick, kCmdUseGdiDisplay, u"Use GDI for display"},
    {Tick, kCmdShowChannelBuffers, u"Show channel buffers when animating"},
    {Menu, 0, u"Multisample"},
    {Tick, kCmdMultisampleNone, u"None"},
    {Tick, kCmdMultisample2, u"2x"},
    {Tick, kCmdMultisample4, u"4x"},
    {Tick, kCmdMultisample8, u"8x"},
    {Tick, kCmdMultisample16, u"16x"},
    {Tick, kCmdMultisample32, u"32x"},
    {End},
    {End},

    {Menu, 0, u"&Windows"},
    {Tick, kCmdAnimationWindow, u"Animation Window"},
    {Tick, kCmdShadertoyBrowser, u"Shadertoy Browser"},
    {Tick, kCmdAudioConfiguration, u"Audio Configuration"},
    {Entry, kCmdRecordingSettings, u"&Recording Settings"},
    {Separator},
    {Entry, kCmdLoadLayout, u"Load Layout"},
    {Entry, kCmdSaveLayout, u"Save Layout"},
    {Menu, 0, u"Window Layouts"},
    {Placeholder, 0, u"N/A"},
    {End},
    {Separator},
    {Tick, kCmdLockWindows, u"&Move/Size Windows Together"},
    {Tick, kCmdSnapToEdges, u"Window &Snap-to-Edge"},
    {Separator},
    {Entry, kCmdNextPane, u"Next Pane", "F6"},
    {Entry, kCmdPreviousPane, u"Previous Pane", "Shift+F6"},
    {Entry, kCmdNextStage, u"Next Stage", "Ctrl+Tab"},
    {Entry, kCmdPreviousStage, u"Previous Stage", "Ctrl+Shift+Tab"},
    {End},

    {Menu, 0, u"&Sites"},
    {Entry, kCmdSiteBookOfShaders, u"Book of Shaders"},
    {Entry, kCmdSiteGlslSandbox, u"GLSL Sandbox"},
    {Entry, kCmdSiteShadertoy, u"Shadertoy"},
    {Entry, kCmdSiteOneShader, u"OnseShader"},
    {End},

    {Menu, 0, u"&Help"},
    {Entry, kCmdHelp, u"&Help", "F1"},
    {Entry, kCmdLicense, u"&License"},
    {Entry, kCmdAbout, u"&About"},
    {End},
};

constexpr MenuRow kEditorMenu[] = {
    {Entry, kCmdEditUndo, u"Undo"},
    {Entry, kCmdEditRedo, u"Redo"},
    {Separator},
    {Entry, kCmdEditCut, u"Cut"},
    {Entry, kCmdEditCopy, u"Copy"},
    {Entry, kCmdEditPaste, u"Paste"},
    {Entry, kCmdEditDelete, u"Delete"},
    {Separator},
    {Entry, kCmdEditSelectAll, u"Select All"},
    {Separator},
    {Entry, kCmdShaderHelp, u"Shader Help"},
    {Separator},
    {Entry, kCmdInsertDefines, u"Insert #defines in text"},
    {Entry, kCmdLoadDefines, u"Load #defines from text"},
    {Separator},
    {Entry, kCmdCreateControl, u"Create Control"},
    {Separator},
    {Entry, kCmdIndentSelection, u"Indent Selection"},
};

// The commas at two ends belong to the texts.
constexpr MenuRow kOutputMenu[] = {
    {Menu, 0, u"Window Size"},
    {Entry, kCmdSize640x480, u"640 x 480 (480p)"},
    {Entry, kCmdSize720x480, u"720 x 480"},
    {Entry, kCmdSize800x600, u"800 x 600"},
    {Entry, kCmdSize1024x768, u"1024 x 768"},
    {Entry, kCmdSize1280x720, u"1280 x 720 (720p)"},
    {Entry, kCmdSize1280x800, u"1280 x 800,"},
    {Entry, kCmdSize1280x1024, u"1280 x 1024"},
    {Entry, kCmdSize1360x768, u"1360 x 768,"},
    {Entry, kCmdSize1400x1050, u"1400 x 1050"},
    {Entry, kCmdSize1600x1200, u"1600 x 1200"},
    {Entry, kCmdSize1680x1050, u"1680 x 1050"},
    {Entry, kCmdSize1920x1080, u"1920 x 1080 (1080p)"},
    {Entry, kCmdSize1920x1200, u"1920 x 1200"},
    {Entry, kCmdSize2560x1440, u"2560 x 1440 (1440p)"},
    {End},
    {Menu, 0, u"Recording"},
    {Entry, kCmdRecordFor10s, u"Record for 10 seconds"},
    {Entry, kCmdRecordFor20s, u"Record for 20 seconds"},
    {Entry, kCmdRecordFor30s, u"Record for 30 seconds"},
    {Entry, kCmdRecordFor60s, u"Record for 1 minute"},
    {Entry, kCmdRecordManualStop, u"Record w/manual stop"},
    {End},
    {Tick, kCmdAlwaysOnTop, u"Always on Top"},
    {Entry, kCmdScreenCapture8k, u"8K Screen Capture"},
    {Entry, kCmdCopyPicture, u"Copy Picture"},
    {Entry, kCmdSavePicture, u"Save Picture..."},
    {Tick, kCmdFullScreen, u"Full Screen", "F11"},
};

constexpr MenuRow kBrowserMenu[] = {
    {Menu, 0, u"File"},
    {Entry, kCmdOpenPlaylist, u"&Open Playlist..."},
    {Entry, kCmdSavePlaylist, u"&Save Playlist..."},
    {Menu, 0, u"Recent Playlists"},
    {Placeholder, 0, u"N/A"},
    {End},
    {End},
};

// The first two rows are there for a channel in use.
constexpr MenuRow kChannelMenu[] = {
    {Entry, kChannelMenuReset, u"Reset Channel"},
    {Separator},
    {Menu, 0, u"Misc"},
    {Entry, kChannelMenuBufferA, u"Buffer A"},
    {Entry, kChannelMenuBufferB, u"Buffer B"},
    {Entry, kChannelMenuBufferC, u"Buffer C"},
    {Entry, kChannelMenuBufferD, u"Buffer D"},
    {Entry, kChannelMenuCubeA, u"Cubemap A"},
    {Entry, kChannelMenuKeyboard, u"Keyboard"},
    {Entry, kChannelMenuWebcam, u"Webcam"},
    {Entry, kChannelMenuAudio, u"Audio"},
    {End},
    {Entry, kChannelMenuTexture, u"Texture..."},
    {Entry, kChannelMenuCubemap, u"Cubemap..."},
    {Entry, kChannelMenuVolume, u"Volume..."},
};

constexpr MenuRow kStageMenu[] = {{Entry, kStageMenuRemove, u"Remove Buffer"}};

// The tool tips of Play and Stop name them.
constexpr KeyRow kKeyRows[] = {{kCmdPlayAnew, "F5; Ctrl+Return; Ctrl+Enter"}, {kCmdStop, "Shift+F5"}};

}  // namespace

std::span<const MenuRow> MenuBarRows() {
    return kMenuBar;
}

std::span<const MenuRow> EditorMenuRows() {
    return kEditorMenu;
}

std::span<const MenuRow> OutputMenuRows() {
    return kOutputMenu;
}

std::span<const MenuRow> BrowserMenuRows() {
    return kBrowserMenu;
}

std::span<const MenuRow> ChannelMenuRows(bool inUse) {
    return std::span(kChannelMenu).subspan(inUse ? 0 : 2);
}

std::span<const MenuRow> StageMenuRows() {
    return kStageMenu;
}

std::span<const KeyRow> KeyRows() {
    return kKeyRows;
}

QString FirstKeyOf(int commandId) {
    const auto* row = std::ranges::find(kMenuBar, commandId, &MenuRow::commandId);
    if (row == std::end(kMenuBar)) return {};
    return QString::fromLatin1(row->keys).section(QLatin1String("; "), 0, 0);
}

}  // namespace pixelgrove
