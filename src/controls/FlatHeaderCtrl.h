// FlatHeaderCtrl.h - a report list's column header that paints itself flat,
// keeps limits and a tool tip per column, can fit and fill column widths,
// and moves columns by its own drag and drop.
//
//   CFlatHeaderCtrl m_header;                              // member of the dialog
//   m_header.SubclassWindow(m_list.GetHeaderCtrl()->GetSafeHwnd());
//   HDITEMEX ex;
//   m_header.GetItemEx(0, &ex);
//   ex.nStyle |= HDF_EX_FIXEDWIDTH;                        // column 0 keeps its width
//   m_header.SetItemEx(0, &ex);
//   m_header.SetProperty(FH_PROPERTY_AUTOSIZE, 1);         // columns fill the list
//   m_header.SetSortColumn(1, TRUE);                       // sort mark, pointing up
//
// Works on the header of any report list (or on a header of its own): one
// extended record per column is kept in step with the items through
// HDM_INSERTITEM and HDM_DELETEITEM; columns present when the header is
// subclassed get fresh records.
//
// Dragging a column body past the drag threshold (HDS_DRAGDROP) sends the
// parent HDN_BEGINDRAG; a non-zero answer means the parent runs the drag
// itself, and the header then only keeps the mouse until the release. Else a
// floating picture of the column follows the cursor (CFHDragWnd) and a red
// arrow-shaped marker (CFHDropWnd) shows the gap the column would drop into;
// dropping on the column's own place or the next moves nothing and shows no
// marker. The release sends HDN_ENDDRAG; a non-zero answer keeps the order.
// Released outside the header, nothing moves: a drop the user cannot see on
// the header never reorders the columns. A column with HDF_EX_PERSISTENT
// released over the drop-target window (property 5) moves nothing either;
// the parent learns of the drop from HDN_ENDDRAG and does what it means.
//
// In auto-size mode (property 7) the columns always fill the parent's client
// width, each within its minimum and maximum; rounding leftovers go one pixel
// at a time to successive columns. Resizing a divider there clips the cursor
// so that the columns after it can still keep their limits.
//
// Long tool-tip texts are shown whole: a text that does not fit the
// notification's 80-character buffer is handed over by pointer instead.
#pragma once
#include "platform/Collections.h"
#include "platform/win/Controls.h"

// Extended column styles (HDITEMEX::nStyle).
constexpr UINT HDF_EX_AUTOWIDTH = 0x0001;    // width computed from the content
constexpr UINT HDF_EX_INCLUDESORT = 0x0002;  // ... with room for the sort mark
constexpr UINT HDF_EX_FIXEDWIDTH = 0x0004;   // cannot be resized
constexpr UINT HDF_EX_PERSISTENT = 0x0010;   // may be dragged onto the drop-target window

// The extended record of one column. A maximum below 1 means none.
typedef struct _HDITEMEX
{
    UINT nStyle = 0;
    int iMinWidth = 0;
    int iMaxWidth = 0;
    CString strToolTip;
} HDITEMEX, *LPHDITEMEX;

// One column of an auto-size pass.
struct structFHAutoSize
{
    int iItem;
    int iWidth;
    int iMinWidth;
    int iMaxWidth;
};

// Property numbers of CFlatHeaderCtrl::SetProperty.
enum FLATHEADER_PROPERTIES
{
    FH_PROPERTY_SPACING = 1,         // gap between the parts of an item, pixels
    FH_PROPERTY_ARROW = 2,           // sort mark: width in the low, height in the high 16 bits
    FH_PROPERTY_STATICBORDER = 3,    // non-zero: the layout reaches under the list's border
    FH_PROPERTY_DONTDROPCURSOR = 4,  // cursor resource id of the application; 0: IDC_NO
    FH_PROPERTY_DROPTARGET = 5,      // window (HWND) that columns with HDF_EX_PERSISTENT may be dropped on
    FH_PROPERTY_ENABLETOOLTIPS = 6,  // EnableToolTips(value)
    FH_PROPERTY_AUTOSIZE = 7,        // columns fill the parent's width; 1 fits them at once
};

