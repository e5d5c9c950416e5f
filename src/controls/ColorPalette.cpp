// ColorPalette.cpp - the palette window of CColorPickerEx: 228 colour cells,
// a preview strip with the hexadecimal text and the more-colours button, and
// the eyedropper that previews any pixel of the screen while it holds the
// mouse capture.
//
// Client layout (the window is 191 x 150 with a one-pixel border): cell
// (c, r) fills (10c, 10r)-(10c+9, 10r+9) and a black grid line follows each
// cell; the strip from y 120 holds the preview well (5, 125)-(40, 143), the
// text at (80, 127) and the button at (167, 126). Positions under the
// pointer are measured from the window's outer corner, which puts the grid
// lines on the multiples of 10.
#include "controls/ColorPalette.h"
#include "controls/ColorPickerEx.h"

#include "frame/Library.h"

#include <array>

namespace {

constexpr int kMoreColoursId = 100;
constexpr int kGridBottom = kPaletteRows * kPaletteCellPitch;  // 120
const RECT kWell{5, 125, 40, 143};
const RECT kStrip{0, 120, 150, 145};

// One palette is open at a time in the process; its state lives here.
struct PaletteState
{
    HWND window = nullptr;
    HWND owner = nullptr;
    bool chosen = false;
    COLORREF current = 0;
    COLORREF original = 0;
    int selected = -1;
    POINTS press{};
    int moved = 0;
    HWND moreColours = nullptr;
    HFONT font = nullptr;
};

PaletteState& Palette()
{
    static PaletteState state;
    return state;
}

std::array<COLORREF, kPaletteColumns * kPaletteRows> BuildCells()
{
    static const BYTE kGreys[kPaletteRows] = {255, 232, 209, 186, 163, 140, 117, 94, 71, 48, 23, 0};
    static const BYTE kLevels[6] = {0, 51, 102, 153, 204, 255};
    std::array<COLORREF, kPaletteColumns * kPaletteRows> cells{};
    for (int row = 0; row < kPaletteRows; ++row)
        cells[static_cast<size_t>(row * kPaletteColumns)] = RGB(kGreys[row], kGreys[row], kGreys[row]);
    int step = 0;  // blue fastest, then green by column, red every six columns
    for (int band = 0; band < 2; ++band)
        for (int column = 1; column < kPaletteColumns; ++column)
            for (int row = band * 6; row < band * 6 + 6; ++row, ++step)
                cells[static_cast<size_t>(row * kPaletteColumns + column)] =
                    RGB(kLevels[step / 36], kLevels[(step / 6) % 6], kLevels[step % 6]);
    return cells;
}

RECT CellRect(int index, int size)
{
    const int left = (index % kPaletteColumns) * kPaletteCellPitch, top = (index / kPaletteColumns) * kPaletteCellPitch;
    return RECT{left, top, left + size, top + size};
}

void FillSolid(HDC dc, const RECT& rect, COLORREF colour)
{
    const COLORREF old = ::SetBkColor(dc, colour);
    ::ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
    ::SetBkColor(dc, old);
}

// Each palette starts with no cell selected, so no focus rectangle is left
// over from the previous one.
void CreateParts(HWND window, const CREATESTRUCTW* cs)
{
    PaletteState& s = Palette();
    s.window = window;
    s.owner = cs->hwndParent;
    s.chosen = false;
    s.current = ::GetSysColor(COLOR_BTNFACE);
    s.selected = -1;
    s.font = ::CreateFontW(-12, 0, 0, 0, FW_NORMAL, 0, 0, 0, GB2312_CHARSET, OUT_STROKE_PRECIS, CLIP_STROKE_PRECIS,
                           DRAFT_QUALITY, VARIABLE_PITCH, L"宋体");
    s.moreColours = ::CreateWindowExW(0, L"BUTTON", L"", WS_CHILD | WS_VISIBLE | BS_OWNERDRAW, 167, 126, 16, 16, window,
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(kMoreColoursId)),
                                      QM::LibraryHandle(), nullptr);
    ::ShowWindow(s.moreColours, SW_SHOW);
}

