// ColorPalette.h - what the colour picker and its palette window share
// (internal to the library).
//
//   ::PostMessageW(palette, kPaletteSetColour, colour, 0);
#pragma once
#include "QMExport.h"

constexpr const wchar_t* kPaletteClass = L"ColorPalette";
constexpr int kPaletteWidth = 191, kPaletteHeight = 150;
constexpr int kPaletteColumns = 19, kPaletteRows = 12, kPaletteCellPitch = 10;
// Picker to palette: wParam is the picker's colour, now both the previewed
// and the original one.
constexpr UINT kPaletteSetColour = WM_USER + 1;
// Palette to picker: replace the palette by the colour dialog.
constexpr UINT kPaletteWantsDialog = WM_USER + 2;
