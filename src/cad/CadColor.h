// CadColor.h - the CAD host's 256-entry colour index and RGB colours.
//
//   COLORREF red = QM::CADColorIndexToRGB(1);              // 0x0000FF
//   int index = QM::GetCADColorIndexNearest(250, 10, 10);  // 1
//   int exact = QM::IsStandardCADColor(RGB(255, 255, 255)); // 7
//
// Colours are 0x00BBGGRR, red in the lowest byte. The table holds duplicates
// (1 and 10 are both red, 7 and 255 both white); every search walks upwards
// and keeps the lowest index, so the seven named colours win.
#pragma once
#include "QMExport.h"

namespace QM {

// The colour of `index`; 0xFFFFFFFF for anything outside 0 to 255, negative
// indices included.
QM_API unsigned long CADColorIndexToRGB(int index);

// The index from 1 to 255 at the smallest city-block distance; on a tie the
// lower index. Index 0 is never returned (black gives 18). The components are
// not clamped: values outside 0 to 255 simply count in the distance, which
// wraps in 32-bit arithmetic for absurd inputs instead of being undefined.
QM_API int GetCADColorIndexNearest(long red, long green, long blue);

// The same for a packed colour. Blue is the colour shifted right by 16 bits
// without a mask, so a non-zero top byte makes blue exceed 255: callers of
// long standing pass such values and get the index they always got.
QM_API int GetCADColorIndexNearest(unsigned long colour);

// The first index whose entry equals all 32 bits of `colour`, or -1 (always
// -1 when the top byte is set).
QM_API int IsStandardCADColor(unsigned long colour);

}  // namespace QM