void DrawGrid(HDC dc)
{
    const HGDIOBJ oldPen = ::SelectObject(dc, ::GetStockObject(BLACK_PEN));
    for (int x = 9; x <= 179; x += kPaletteCellPitch)
    {
        ::MoveToEx(dc, x, 0, nullptr);
        ::LineTo(dc, x, kGridBottom);
    }
    for (int y = 9; y <= 119; y += kPaletteCellPitch)
    {
        ::MoveToEx(dc, 0, y, nullptr);
        ::LineTo(dc, kPaletteWidth - 1, y);
    }
    const RECT strip{0, kGridBottom, kPaletteWidth, kPaletteHeight};
    ::FillRect(dc, &strip, static_cast<HBRUSH>(::GetStockObject(LTGRAY_BRUSH)));
    ::Rectangle(dc, 4, 124, 41, 144);
    ::SelectObject(dc, oldPen);
}

void PaintCells(HWND window)
{
    static const std::array<COLORREF, kPaletteColumns * kPaletteRows> cells = BuildCells();
    const PaletteState& s = Palette();
    PAINTSTRUCT ps{};
    const HDC dc = ::BeginPaint(window, &ps);
    for (int index = 0; index < static_cast<int>(cells.size()); ++index)
        FillSolid(dc, CellRect(index, kPaletteCellPitch - 1), cells[static_cast<size_t>(index)]);
    if (s.selected >= 0)
    {
        const RECT focus = CellRect(s.selected, kPaletteCellPitch);
        ::DrawFocusRect(dc, &focus);
    }
    FillSolid(dc, kWell, s.current);
    wchar_t text[8];
    ::wsprintfW(text, L"#%02X%02X%02X", GetRValue(s.current), GetGValue(s.current), GetBValue(s.current));
    const HGDIOBJ oldFont = ::SelectObject(dc, s.font);
    ::SetBkMode(dc, TRANSPARENT);
    ::TextOutW(dc, 80, 127, text, 7);
    ::SelectObject(dc, oldFont);
    ::EndPaint(window, &ps);
}

