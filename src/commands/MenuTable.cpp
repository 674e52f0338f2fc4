#include "commands/MenuTable.h"

#include <algorithm>
#include <iterator>

#include "commands/Commands.h"

namespace pixelgrove {

namespace {

using enum MenuRowKind;

// New has no key: it asks nothing, and a slip of the hand would take the text away.
constexpr MenuRow kRows[] = {
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
    {Entry, kCmdEditUndo, u"Undo", "Ctrl+Z"},
    {Entry, kCmdEditRedo, u"Redo", "Ctrl+Y; Ctrl+Shift+Z"},
    {Separator},
    {Entry, kCmdEditCut, u"Cut", "Ctrl+X"},
    {Entry, kCmdEditCopy, u"Copy", "Ctrl+C"},
    {Entry, kCmdEditPaste, u"Paste", "Ctrl+V"},
    {Entry, kCmdEditDelete, u"Delete"},
    {Separator},
    {Entry, kCmdEditSelectAll, u"Select All", "Ctrl+A"},
    {Separator},
    {Entry, kCmdFind, u"&Find", "Ctrl+F"},
    {Entry, kCmdFindNext, u"Find Next", "F3"},
    {Entry, kCmdFindPrevious, u"Find Previous", "Shift+F3"},
    {Entry, kCmdReplace, u"&Replace", "Ctrl+H"},
    {Separator},
    {Menu, 0, u"Zoom"},
    {Entry, kCmdZoomIn, u"Larger", "Ctrl++; Ctrl+="},
    {Entry, kCmdZoomOut, u"Smaller", "Ctrl+-"},
    {Entry, kCmdZoomNormal, u"Normal Size", "Ctrl+0"},
    {End},
    {Separator},
    {Menu, 0, u"Frame Buffer Format"},
    {Tick, 115, u"GL_RGBA8"},
    {Tick, 116, u"GL_RGB8"},
    {Tick, 117, u"GL_RGBA16F"},
    {Tick, 118, u"GL_RGB16F"},
    {Tick, 119, u"GL_RGBA16"},
    {Tick, 120, u"GL_RGB16"},
    {Tick, 121, u"GL_RGBA32F"},
    {End},
    {Tick, kCmdUseGdiDisplay, u"Use GDI for display"},
    {Tick, kCmdShowChannelBuffers, u"Show channel buffers when animating"},
    {Menu, 0, u"Multisample"},
    {Tick, 132, u"None"},
    {Tick, 133, u"2x"},
    {Tick, 134, u"4x"},
    {Tick, 135, u"8x"},
    {Tick, 136, u"16x"},
    {Tick, 137, u"32x"},
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
    {Entry, kCmdSiteFirst, u"Book of Shaders"},
    {Entry, kCmdSiteFirst + 1, u"GLSL Sandbox"},
    {Entry, kCmdSiteFirst + 2, u"Shadertoy"},
    {Entry, kCmdSiteLast, u"OnseShader"},
    {End},

    {Menu, 0, u"&Help"},
    {Entry, kCmdLicense, u"&License"},
    {Entry, kCmdAbout, u"&About"},
    {End},
};

}  // namespace

std::span<const MenuRow> MenuTable() {
    return kRows;
}

QString FirstKeyOf(int commandId) {
    const auto* row = std::ranges::find(kRows, commandId, &MenuRow::commandId);
    if (row == std::end(kRows)) return {};
    return QString::fromLatin1(row->keys).section(QLatin1String("; "), 0, 0);
}

}  // namespace pixelgrove
