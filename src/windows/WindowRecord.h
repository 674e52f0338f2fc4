// What is known of each top-level window by its name: the rows of the window registry, without the windows.
// They are part of the stored layout; the registry keeps its widgets beside them. Main thread.
#pragma once

#include <QString>
#include <vector>

#include "windows/EdgeRect.h"

namespace pixelgrove {

inline constexpr char16_t kEditWin[] = u"EditWin";
inline constexpr char16_t kOutputWin[] = u"OutputWin";
inline constexpr char16_t kShadertoyWin[] = u"ShadertoyWin";
inline constexpr char16_t kAudioConfigWin[] = u"AudioConfigWin";
inline constexpr char16_t kControlCreatorDlg[] = u"ControlCreatorDlg";

inline constexpr int kMaxWindowName = 63;  // characters of a name
inline constexpr size_t kMaxWindowRows = 64;

// Where a window is, with the fields that layout files store, in their order.
struct WindowPlacement {
    static constexpr int kLength = 44;  // what files give as a placement's length

    int length = 0;  // kLength, else the placement isn't valid and nobody applies it
    int flags = 0;
    int showCommand = 0;  // 0 hidden, 1 normal, 5 shown as it is
    int minimisedX = 0, minimisedY = 0;
    int maximisedX = 0, maximisedY = 0;
    EdgeRect normal;  // the frame when neither minimised nor maximised

    bool IsValid() const { return length == kLength; }
    bool operator==(const WindowPlacement&) const = default;
};
static_assert(sizeof(WindowPlacement) == WindowPlacement::kLength);

enum class WindowPresence {
    None,
    Expected,  // registered, to be created next
    Present
};

struct WindowRecord {
    QString name;
    bool open = false;                 // it is to be open
    WindowPlacement placement;         // last known
    WindowPlacement defaultPlacement;  // as computed at start
    bool live = false;                 // its creation has finished; before that no move is tracked
    WindowPresence window = WindowPresence::None;
};

using WindowRows = std::vector<WindowRecord>;

// The first row of that name, or null. Valid until a row is added.
WindowRecord* FindWindowRow(WindowRows& rows, QStringView name);

// The row of that name, added at the end if missing. Null when the name is empty or longer than
// kMaxWindowName, or there are kMaxWindowRows rows already. Valid until a row is added.
WindowRecord* FindOrAddWindowRow(WindowRows& rows, QStringView name);

}  // namespace pixelgrove