// Three overlapping squares, red, green and yellow, one pixel further while
// the button is held down.
void DrawMoreColours(const DRAWITEMSTRUCT* item)
{
    RECT face = item->rcItem;
    ::FillRect(item->hDC, &face, static_cast<HBRUSH>(::GetStockObject(LTGRAY_BRUSH)));
    const bool pressed = item->itemState == (ODS_SELECTED | ODS_FOCUS);
    ::DrawEdge(item->hDC, &face, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    const int shift = pressed ? 1 : 0;
    const HGDIOBJ oldPen = ::SelectObject(item->hDC, ::GetStockObject(BLACK_PEN));
    const COLORREF colours[3] = {RGB(255, 0, 0), RGB(0, 255, 0), RGB(255, 255, 0)};
    for (int i = 0; i < 3; ++i)
    {
        const int at = 3 + 2 * i + shift;
        const HBRUSH brush = ::CreateSolidBrush(colours[i]);
        const HGDIOBJ oldBrush = ::SelectObject(item->hDC, brush);
        ::Rectangle(item->hDC, at - 1, at - 1, at + 6, at + 6);
        ::SelectObject(item->hDC, oldBrush);
        ::DeleteObject(brush);
    }
    ::SelectObject(item->hDC, oldPen);
}

COLORREF PixelUnder(HWND under, POINT p)
{
    RECT outline{};
    ::GetWindowRect(under, &outline);
    const HDC dc = ::GetWindowDC(under);
    const COLORREF colour = ::GetPixel(dc, p.x - outline.left, p.y - outline.top);
    ::ReleaseDC(under, dc);
    return colour;
}

void PostCursor(LPARAM arrow)
{
    ::PostMessageW(Palette().owner, WM_SETCURSOR, 0, arrow);
}

// Moves the selection to `hovered`, repainting what changes.
void Select(HWND window, int hovered, COLORREF colour)
{
    PaletteState& s = Palette();
    if (hovered == s.selected)
        return;
    if (s.selected >= 0)
    {
        const RECT old = CellRect(s.selected, kPaletteCellPitch);
        ::InvalidateRect(window, &old, TRUE);
    }
    if (hovered >= 0)
    {
        s.current = colour;
        const RECT cell = CellRect(hovered, kPaletteCellPitch);
        ::InvalidateRect(window, &cell, TRUE);
    }
    ::InvalidateRect(window, &kStrip, TRUE);
    s.selected = hovered;
}

void TrackPointer(HWND window)
{
    PaletteState& s = Palette();
    POINT p{};
    ::GetCursorPos(&p);
    if (p.x == s.press.x && p.y == s.press.y)
        return PostCursor(0);
    s.moved = 1;
    const HWND under = ::WindowFromPoint(p);
    if (under == nullptr)
        return PostCursor(0);
    const COLORREF colour = PixelUnder(under, p);
    RECT outline{};
    ::GetWindowRect(window, &outline);
    if (!::PtInRect(&outline, p))
    {
        s.current = colour;
        ::InvalidateRect(window, &kStrip, TRUE);
        return PostCursor(0);
    }
    const int x = p.x - outline.left, y = p.y - outline.top;
    int hovered = -1;
    LPARAM arrow = 0;
    if (y < kGridBottom && x % kPaletteCellPitch != 0 && y % kPaletteCellPitch != 0)
        hovered = (y / kPaletteCellPitch) * kPaletteColumns + x / kPaletteCellPitch;
    else if (y >= kGridBottom)
    {
        if (s.current != s.original)
            ::InvalidateRect(window, &kStrip, TRUE);
        s.current = s.original;
        if (under == s.moreColours)
            ::ReleaseCapture();  // so that the button can be clicked
        else
            arrow = 1;
    }
    Select(window, hovered, colour);
    PostCursor(arrow);
}

// A release after moving takes the previewed colour; so does a click made
// where the press was (the press that opened the palette was in screen
// coordinates, so its own release never matches).
void TakeOnRelease(LPARAM lParam)
{
    PaletteState& s = Palette();
    const POINTS at = MAKEPOINTS(lParam);
    if (!s.moved && (at.x != s.press.x || at.y != s.press.y))
        return;
    s.chosen = true;
    ::PostMessageW(s.owner, WM_LBUTTONUP, s.current, lParam);
}

} // namespace

HWND OpenPaletteWindow()
{
    const HWND window = Palette().window;
    return window != nullptr && ::IsWindow(window) ? window : nullptr;
}

bool PaletteChoice(COLORREF* colour)
{
    const PaletteState& s = Palette();
    if (s.chosen && colour != nullptr)
        *colour = s.current;
    return s.chosen;
}

LRESULT CALLBACK CColorPickerEx::PaletteWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    PaletteState& s = Palette();
    switch (message)
    {
    case WM_CREATE:
        CreateParts(window, reinterpret_cast<const CREATESTRUCTW*>(lParam));
        return 0;
    case WM_DESTROY:
        if (window != s.window)
            return 0;
        ::DeleteObject(s.font);
        s.font = nullptr;
        s.window = nullptr;
        ::SendMessageW(s.owner, kPaletteClosed, reinterpret_cast<WPARAM>(window), 0);
        return 0;
    case WM_ERASEBKGND:
        DrawGrid(reinterpret_cast<HDC>(wParam));
        return 1;
    case WM_PAINT:
        PaintCells(window);
        return 0;
    case WM_DRAWITEM:
        if (wParam != kMoreColoursId)
            break;
        DrawMoreColours(reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_COMMAND:
        ::PostMessageW(s.owner, kPaletteWantsDialog, 0, 0);
        return 0;
    case WM_LBUTTONDOWN:
        s.press = MAKEPOINTS(lParam);
        s.moved = 0;
        ::InvalidateRect(window, &kWell, TRUE);
        return 0;
    case WM_MOUSEMOVE:
        TrackPointer(window);
        return 0;
    case WM_LBUTTONUP:
        TakeOnRelease(lParam);
        return 0;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE)
            break;
        TakeOnRelease(lParam);
        return 0;
    case kPaletteSetColour:
        s.current = s.original = static_cast<COLORREF>(wParam);
        return 0;
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
}
