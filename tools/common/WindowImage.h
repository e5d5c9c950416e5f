// WindowImage.h - pictures of windows on the screen, written as PNG files:
// what the gallery and the window tests show of the library's controls.
//
//   HBITMAP shot = qmimage::CaptureWindow(dialog);   // as it is on screen now
//   qmimage::SavePng(shot, L"out\\gallery.png");
//   ::DeleteObject(shot);
#pragma once
#include <windows.h>

namespace qmimage {

// A 32-bit top-down copy of the screen under `window` (its whole outline),
// or null when the window does not exist. The caller deletes the bitmap.
HBITMAP CaptureWindow(HWND window);

// Writes `bitmap` as a 24-bit PNG through the Windows Imaging Component;
// COM must be initialised on the calling thread.
HRESULT SavePng(HBITMAP bitmap, const wchar_t* path);

} // namespace qmimage
