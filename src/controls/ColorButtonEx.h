// ColorButtonEx.h - an owner-drawn push button with its own colours, an
// optional image, four border styles, a tool tip and a size-to-content step.
//
//   CColorButtonEx button;
//   button.SubclassDlgItem(IDC_PICK, dialog);      // becomes BS_OWNERDRAW
//   button.m_borderStyle = 1;                      // flat until hovered
//   button.SetBkColor(RGB(255, 255, 224));
//   button.SetImage(::LoadIcon(nullptr, IDI_INFORMATION));
//   button.SetTooltip(L"选择颜色");
//   button.SizeToContent(0);
//
// Border styles: 0 always a 3-D frame, 1 flat with a one-pixel raised frame
// while the mouse is over it, 2 semi-flat (one frame, two while hot), 3 no
// border. While pressed the frame is sunken and the content moves by the
// pressed offset (2, 2), except in style 3.
//
// SetBkColor and SetTxtColor repaint at once; SetTextColor and
// SetTextHotColor only store the colour, which shows at the next repaint.
// Callers rely on that difference to batch several changes.
//
// A bitmap image gets a disabled variant: a copy in which every pixel of the
// system button-face colour is white, drawn with the disabled effect so that
// the face shows through it.
#pragma once
#include "platform/win/Controls.h"

class QM_API CColorButtonEx : public CButton
{
    DECLARE_DYNAMIC(CColorButtonEx)
public:
    CColorButtonEx();
    ~CColorButtonEx() override;

    // Images replace the previous ones (CleanUp); with ownsImages the button
    // destroys them when they are replaced or the button goes.
    void SetImage(HICON normal, int ownsImages = 0, HICON hot = nullptr);
    void SetImage(HBITMAP normal, int ownsImages = 0, HBITMAP hot = nullptr);
    // Bitmaps of the library's module; normalId 0 only clears the images.
    void SetImage(UINT normalId, UINT hotId = 0);
    virtual void CleanUp();
    // Builds the disabled variant of the normal bitmap: 1 on success, 0 when
    // there is no normal bitmap or GDI refused.
    virtual int CreateDisabledImage();

    void SetBkColor(DWORD colour);
    void SetTxtColor(DWORD colour);
    void SetTextColor(DWORD colour);
    void SetTextHotColor(DWORD colour);

    // With a text: creates the tool tip on first use, else updates its text,
    // and activates it. Null deactivates an existing tool tip.
    void SetTooltip(LPCWSTR text);
    CToolTipCtrl& GetToolTipCtrl() { return m_toolTip; }
    // 1 while the left button holds the button down with the mouse over it.
    int IsPressed() const { return m_pressed && m_hot ? 1 : 0; }

    // The size that fits the text and image with a 5-pixel margin; the
    // window takes it unless noResize.
    virtual CSize SizeToContent(int noResize);

    void DrawItem(LPDRAWITEMSTRUCT item) override;
    virtual void OnDraw(CDC* dc, const CRect& rect, UINT itemState);
    virtual void OnDrawFocusRect(CDC* dc, const CRect& rect);
    BOOL PreTranslateMessage(MSG* msg) override;
    virtual void Disable() { EnableWindow(FALSE); }
    virtual void Enable() { EnableWindow(TRUE); }

    BOOL OnEraseBkgnd(CDC*) { return TRUE; }
    void OnCancelMode();
    void OnMouseMove(UINT flags, CPoint point);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnEnable(BOOL enable);

    static constexpr COLORREF kNoColor = 0xFFFFFFFF;

    int m_displayMode = 2;   // 0 image only, 1 text only, 2 image and text
    int m_borderStyle = 1;   // 0 3-D, 1 flat, 2 semi-flat, 3 none
    int m_imageOnRight = 0;

protected:
    BOOL PreCreateWindow(CREATESTRUCTW& cs) override;
    void PreSubclassWindow() override;

    int m_pressed = 0;
    int m_hot = 0;
    int m_captured = 0;
    int m_mouseInside = 0;
    int m_imageWidth = 0, m_imageHeight = 0;
    HICON m_icon = nullptr;
    HBITMAP m_bitmap = nullptr;
    HICON m_hotIcon = nullptr;
    HBITMAP m_hotBitmap = nullptr;
    HBITMAP m_disabledBitmap = nullptr;
    int m_ownsImages = 0;
    CToolTipCtrl m_toolTip;

public:
    int m_pressedOffsetX = 2, m_pressedOffsetY = 2;

protected:
    COLORREF m_textColor = kNoColor;
    COLORREF m_hotTextColor = kNoColor;
    COLORREF m_bkColor;
    COLORREF m_fallbackTextColor;

private:
    void Repaint();
    void TakeCapture();
    void DropCapture();
    void DrawBorder(CDC* dc, CRect& rect, UINT itemState) const;
    CRect ImageRect(const CRect& rect, bool withText) const;
    void DrawImage(CDC* dc, const CRect& imageRect, UINT itemState) const;

    DECLARE_MESSAGE_MAP()
};
