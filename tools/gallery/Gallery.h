// Gallery.h - the gallery's pages: one section of the dialog per control
// family, each in a file of its own that registers itself.
//
//   static const bool registered = gallery::AddPage({
//       L"数值编辑框", 200, 90, {{L"EDIT", L"", WS_BORDER, 1101, 60, 14, 60, 12}},
//       [](HWND dialog) { ... attach the library's objects ... },
//       [](HWND dialog, WORD id, WORD code) { return false; }});
//
// Positions of a page's items are relative to its section; the gallery
// lays the sections out two to a row, ordered by their first control id.
// Each page takes control ids of its own hundred (1100s, 1200s, ...).
#pragma once
#include <QMUtil.h>

#include <functional>
#include <vector>

namespace gallery {

struct Item
{
    const wchar_t* className;
    const wchar_t* text;
    DWORD style;  // WS_CHILD | WS_VISIBLE are added
    WORD id;
    short x, y, cx, cy;  // dialog units, inside the section
};

struct Page
{
    const wchar_t* title;
    short cx, cy;  // section size in dialog units
    std::vector<Item> items;
    // WM_INITDIALOG: attach objects and fill the controls.
    std::function<void(HWND dialog)> init;
    // WM_COMMAND; true when the page handled it.
    std::function<bool(HWND dialog, WORD id, WORD code)> command;
    // Where the screenshot should point the mouse (a tool tip), if anywhere.
    WORD hoverId = 0;
    // Any other message (WM_NOTIFY, a control's private message); true when
    // the page handled it, `result` going back to the sender.
    std::function<bool(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result)> message = nullptr;
    // Runs once the dialog is up, before the page's part of the screenshot
    // is taken: puts the page in the state the picture should show (an
    // editor open, a pop-up shown). Pages are posed one after another, each
    // taken as it stands, so one page's pose may undo another's (a pop-up
    // that takes the focus closes a cell editor).
    std::function<void(HWND dialog)> pose = nullptr;
};

bool AddPage(Page page);
const std::vector<Page>& Pages();

// Points the real mouse at a point of a window's client area.
void PointMouse(HWND window, int x, int y);

} // namespace gallery