class CFHDragWnd;
class CFHDropWnd;

class QM_API CFlatHeaderCtrl : public CHeaderCtrl
{
    friend class CFHDragWnd;

public:
    CFlatHeaderCtrl();
    ~CFlatHeaderCtrl() override;

    // FALSE when the column does not exist; a negative column throws
    // CInvalidArgException*. A fixed column reports its width as both limits.
    BOOL GetItemEx(int column, HDITEMEX* item) const;
    // Fits (HDF_EX_AUTOWIDTH) and limits the width, then keeps the record;
    // FALSE for a missing column.
    BOOL SetItemEx(int column, const HDITEMEX* item);
    // FALSE, and nothing repainted, for a number outside 1 to 7.
    BOOL SetProperty(int property, LPARAM value);
    // The sort mark's column (-1: none) and direction; the list sorts.
    void SetSortColumn(int column, BOOL ascending);
    // A header height that replaces the computed one (<= 0: computed).
    void SetHeaderHeight(int height);
    // Paint through an off-screen buffer (the default) or straight on screen.
    void SetDoubleBuffer(BOOL doubleBuffer);

    INT_PTR OnToolHitTest(CPoint point, TOOLINFOW* info) const override;

    using CHeaderCtrl::DrawItem;
    // Draws one item's image, text, sort mark and bitmap into `rect`.
    virtual void DrawItem(CDC* dc, CRect rect, LPHDITEMW item, BOOL sortColumn, BOOL ascending);

protected:
    void PreSubclassWindow() override;

