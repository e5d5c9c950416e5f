// ColorPickerEx.h - a colour well that opens a palette of 228 colours and
// works as an eyedropper over the whole screen while the palette is open.
//
//   CColorPickerEx picker;
//   picker.SubclassDlgItem(IDC_COLOUR, dialog);   // e.g. an owner-drawn button
//   picker.SetBuddy(::GetDlgItem(hDlg, IDC_COLOUR_TEXT));
//   picker.SetColor(RGB(0x99, 0x66, 0x33));      // buddy shows "996633"
//   // the dialog gets WM_COMMAND (IDC_COLOUR, 0) after every SetColor
//
// Pressing the well opens the palette window ("ColorPalette") under it. The
// palette keeps the mouse capture: moving anywhere on the screen previews
// the colour of the pixel under the pointer, releasing takes it. The strip
// below the grid stands for the colour the palette opened with: releasing
// there changes nothing. A press and release without moving leaves the
// palette open; the next click, anywhere, takes the colour under it. The
// small button in the strip opens the system colour dialog instead.
//
// The picker paints its face while erasing its background and leaves the
// rest to the window it is attached to, so attach it to a control that draws
// nothing of its own, such as an owner-drawn button. A button up that
// reaches the picker while no palette is open (its palette could not be
// made) changes nothing.
#pragma once
#include "platform/win/Wnd.h"

class QM_API CColorPickerEx : public CWnd
{
public:
    CColorPickerEx();
    ~CColorPickerEx() override;

    // Stores the colour, tells the parent (posted WM_COMMAND, code 0, from
    // this control), updates the buddy's text and repaints.
    void SetColor(DWORD colour);
    DWORD GetColor() const { return m_colour; }
    // "RRGGBB", red first, upper-case: 0x00336699 gives "996633".
    void GetColor(CString& text) const;
    // The window whose text mirrors the colour from the next SetColor on.
    void SetBuddy(HWND buddy) { m_buddy = buddy; }

    BOOL OnEraseBkgnd(CDC* dc);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    BOOL OnSetCursor(CWnd* wnd, UINT hitTest, UINT message);

protected:
    // Opens the colour dialog when the palette asks for it.
    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    int CreatePaletteWindow();
    void DestroyPaletteWindow();
    static LRESULT CALLBACK PaletteWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void DrawDropDownMark(CDC* dc, const CRect& well) const;

    HWND m_buddy = nullptr;
    COLORREF m_colour;
    HWND m_palette = nullptr;
    int m_paletteOpen = 0;
    HCURSOR m_eyedropper = nullptr;

    DECLARE_MESSAGE_MAP()
};
