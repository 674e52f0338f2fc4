// Command and control ids: their one home. Menus and buttons carry the id of the command they run;
// dialog controls carry theirs in the dynamic property "controlId".
#pragma once

namespace pixelgrove {

enum CommandId : int {
    kCmdOk = 1,
    kCmdCancel = 2,
    kCmdPlay = 3,
    kCmdRecord = 4,
    kCmdPause = 5,
    kCmdStop = 6,
    kCmdStart = 7,
    kCmdCompileResult = 122,  // posted by the render thread; data 0 good, 1 failed
    kCmdUseGdiDisplay = 130,
    kCmdShowChannelBuffers = 131,
    kCmdMultisampleNone = 132,
    kCmdMultisample2,
    kCmdMultisample4,
    kCmdMultisample8,
    kCmdMultisample16,
    kCmdMultisample32,
    kCmdFormatRgba8 = 115,
    kCmdFormatRgb8,
    kCmdFormatRgba16f,
    kCmdFormatRgb16f,
    kCmdFormatRgba16,
    kCmdFormatRgb16,
    kCmdFormatRgba32f,
    kCmdRandomize = 1021,
    kCmdSetStartToCurrent = 1022,
    kCmdFpsTarget = 1035,
    kCmdStageImage = 1051,
    kCmdStageAdd = 1052,
    kCmdStageCommon = 1053,
    kCmdStageCubeA = 1058,
    kCmdChannelFirst = 1059,  // 1059..1062: the menu of a channel
    kCmdChannelLast = 1062,
    kCmdRestart = 1113,
    kCmdPaletteChanged = 1428,
    kCmdRecordFor10s = 1559,
    kCmdRecordFor20s,
    kCmdRecordFor30s,
    kCmdRecordFor60s,
    kCmdRecordManualStop,
    kCmdEditUndo = 1550,
    kCmdEditPaste = 1551,
    kCmdEditCopy = 1552,
    kCmdEditCut = 1553,
    kCmdEditDelete = 1554,
    kCmdEditSelectAll = 1555,
    kCmdShaderHelp = 1556,
    kCmdInsertDefines = 1557,
    kCmdLoadDefines = 1558,
    kCmdSize640x480 = 1564,  // of the output window
    kCmdSize720x480,
    kCmdSize800x600,
    kCmdSize1024x768,
    kCmdSize1280x720,
    kCmdSize1280x800,
    kCmdSize1280x1024,
    kCmdSize1360x768,
    kCmdSize1400x1050,
    kCmdSize1600x1200,
    kCmdSize1680x1050,
    kCmdSize1920x1080,
    kCmdSize1920x1200,
    kCmdSize2560x1440,
    kCmdAlwaysOnTop = 1578,
    kCmdScreenCapture8k = 1579,
    kCmdCreateControl = 1580,
    kCmdOpenInclude = 1581,  // the file that the editor menu noted
    kCmdIndentSelection = 1582,
    kCmdRecentFileFirst = 32768,  // each list of recent files has ten, newest first
    kCmdRecentProjectFirst = 32779,
    kCmdRecentPaletteFirst = 32790,
    kCmdRecentPlaylistFirst = 32801,
    kCmdSaveFileAs = 40001,
    kCmdOpenFile = 40002,
    kCmdNew = 40003,
    kCmdSiteBookOfShaders = 40006,
    kCmdSiteGlslSandbox,
    kCmdSiteShadertoy,
    kCmdSiteOneShader,
    kCmdAbout = 40010,
    kCmdFind = 40011,
    kCmdReplace = 40012,
    kCmdAnimationWindow = 40013,
    kCmdLockWindows = 40014,  // move and size windows together
    kCmdLoadLayout = 40017,
    kCmdSaveLayout = 40018,
    kCmdRecordingSettings = 40019,
    kCmdLoadPalette = 40021,
    kCmdSnapToEdges = 40022,
    kCmdShadertoyBrowser = 40024,
    kCmdAudioConfiguration = 40026,
    kCmdSaveProjectAs = 40027,
    kCmdSaveProject = 40028,
    kCmdRestorePrevious = 40029,
    kCmdOpenProject = 40031,
    kCmdOpenPlaylist = 40038,
    kCmdSavePlaylist = 40039,
    kCmdLicense = 40043,
    kCmdLayoutFirst = 40318,  // 40318..40418: layout files by name
    kCmdLayoutLast = 40418,
    kCmdEditRedo = 45001,
    kCmdFindNext = 45002,
    kCmdFindPrevious = 45003,
    kCmdZoomIn = 45004,
    kCmdZoomOut = 45005,
    kCmdZoomNormal = 45006,
    kCmdNextPane = 45007,
    kCmdPreviousPane = 45008,
    kCmdNextStage = 45009,
    kCmdPreviousStage = 45010,
    kCmdPlayAnew = 45011,    // whatever runs is ended first
    kCmdFullScreen = 45012,  // of the output window
    kCmdHelp = 45020,
    kCmdOpenWindows = 45013,  // posted by a layout: those that it has open and that aren't there
    kCmdCopyPicture = 45040,  // of what plays
    kCmdSavePicture = 45041,
    kCmdPictureTaken = 45042,  // posted by the render thread: RenderRun::picture is there
    kCmdPasteProject = 45030,
};

// Entries of the menu of a stage's button.
enum StageMenuId : int {
    kStageMenuRemove = 1,
};

// Entries of a channel's menu: their choice is the menu's result, never a command.
enum ChannelMenuId : int {
    kChannelMenuBufferA = 102,
    kChannelMenuBufferB = 103,
    kChannelMenuBufferC = 104,
    kChannelMenuBufferD = 105,
    kChannelMenuTexture = 106,
    kChannelMenuReset = 114,
    kChannelMenuKeyboard = 123,
    kChannelMenuCubemap = 124,
    kChannelMenuVolume = 125,
    kChannelMenuAudio = 127,
    kChannelMenuWebcam = 128,
    kChannelMenuCubeA = 129,
};

enum ControlId : int {
    kCtlEditor = 1001,
    kCtlStatusText = 1003,
    kCtlLineGutter = 1004,
    kCtlTreeView = 1005,
    kCtlCaretStatus = 1007,
    kCtlCurrentTime = 1019,
    kCtlStartTime = 1020,
    kCtlFpsTarget = 1035,
    kCtlFpsCurrent = 1037,
    kCtlChannelPreview0 = 1072,
    kCtlChannelPreview1 = 1068,
    kCtlChannelPreview2 = 1069,
    kCtlChannelPreview3 = 1070,
    kCtlOpenGlVersion = 1109,
    kCtlOpenGlFeatures = 1110,
};

}  // namespace pixelgrove
