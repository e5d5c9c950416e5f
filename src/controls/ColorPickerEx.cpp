// ColorPickerEx.cpp - the picker's face, its palette's life and the colour
// dialog; the palette window itself is in ColorPalette.cpp.
#include "controls/ColorPickerEx.h"

#include "controls/ColorPalette.h"
#include "frame/Library.h"
#include "platform/Throw.h"
#include "platform/win/ColorDialog.h"

#include <algorithm>
#include <vector>

BEGIN_MESSAGE_MAP(CColorPickerEx, CWnd)
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONUP()
    ON_WM_SETCURSOR()
END_MESSAGE_MAP()

namespace {

// The pipette, tip at the bottom left: '#' black, 'o' white, '.' the screen.
const char* const kPipette[16] = {
    "...........####.", "..........#oooo#", "..........#oooo#", ".........##oooo#",
    "........#oo####.", ".......#ooo#....", "......#ooo#.....", ".....#ooo#......",
    "....#ooo#.......", "...#ooo#........", "..#ooo#.........", ".#ooo#..........",
    ".#oo#...........", "#oo#............", "#o#.............", "#...............",
};

// Made only for cursor sizes of 16 to 99 pixels; null otherwise, and the
// arrow serves instead.
HCURSOR MakeEyedropperCursor()
{
    const int width = ::GetSystemMetrics(SM_CXCURSOR), height = ::GetSystemMetrics(SM_CYCURSOR);
    if (width < 16 || width > 99 || height < 16 || height > 99)
        return nullptr;
    const int stride = width / 8;
    std::vector<BYTE> andMask(static_cast<size_t>(width * height / 8), 0xFF);
    std::vector<BYTE> xorMask(andMask.size(), 0x00);
    for (int row = 0; row < 16; ++row)
        for (int col = 0; col < 16; ++col)
        {
            const char pixel = kPipette[row][col];
            const BYTE bit = static_cast<BYTE>(0x80 >> (col % 8));
            const size_t at = static_cast<size_t>(row * stride + col / 8);
            if (pixel != '.')
                andMask[at] = static_cast<BYTE>(andMask[at] & ~bit);
            if (pixel == 'o')
                xorMask[at] = static_cast<BYTE>(xorMask[at] | bit);
        }
    return ::CreateCursor(QM::LibraryHandle(), 0, 15, width, height, andMask.data(), xorMask.data());
}

} // namespace

CColorPickerEx::CColorPickerEx() : m_colour(::GetSysColor(COLOR_BTNFACE)), m_eyedropper(MakeEyedropperCursor())
{
}

CColorPickerEx::~CColorPickerEx()
{
    if (m_paletteOpen)
        DestroyPaletteWindow();
    if (m_eyedropper != nullptr)
        ::DestroyCursor(m_eyedropper);
}

void CColorPickerEx::SetColor(DWORD colour)
{
    m_colour = colour;
    if (CWnd* parent = GetParent())
        parent->PostMessage(WM_COMMAND, MAKEWPARAM(GetDlgCtrlID() & 0xFFFF, 0), reinterpret_cast<LPARAM>(m_hWnd));
    if (m_buddy != nullptr)
    {
        CString text;
        GetColor(text);
        ::SetWindowTextW(m_buddy, text);
    }
    Invalidate();
}

void CColorPickerEx::GetColor(CString& text) const
{
    text.Format(L"%02X%02X%02X", GetRValue(m_colour), GetGValue(m_colour), GetBValue(m_colour));
}

BOOL CColorPickerEx::OnEraseBkgnd(CDC* dc)
{
    CRect well;
    GetClientRect(well);
    if (!m_paletteOpen)
    {
        dc->Draw3dRect(well, RGB(255, 255, 255), ::GetSysColor(COLOR_3DDKSHADOW));
        CRect inner = well;
        inner.DeflateRect(1, 1);
        dc->Draw3dRect(inner, ::GetSysColor(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNFACE));
    }
    well.DeflateRect(3, 3);
    dc->FillSolidRect(well, m_colour);
    DrawDropDownMark(dc, well);
    return TRUE;
}

// A 6 x 3 face-coloured box in the well's bottom-right corner, bevelled
// dark above and left, white below and right, holding a black triangle.
void CColorPickerEx::DrawDropDownMark(CDC* dc, const CRect& well) const
{
    const CRect box(well.right - 7, well.bottom - 4, well.right - 1, well.bottom - 1);
    const COLORREF dark = ::GetSysColor(COLOR_3DDKSHADOW), white = RGB(255, 255, 255);
    dc->FillSolidRect(box.left - 1, box.top - 1, 1, box.Height() + 2, dark);
    dc->FillSolidRect(box.left - 1, box.top - 1, box.Width() + 2, 1, dark);
    dc->FillSolidRect(box.right, box.top, 1, box.Height() + 1, white);
    dc->FillSolidRect(box.left, box.bottom, box.Width() + 1, 1, white);
    dc->FillSolidRect(box, ::GetSysColor(COLOR_BTNFACE));
    for (int row = 0; row < 3; ++row)
        dc->FillSolidRect(box.left + row, box.top + row, 5 - 2 * row, 1, RGB(0, 0, 0));
}

