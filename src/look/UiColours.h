// The colours of the user interface: a table of 21 rows with built-in values, which the file Globals.XML
// replaces. The program never writes that file.
//
// A colour is 0x00BBGGRR. Pure but for reading the file; the table belongs to the main thread.
#pragma once

#include <QString>
#include <array>
#include <cstdint>

namespace pixelgrove {

// Rows of the table.
enum class UiColour : uint32_t {
    MeterHigh,
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

// Reads the element UIColors; each row's element has the row's name with '_' for the blanks. A row that is
// missing takes the value that was read last before it; rows ahead of the first one that is there keep what
// they have. False, with no change, when the file can't be read or has no such element.
bool LoadUiColours(const QString& path, UiColours& colours);

}  // namespace pixelgrove
