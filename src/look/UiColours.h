// The colours of the user interface: a table of 21 rows with built-in values, which the file Globals.XML
// replaces. The program never writes that file.
//
// A colour is 0x00BBGGRR. Plain records; main thread.
#pragma once

#include <QString>
#include <array>
#include <cstdint>

namespace pixelgrove {

// Rows of the table.
enum class UiColour : uint32_t {
    MeterHigh,  // level meters take the built-in values of these two, whatever the file says
    MeterLow,
    TimerBackground,
    Timer,
    TileOn,
    TileOff,
    WindowText,
    WindowBackground,
    TreeViewBackground,
    TreeViewText,
    TreeViewLine,
    TreeViewRootText,
    TreeViewPlanesBranchText,
    TreeViewPlaneText,
    TreeViewModuleBranchText,
    TreeViewModuleTypeText,
    TreeViewModuleText,
    TreeViewControlText,
    ListViewBackground,
    ListViewText,
    ListViewTextBackground,
    Count,
};

struct UiColours {
    std::array<uint32_t, size_t(UiColour::Count)> values;

    UiColours();  // the built-in values
    uint32_t operator[](UiColour row) const { return values[size_t(row)]; }
};

// "Meter High"; empty for Count.
QString UiColourName(UiColour row);

}  // namespace pixelgrove
