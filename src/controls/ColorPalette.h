// ColorPalette.h - what the colour picker and its palette window share
// (internal to the library).
//
//   ::PostMessageW(palette, kPaletteSetColour, colour, 0);
#pragma once
#include "QMExport.h"

#include <windows.h>

constexpr const wchar_t* kPaletteClass = L"ColorPalette";
constexpr int kPaletteWidth = 191, kPaletteHeight = 150;
constexpr int kPaletteColumns = 19, kPaletteRows = 12, kPaletteCellPitch = 10;
// Picker to palette: wParam is the picker's colour, now both the previewed
// and the original one.
constexpr UINT kPaletteSetColour = WM_USER + 1;
// Palette to picker: replace the palette by the colour dialog.
constexpr UINT kPaletteWantsDialog = WM_USER + 2;
// Palette to picker, sent as the palette window goes, however it goes
// (a click, Alt+F4, WM_CLOSE, its owner destroyed): wParam is the palette.
constexpr UINT kPaletteClosed = WM_USER + 3;

// The palette open in the process, or null: one at a time.
HWND OpenPaletteWindow();
// The colour the palette took on a release (the one it posted to its
// owner); false when it took none.
bool PaletteChoice(COLORREF* colour);
