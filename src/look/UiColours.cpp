#include "look/UiColours.h"

namespace pixelgrove {

namespace {

constexpr size_t kRows = size_t(UiColour::Count);

struct Row {
    const char* name;
    uint32_t colour;
};

// By UiColour.
constexpr std::array<Row, kRows> kBuiltIn = {{
    {"Meter High", 0x5050fa},
    {"Meter Low", 0x50fa50},
    {"Timer Background", 0x501e1e},
    {"Timer", 0xfa9664},
    {"Tile On", 0x32e132},
    {"Tile Off", 0x1e1ea0},
    {"Window Text", 0x8cffff},
    {"Window Background", 0x000000},
    {"TreeView Background", 0x000000},
    {"TreeView Text", 0xc0ff80},
    {"TreeView Line", 0x6edc40},
    {"TreeView Root Text", 0x8cffff},
    {"TreeView Planes Branch Text", 0x8cebff},
    {"TreeView Plane Text", 0x8cc8ff},
    {"TreeView Module Branch Text", 0xdcffbe},
    {"TreeView Module Type Text", 0x78fa78},
    {"TreeView Module Text", 0x5aff5a},
    {"TreeView Control Text", 0x28ff28},
    {"ListView Background", 0x000000},
    {"ListView Text", 0x28ff28},
    {"ListView Text Background", 0x000000},
}};

}  // namespace

UiColours::UiColours() {
    for (size_t i = 0; i < kRows; ++i)
        values[i] = kBuiltIn[i].colour;
}

QString UiColourName(UiColour row) {
    return row < UiColour::Count ? QString::fromLatin1(kBuiltIn[size_t(row)].name) : QString();
}

}  // namespace pixelgrove