void CColorPickerEx::OnLButtonDown(UINT flags, CPoint point)
{
    CWnd::OnLButtonDown(flags, point);
    ClientToScreen(&point);
    if (CreatePaletteWindow())
        ::PostMessageW(m_palette, WM_LBUTTONDOWN, m_colour, MAKELPARAM(point.x, point.y));
    if (CWnd* parent = GetParent())
    {
        CRect area;
        GetWindowRect(area);
        parent->ScreenToClient(area);
        parent->InvalidateRect(area);
    }
}

// The palette posts its choice as a button-up with the colour in `flags`;
// a real button-up (the user clicking the well while its palette is open)
// closes the palette and keeps the colour. The well, a button underneath,
// took the capture on its press; it is given back either way.
void CColorPickerEx::OnLButtonUp(UINT, CPoint)
{
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    if (!m_paletteOpen)
        return;
    COLORREF chosen = m_colour;
    const bool took = PaletteChoice(&chosen);
    DestroyPaletteWindow();
    if (!took || chosen == m_colour)
        Invalidate();
    else
        SetColor(chosen);
}

BOOL CColorPickerEx::OnSetCursor(CWnd*, UINT hitTest, UINT)
{
    if (m_paletteOpen && m_eyedropper != nullptr && hitTest != HTCLIENT)
        ::SetCursor(m_eyedropper);
    else
        ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    return TRUE;
}

// A palette that went by itself is forgotten; its class is let go once the
// window is gone.
LRESULT CColorPickerEx::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == kPaletteClosed && wParam != 0)
    {
        if (reinterpret_cast<HWND>(wParam) == m_palette)
        {
            m_palette = nullptr;
            m_paletteOpen = 0;
            Invalidate();
            PostMessage(kPaletteClosed, 0, 0);
        }
        return 0;
    }
    if (message == kPaletteClosed)
    {
        if (!m_paletteOpen)
            ::UnregisterClassW(kPaletteClass, QM::LibraryHandle());
        return 0;
    }
    if (message != kPaletteWantsDialog)
        return CWnd::DefWindowProc(message, wParam, lParam);
    DestroyPaletteWindow();
    CColorDialog dialog(0, 0, GetTopLevelParent());
    dialog.m_cc.Flags |= CC_FULLOPEN;
    if (dialog.DoModal() == IDOK)
        SetColor(dialog.GetColor());
    return 0;
}

// The class is registered for each opening and unregistered at each
// closing; one left registered (its palette went with a closed dialog) is
// the same class and serves again.
int CColorPickerEx::CreatePaletteWindow()
{
    if (m_paletteOpen)
        return 1;
    if (const HWND other = OpenPaletteWindow())  // one palette in the process
        ::DestroyWindow(other);
    const HINSTANCE module = QM::LibraryHandle();
    WNDCLASSW cls{};
    cls.style = CS_HREDRAW | CS_VREDRAW;
    cls.lpfnWndProc = &CColorPickerEx::PaletteWndProc;
    cls.hInstance = module;
    cls.hbrBackground = static_cast<HBRUSH>(::GetStockObject(WHITE_BRUSH));
    cls.lpszClassName = kPaletteClass;
    if (!::RegisterClassW(&cls) && ::GetLastError() != ERROR_CLASS_ALREADY_EXISTS)
        AfxThrowResourceException();
    const HDC screen = ::GetDC(nullptr);
    const int screenWidth = ::GetDeviceCaps(screen, HORZRES), screenHeight = ::GetDeviceCaps(screen, VERTRES);
    ::ReleaseDC(nullptr, screen);
    CRect picker;
    GetWindowRect(picker);
    const int x = std::max(0, std::min<int>(picker.left, screenWidth - kPaletteWidth));
    int y = picker.bottom - 1;
    if (y > screenHeight - kPaletteHeight)
        y -= kPaletteHeight;
    // The title keeps its old spelling.
    m_palette = ::CreateWindowExW(WS_EX_TOPMOST, kPaletteClass, L"Palatte", WS_POPUP | WS_VISIBLE | WS_BORDER, x, y,
                                  kPaletteWidth, kPaletteHeight, m_hWnd, nullptr, module, nullptr);
    if (m_palette == nullptr)
        return 0;
    ::PostMessageW(m_palette, kPaletteSetColour, m_colour, 0);
    ::ShowWindow(m_palette, SW_SHOW);
    ::SetCapture(m_palette);
    m_paletteOpen = 1;
    return 1;
}

void CColorPickerEx::DestroyPaletteWindow()
{
    const HWND palette = m_palette;
    m_palette = nullptr;
    m_paletteOpen = 0;
    if (palette != nullptr && ::IsWindow(palette))
        ::DestroyWindow(palette);
    ::UnregisterClassW(kPaletteClass, QM::LibraryHandle());
}
