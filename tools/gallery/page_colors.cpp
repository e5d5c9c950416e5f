// page_colors.cpp - colour buttons in their four border styles (one hot,
// one disabled with its generated image) and a colour picker with a buddy
// edit; the screenshot shows the picker's palette open.
#include "Gallery.h"

namespace {

enum : WORD { IDC_PICKER = 1301, IDC_HEX, IDC_STYLE0, IDC_STYLE1, IDC_STYLE2, IDC_STYLE3, IDC_DISABLED };

CColorPickerEx& Picker()
{
    static CColorPickerEx picker;
    return picker;
}

CColorButtonEx& Button(int index)
{
    static CColorButtonEx buttons[5];
    return buttons[index];
}

// A 16 x 16 swatch on the button face: the face turns white in the
// disabled image and lets the background through.
HBITMAP Swatch(COLORREF colour)
{
    const HDC screen = ::GetDC(nullptr);
    const HDC dc = ::CreateCompatibleDC(screen);
    const HBITMAP bitmap = ::CreateCompatibleBitmap(screen, 16, 16);
    const HGDIOBJ old = ::SelectObject(dc, bitmap);
    const RECT all{0, 0, 16, 16}, inner{3, 3, 13, 13};
    ::FillRect(dc, &all, ::GetSysColorBrush(COLOR_BTNFACE));
    const HBRUSH brush = ::CreateSolidBrush(colour);
    ::FillRect(dc, &inner, brush);
    ::DeleteObject(brush);
    ::SelectObject(dc, old);
    ::DeleteDC(dc);
    ::ReleaseDC(nullptr, screen);
    return bitmap;
}

void Init(HWND dialog)
{
    CWnd* parent = CWnd::FromHandle(dialog);
    Picker().SubclassDlgItem(IDC_PICKER, parent);
    Picker().SetBuddy(::GetDlgItem(dialog, IDC_HEX));
    Picker().SetColor(RGB(0x33, 0x66, 0x99));
    const COLORREF backs[5] = {RGB(255, 255, 224), RGB(224, 240, 255), RGB(232, 255, 232), RGB(255, 232, 240),
                               RGB(240, 240, 240)};
    for (int i = 0; i < 5; ++i)
    {
        CColorButtonEx& button = Button(i);
        button.SubclassDlgItem(IDC_STYLE0 + i, parent);
        button.m_borderStyle = i < 4 ? i : 0;
        button.SetBkColor(backs[i]);
        button.SetImage(Swatch(RGB(200, 40 * i, 40)), 1, nullptr);
        button.SetTextHotColor(RGB(0, 0, 255));
        button.SetTooltip(L"颜色按钮");
    }
    Button(0).SetTextColor(RGB(128, 0, 0));
    Button(4).Disable();
}

// The flat button shows its hover frame; the picker's palette opens as a
// press leaves it. The mouse rests on the picker's own swatch, so the
// colour the palette previews under it is the picker's colour.
void Show(HWND)
{
    Button(1).SendMessage(WM_MOUSEMOVE, 0, MAKELPARAM(4, 4));
    CRect swatch;
    Picker().GetClientRect(swatch);
    gallery::PointMouse(Picker().m_hWnd, swatch.Width() / 3, swatch.Height() / 2);
    Picker().SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
}

const bool registered = gallery::AddPage({
    L"颜色按钮与颜色选择器",
    276,
    124,
    {{L"BUTTON", L"", BS_OWNERDRAW, IDC_PICKER, 8, 2, 30, 14},
     {L"EDIT", L"", ES_AUTOHSCROLL | ES_READONLY | WS_BORDER, IDC_HEX, 44, 3, 50, 12},
     {L"BUTTON", L"立体 (0)", BS_PUSHBUTTON | WS_TABSTOP, IDC_STYLE0, 134, 2, 66, 20},
     {L"BUTTON", L"平面 (1)", BS_PUSHBUTTON | WS_TABSTOP, IDC_STYLE1, 204, 2, 66, 20},
     {L"BUTTON", L"半平面 (2)", BS_PUSHBUTTON | WS_TABSTOP, IDC_STYLE2, 134, 30, 66, 20},
     {L"BUTTON", L"无边框 (3)", BS_PUSHBUTTON | WS_TABSTOP, IDC_STYLE3, 204, 30, 66, 20},
     {L"BUTTON", L"已禁用", BS_PUSHBUTTON | WS_TABSTOP, IDC_DISABLED, 134, 58, 66, 20}},
    &Init,
    nullptr,
    0,
    nullptr,
    &Show});

} // namespace