    LRESULT OnInsertItem(WPARAM wParam, LPARAM lParam);
    LRESULT OnDeleteItem(WPARAM wParam, LPARAM lParam);
    LRESULT OnLayout(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetImageList(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetHotDivider(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetFont(WPARAM wParam, LPARAM lParam);
    LRESULT OnGetFont(WPARAM wParam, LPARAM lParam);
    BOOL OnToolTipText(UINT id, NMHDR* header, LRESULT* result);
    LRESULT OnNcHitTest(CPoint point);
    BOOL OnSetCursor(CWnd* wnd, UINT hitTest, UINT message);
    void OnLButtonDown(UINT flags, CPoint point);
    void OnLButtonDblClk(UINT flags, CPoint point);
    void OnLButtonUp(UINT flags, CPoint point);
    void OnMouseMove(UINT flags, CPoint point);
    void OnCancelMode();
    LRESULT OnCaptureChanged(WPARAM, LPARAM newCapture);
    void OnPaint();
    void OnSysColorChange();
    BOOL OnEraseBkgnd(CDC* dc);

    void DrawCtrl(CDC* dc);
    int DrawImage(CDC* dc, CRect rect, LPHDITEMW item, BOOL right);
    int DrawBitmap(CDC* dc, CRect rect, LPHDITEMW item, BOOL right);
    void DrawText(CDC* dc, CRect rect, LPHDITEMW item);
    int DrawArrow(CDC* dc, CRect rect, BOOL ascending, BOOL right);

private:
    void ReadSysColors();
    bool HotDividerIsFixed() const;
    LRESULT SendHeaderNotify(UINT code, int item);
    void BeginDrag(CPoint point);
    void TrackDrag(CPoint point);
    void EndDrag(bool drop);
    void ClipResizeCursor();
    void AutoSize(int resizedItem);
    // Ends whatever the mouse was doing: press, resize or drag.
    void EndGesture();
    void EndPlatformGesture();
    int FitResizedColumn(int resizedOrder, const int* order, int clientWidth, int minimaRight);
    void CollectAutoSize(int first, const int* order, int count);
    void SpreadAutoSize(int available);
    int ContentWidth(LPHDITEMW item, UINT style);
    int TextExtent(LPHDITEMW item);
    int DropGapX(int dropIndex) const;
    void Reorder();
    static int* NewOrderArray(int count);

    BOOL m_bDoubleBuffer = TRUE;
    int m_iSpacing = 6;
    SIZE m_sizeImage{0, 0};
    SIZE m_sizeArrow{8, 8};
    BOOL m_bStaticBorder = FALSE;
    UINT m_nDontDropCursor = 0;
    HWND m_hDropTarget = nullptr;
    CRect m_rcDropTarget;
    int m_iDropResult = -1;  // -1 none, 0 on the header, 1 on the drop target, 2 elsewhere

    int m_iHotIndex = -1;
    int m_iHotOrder = 0;
    BOOL m_bHotItemResizable = FALSE;
    CPoint m_ptHitTest;
    UINT m_nHitTest = 0;
    HDITEMW m_hdiHotItem{};
    wchar_t m_szHotItemText[160] = L"";
    HDITEMEX m_hdiHotItemEx;

    BOOL m_bAutoSize = FALSE;
    BOOL m_bAutoSizing = FALSE;
    BOOL m_bResizing = FALSE;
    int m_iMinWidthRight = 0;
    CArray<structFHAutoSize> m_arrayAutoSize;

    int m_iDropIndex = -1;
    COLORREF m_crDropColor = RGB(255, 0, 0);
    CFHDropWnd* m_pDropWnd = nullptr;

    BOOL m_bButtonDown = FALSE;
    BOOL m_bDragging = FALSE;
    // While the button going up ends the gesture.
    bool m_bReleasing = false;
    // Where the button went down (HHT_... flags), until it goes up.
    UINT m_nPressedHit = 0;
    CFHDragWnd* m_pDragWnd = nullptr;
    UINT m_nClickFlags = 0;
    CPoint m_ptClickPoint;

    BOOL m_bSortAscending = FALSE;
    int m_iSortColumn = -1;
    CArray<HDITEMEX> m_arrayHdrItemEx;

    COLORREF m_cr3DHighLight = 0;
    COLORREF m_cr3DShadow = 0;
    COLORREF m_cr3DFace = 0;
    COLORREF m_crText = 0;

    CFont m_font;
    int m_iHeaderHeight = -1;
    CArray<char> m_tipTextA;  // the ANSI tool tip handed out by pointer

    DECLARE_MESSAGE_MAP()
};

// The floating picture of a column while it is dragged: the item as the
// header draws it, framed, in a disabled pop-up that follows the cursor.
//
//   CFHDragWnd drag;
//   drag.Create(screenRect, &header, column);    // hidden until moved and shown
class QM_API CFHDragWnd : public CWnd
{
public:
    // Throws CResourceException* when the window class cannot be registered.
    BOOL Create(CRect rect, CFlatHeaderCtrl* header, int item);

protected:
    void OnPaint();
    BOOL OnEraseBkgnd(CDC* dc);

private:
    CFlatHeaderCtrl* m_pFlatHeaderCtrl = nullptr;
    int m_iItem = -1;
    HDITEMW m_hdi{};
    wchar_t m_szText[160] = L"";

    DECLARE_MESSAGE_MAP()
};

// The drop marker: two arrows, one from above and one from below, pointing
// at the gap a dragged column would drop into, as a shaped pop-up window in
// the marker's colour.
//
//   CFHDropWnd drop(RGB(255, 0, 0));
//   drop.Create(headerHeight);
//   drop.PlaceAt(CPoint(gapX, headerTop));       // screen coordinates
class QM_API CFHDropWnd : public CWnd
{
public:
    explicit CFHDropWnd(COLORREF colour);

    // Throws CResourceException* when the window class cannot be registered.
    BOOL Create(int headerHeight);
    // Centres the marker on the gap whose top (at the header's top edge) is
    // `gap`, and shows it without activating it.
    void PlaceAt(CPoint gap);

protected:
    BOOL OnEraseBkgnd(CDC* dc);

private:
    CBrush m_brush;
    int m_iHeight = 0;

    DECLARE_MESSAGE_MAP()
};
