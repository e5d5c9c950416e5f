// Controls.h - the standard controls as MFC wraps them: thin members over
// their messages, nothing kept on the side.
//
//   CListBox box;
//   box.SubclassDlgItem(IDC_LIST, dialog);
//   box.AddString(L"第一项");
//   box.SetCurSel(0);
//
// The wrappers add no data to CWnd, so the CWnd* of GetDlgItem may be used
// through them (static_cast<CEdit*>) as MFC code does. The owner-drawn ones
// (button, list box, combo box, list control, header) receive their
// WM_DRAWITEM (and WM_MEASUREITEM) back from the parent as a call of the
// virtual DrawItem (MeasureItem), which derived classes override.
// Members called on an object without a window answer 0, false or empty.
#pragma once
#include "platform/win/Wnd.h"

class QM_API CEdit : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    DWORD GetSel() const { return static_cast<DWORD>(SendMessage(EM_GETSEL)); }
    void GetSel(int& start, int& end) const;
    void SetSel(int start, int end, BOOL noScroll = FALSE);
    void SetSel(DWORD selection, BOOL noScroll = FALSE) { SetSel(LOWORD(selection), HIWORD(selection), noScroll); }
    void ReplaceSel(const wchar_t* text, BOOL canUndo = FALSE);
    void SetLimitText(UINT max) { SendMessage(EM_SETLIMITTEXT, max); }
    void LimitText(int max = 0) { SendMessage(EM_LIMITTEXT, static_cast<WPARAM>(max)); }
    int GetLineCount() const { return static_cast<int>(SendMessage(EM_GETLINECOUNT)); }
    BOOL SetReadOnly(BOOL readOnly = TRUE) { return static_cast<BOOL>(SendMessage(EM_SETREADONLY, readOnly)); }
    BOOL GetModify() const { return static_cast<BOOL>(SendMessage(EM_GETMODIFY)); }
    void SetModify(BOOL modified = TRUE) { SendMessage(EM_SETMODIFY, modified); }
    void SetMargins(UINT left, UINT right) { SendMessage(EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, MAKELONG(left, right)); }
    void GetRect(LPRECT rect) const { SendMessage(EM_GETRECT, 0, reinterpret_cast<LPARAM>(rect)); }
    void Clear() { SendMessage(WM_CLEAR); }
    void Copy() { SendMessage(WM_COPY); }
    void Cut() { SendMessage(WM_CUT); }
    void Paste() { SendMessage(WM_PASTE); }
    BOOL Undo() { return static_cast<BOOL>(SendMessage(EM_UNDO)); }
};

class QM_API CButton : public CWnd
{
    DECLARE_DYNAMIC(CButton)
public:
    BOOL Create(const wchar_t* caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);
    UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
    void SetState(BOOL highlight) { SendMessage(BM_SETSTATE, highlight); }
    int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
    void SetCheck(int check) { SendMessage(BM_SETCHECK, static_cast<WPARAM>(check)); }
    UINT GetButtonStyle() const { return GetStyle() & 0xFFFF; }
    void SetButtonStyle(UINT style, BOOL redraw = TRUE) { SendMessage(BM_SETSTYLE, style, redraw); }
    HICON SetIcon(HICON icon) { return reinterpret_cast<HICON>(SendMessage(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon))); }
    HBITMAP SetBitmap(HBITMAP bitmap) { return reinterpret_cast<HBITMAP>(SendMessage(BM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(bitmap))); }
    // Owner drawing (BS_OWNERDRAW): the parent's WM_DRAWITEM comes here.
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QM_API CListBox : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetCount() const { return static_cast<int>(SendMessage(LB_GETCOUNT)); }
    int GetCurSel() const { return m_hWnd == nullptr ? LB_ERR : static_cast<int>(SendMessage(LB_GETCURSEL)); }
    int SetCurSel(int index) { return static_cast<int>(SendMessage(LB_SETCURSEL, static_cast<WPARAM>(index))); }
    int AddString(const wchar_t* text) { return static_cast<int>(SendMessage(LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text))); }
    int InsertString(int index, const wchar_t* text)
    {
        return static_cast<int>(SendMessage(LB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(LB_DELETESTRING, index)); }
    void ResetContent() { SendMessage(LB_RESETCONTENT); }
    // First item from after `start` (-1: from the top) that begins with
    // `text`, ignoring case; LB_ERR when none.
    int FindString(int start, const wchar_t* text) const;
    int FindStringExact(int start, const wchar_t* text) const;
    int SelectString(int start, const wchar_t* text);
    int GetText(int index, wchar_t* buffer) const;
    void GetText(int index, CString& text) const;
    int GetTextLen(int index) const { return static_cast<int>(SendMessage(LB_GETTEXTLEN, static_cast<WPARAM>(index))); }
    DWORD_PTR GetItemData(int index) const { return static_cast<DWORD_PTR>(SendMessage(LB_GETITEMDATA, static_cast<WPARAM>(index))); }
    int SetItemData(int index, DWORD_PTR data) { return static_cast<int>(SendMessage(LB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data))); }
    int GetSel(int index) const { return static_cast<int>(SendMessage(LB_GETSEL, static_cast<WPARAM>(index))); }
    int SetSel(int index, BOOL select = TRUE) { return static_cast<int>(SendMessage(LB_SETSEL, select, index)); }
    int GetSelCount() const { return static_cast<int>(SendMessage(LB_GETSELCOUNT)); }
    int GetTopIndex() const { return static_cast<int>(SendMessage(LB_GETTOPINDEX)); }
    int SetTopIndex(int index) { return static_cast<int>(SendMessage(LB_SETTOPINDEX, static_cast<WPARAM>(index))); }
    int GetItemHeight(int index) const { return static_cast<int>(SendMessage(LB_GETITEMHEIGHT, static_cast<WPARAM>(index))); }
    int GetItemRect(int index, LPRECT rect) const { return static_cast<int>(SendMessage(LB_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect))); }
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QM_API CComboBox : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetCount() const { return static_cast<int>(SendMessage(CB_GETCOUNT)); }
    int GetCurSel() const { return m_hWnd == nullptr ? CB_ERR : static_cast<int>(SendMessage(CB_GETCURSEL)); }
    int SetCurSel(int index) { return static_cast<int>(SendMessage(CB_SETCURSEL, static_cast<WPARAM>(index))); }
    int AddString(const wchar_t* text) { return static_cast<int>(SendMessage(CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(text))); }
    int InsertString(int index, const wchar_t* text)
    {
        return static_cast<int>(SendMessage(CB_INSERTSTRING, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(text)));
    }
    int DeleteString(UINT index) { return static_cast<int>(SendMessage(CB_DELETESTRING, index)); }
    void ResetContent() { SendMessage(CB_RESETCONTENT); }
    // First item from after `start` (-1: from the top) that begins with
    // `text`, ignoring case; CB_ERR when none.
    int FindString(int start, const wchar_t* text) const;
    int FindStringExact(int start, const wchar_t* text) const;
    int SelectString(int start, const wchar_t* text);
    int GetLBText(int index, wchar_t* buffer) const;
    void GetLBText(int index, CString& text) const;
    int GetLBTextLen(int index) const { return static_cast<int>(SendMessage(CB_GETLBTEXTLEN, static_cast<WPARAM>(index))); }
    DWORD_PTR GetItemData(int index) const { return static_cast<DWORD_PTR>(SendMessage(CB_GETITEMDATA, static_cast<WPARAM>(index))); }
    int SetItemData(int index, DWORD_PTR data) { return static_cast<int>(SendMessage(CB_SETITEMDATA, static_cast<WPARAM>(index), static_cast<LPARAM>(data))); }
    void ShowDropDown(BOOL show = TRUE) { SendMessage(CB_SHOWDROPDOWN, show); }
    BOOL GetDroppedState() const { return static_cast<BOOL>(SendMessage(CB_GETDROPPEDSTATE)); }
    void GetDroppedControlRect(LPRECT rect) const { SendMessage(CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(rect)); }
    int GetItemHeight(int index) const { return static_cast<int>(SendMessage(CB_GETITEMHEIGHT, static_cast<WPARAM>(index))); }
    int SetItemHeight(int index, UINT height) { return static_cast<int>(SendMessage(CB_SETITEMHEIGHT, static_cast<WPARAM>(index), height)); }
    DWORD GetEditSel() const { return static_cast<DWORD>(SendMessage(CB_GETEDITSEL)); }
    BOOL SetEditSel(int start, int end) { return static_cast<BOOL>(SendMessage(CB_SETEDITSEL, 0, MAKELPARAM(start, end))); }
    BOOL LimitText(int max) { return static_cast<BOOL>(SendMessage(CB_LIMITTEXT, static_cast<WPARAM>(max))); }
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    virtual void MeasureItem(LPMEASUREITEMSTRUCT item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QM_API CHeaderCtrl : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetItemCount() const { return m_hWnd == nullptr ? 0 : static_cast<int>(SendMessage(HDM_GETITEMCOUNT)); }
    BOOL GetItem(int index, HDITEMW* item) const { return static_cast<BOOL>(SendMessage(HDM_GETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item))); }
    BOOL SetItem(int index, HDITEMW* item) { return static_cast<BOOL>(SendMessage(HDM_SETITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item))); }
    int InsertItem(int index, HDITEMW* item) { return m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(HDM_INSERTITEMW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item))); }
    BOOL DeleteItem(int index) { return static_cast<BOOL>(SendMessage(HDM_DELETEITEM, static_cast<WPARAM>(index))); }
    BOOL GetItemRect(int index, LPRECT rect) const { return static_cast<BOOL>(SendMessage(HDM_GETITEMRECT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(rect))); }
    BOOL GetOrderArray(LPINT order, int count) const { return static_cast<BOOL>(SendMessage(HDM_GETORDERARRAY, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(order))); }
    BOOL SetOrderArray(int count, LPINT order) { return static_cast<BOOL>(SendMessage(HDM_SETORDERARRAY, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(order))); }
    int OrderToIndex(int order) const { return static_cast<int>(SendMessage(HDM_ORDERTOINDEX, static_cast<WPARAM>(order))); }
    int HitTest(LPHDHITTESTINFO info) const { return m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(HDM_HITTEST, 0, reinterpret_cast<LPARAM>(info))); }
    BOOL Layout(HDLAYOUT* layout) { return static_cast<BOOL>(SendMessage(HDM_LAYOUT, 0, reinterpret_cast<LPARAM>(layout))); }
    HIMAGELIST GetImageList() const { return reinterpret_cast<HIMAGELIST>(SendMessage(HDM_GETIMAGELIST)); }
    HIMAGELIST SetImageList(HIMAGELIST list) { return reinterpret_cast<HIMAGELIST>(SendMessage(HDM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(list))); }
    int SetHotDivider(CPoint point) { return static_cast<int>(SendMessage(HDM_SETHOTDIVIDER, TRUE, MAKELPARAM(point.x, point.y))); }
    int SetHotDivider(int index) { return static_cast<int>(SendMessage(HDM_SETHOTDIVIDER, FALSE, index)); }
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QM_API CListCtrl : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    int GetItemCount() const { return static_cast<int>(SendMessage(LVM_GETITEMCOUNT)); }
    // The list's own header as a wrapper (an attached object, when one is).
    CHeaderCtrl* GetHeaderCtrl() const;
    DWORD GetExtendedStyle() const { return static_cast<DWORD>(SendMessage(LVM_GETEXTENDEDLISTVIEWSTYLE)); }
    DWORD SetExtendedStyle(DWORD style) { return static_cast<DWORD>(SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0, style)); }

    int InsertColumn(int column, const LVCOLUMNW* info);
    int InsertColumn(int column, const wchar_t* heading, int format = LVCFMT_LEFT, int width = -1, int subItem = -1);
    BOOL DeleteColumn(int column) { return static_cast<BOOL>(SendMessage(LVM_DELETECOLUMN, static_cast<WPARAM>(column))); }
    BOOL GetColumn(int column, LVCOLUMNW* info) const { return static_cast<BOOL>(SendMessage(LVM_GETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(info))); }
    BOOL SetColumn(int column, const LVCOLUMNW* info) { return static_cast<BOOL>(SendMessage(LVM_SETCOLUMNW, static_cast<WPARAM>(column), reinterpret_cast<LPARAM>(info))); }
    int GetColumnWidth(int column) const { return static_cast<int>(SendMessage(LVM_GETCOLUMNWIDTH, static_cast<WPARAM>(column))); }
    BOOL SetColumnWidth(int column, int width) { return static_cast<BOOL>(SendMessage(LVM_SETCOLUMNWIDTH, static_cast<WPARAM>(column), MAKELPARAM(width, 0))); }
    BOOL GetColumnOrderArray(LPINT order, int count) const { return static_cast<BOOL>(SendMessage(LVM_GETCOLUMNORDERARRAY, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(order))); }
    BOOL SetColumnOrderArray(int count, LPINT order) { return static_cast<BOOL>(SendMessage(LVM_SETCOLUMNORDERARRAY, static_cast<WPARAM>(count), reinterpret_cast<LPARAM>(order))); }

    int InsertItem(const LVITEMW* item) { return m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(item))); }
    int InsertItem(int index, const wchar_t* text);
    int InsertItem(int index, const wchar_t* text, int image);
    int InsertItem(UINT mask, int index, const wchar_t* text, UINT state, UINT stateMask, int image, LPARAM param);
    BOOL DeleteItem(int index) { return static_cast<BOOL>(SendMessage(LVM_DELETEITEM, static_cast<WPARAM>(index))); }
    BOOL DeleteAllItems() { return static_cast<BOOL>(SendMessage(LVM_DELETEALLITEMS)); }
    BOOL GetItem(LVITEMW* item) const { return static_cast<BOOL>(SendMessage(LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(item))); }
    BOOL SetItem(const LVITEMW* item) { return static_cast<BOOL>(SendMessage(LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(item))); }
    BOOL SetItem(int index, int subItem, UINT mask, const wchar_t* text, int image, UINT state, UINT stateMask, LPARAM param);
    int GetItemText(int index, int subItem, wchar_t* buffer, int size) const;
    CString GetItemText(int index, int subItem) const;
    BOOL SetItemText(int index, int subItem, const wchar_t* text);
    UINT GetItemState(int index, UINT mask) const { return static_cast<UINT>(SendMessage(LVM_GETITEMSTATE, static_cast<WPARAM>(index), mask)); }
    BOOL SetItemState(int index, UINT state, UINT mask);
    BOOL SetItemState(int index, LVITEMW* item) { return static_cast<BOOL>(SendMessage(LVM_SETITEMSTATE, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(item))); }
    DWORD_PTR GetItemData(int index) const;
    BOOL SetItemData(int index, DWORD_PTR data);
    int GetNextItem(int start, int flags) const { return m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(LVM_GETNEXTITEM, static_cast<WPARAM>(start), MAKELPARAM(flags, 0))); }
    UINT GetSelectedCount() const { return static_cast<UINT>(SendMessage(LVM_GETSELECTEDCOUNT)); }
    int GetSelectionMark() const { return static_cast<int>(SendMessage(LVM_GETSELECTIONMARK)); }
    BOOL EnsureVisible(int index, BOOL partialOK) { return static_cast<BOOL>(SendMessage(LVM_ENSUREVISIBLE, static_cast<WPARAM>(index), partialOK)); }
    BOOL GetItemRect(int index, LPRECT rect, UINT code) const;
    BOOL GetSubItemRect(int index, int subItem, int code, CRect& rect) const;
    int HitTest(CPoint point, UINT* flags = nullptr) const;
    int SubItemHitTest(LPLVHITTESTINFO info) { return m_hWnd == nullptr ? -1 : static_cast<int>(SendMessage(LVM_SUBITEMHITTEST, 0, reinterpret_cast<LPARAM>(info))); }
    BOOL Scroll(CSize size) { return static_cast<BOOL>(SendMessage(LVM_SCROLL, static_cast<WPARAM>(size.cx), size.cy)); }
    BOOL SortItems(PFNLVCOMPARE compare, DWORD_PTR data) { return static_cast<BOOL>(SendMessage(LVM_SORTITEMS, data, reinterpret_cast<LPARAM>(compare))); }
    int GetTopIndex() const { return static_cast<int>(SendMessage(LVM_GETTOPINDEX)); }
    int GetCountPerPage() const { return static_cast<int>(SendMessage(LVM_GETCOUNTPERPAGE)); }
    BOOL RedrawItems(int first, int last) { return static_cast<BOOL>(SendMessage(LVM_REDRAWITEMS, static_cast<WPARAM>(first), last)); }
    BOOL Update(int index) { return static_cast<BOOL>(SendMessage(LVM_UPDATE, static_cast<WPARAM>(index))); }
    COLORREF GetBkColor() const { return static_cast<COLORREF>(SendMessage(LVM_GETBKCOLOR)); }
    BOOL SetBkColor(COLORREF colour) { return static_cast<BOOL>(SendMessage(LVM_SETBKCOLOR, 0, colour)); }
    BOOL SetTextColor(COLORREF colour) { return static_cast<BOOL>(SendMessage(LVM_SETTEXTCOLOR, 0, colour)); }
    BOOL SetTextBkColor(COLORREF colour) { return static_cast<BOOL>(SendMessage(LVM_SETTEXTBKCOLOR, 0, colour)); }
    HIMAGELIST SetImageList(HIMAGELIST list, int kind) { return reinterpret_cast<HIMAGELIST>(SendMessage(LVM_SETIMAGELIST, static_cast<WPARAM>(kind), reinterpret_cast<LPARAM>(list))); }
    virtual void DrawItem(LPDRAWITEMSTRUCT item);
    BOOL OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) override;
};

class QM_API CDateTimeCtrl : public CWnd
{
public:
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);
    // GDT_VALID with `time` filled, GDT_NONE, or GDT_ERROR.
    DWORD GetTime(SYSTEMTIME* time) const;
    BOOL SetTime(const SYSTEMTIME* time);
    BOOL SetFormat(const wchar_t* format) { return static_cast<BOOL>(SendMessage(DTM_SETFORMATW, 0, reinterpret_cast<LPARAM>(format))); }
    // The drop-down calendar while it is open, else null.
    CWnd* GetMonthCalCtrl() const { return FromHandle(reinterpret_cast<HWND>(SendMessage(DTM_GETMONTHCAL))); }
};

// A tool tip window. Tools are the windows (id 0: the whole window) or
// rectangles of a window (id non-zero) that show a text; the window's mouse
// messages reach the tool tip through RelayEvent.
class QM_API CToolTipCtrl : public CWnd
{
public:
    // A pop-up owned by `parent` (null: no owner).
    BOOL Create(CWnd* parent, DWORD style = 0);
    void Activate(BOOL activate) { SendMessage(TTM_ACTIVATE, activate); }
    BOOL AddTool(CWnd* wnd, const wchar_t* text = LPSTR_TEXTCALLBACKW, LPCRECT toolRect = nullptr, UINT_PTR id = 0);
    void DelTool(CWnd* wnd, UINT_PTR id = 0);
    int GetToolCount() const { return static_cast<int>(SendMessage(TTM_GETTOOLCOUNT)); }
    BOOL GetToolInfo(TOOLINFOW& info, CWnd* wnd, UINT_PTR id = 0) const;
    void GetText(CString& text, CWnd* wnd, UINT_PTR id = 0) const;
    void UpdateTipText(const wchar_t* text, CWnd* wnd, UINT_PTR id = 0);
    void SetToolRect(CWnd* wnd, UINT_PTR id, LPCRECT rect);
    void RelayEvent(LPMSG msg) { SendMessage(TTM_RELAYEVENT, 0, reinterpret_cast<LPARAM>(msg)); }
    int SetMaxTipWidth(int width) { return static_cast<int>(SendMessage(TTM_SETMAXTIPWIDTH, 0, width)); }
    int GetMaxTipWidth() const { return static_cast<int>(SendMessage(TTM_GETMAXTIPWIDTH)); }
    void SetDelayTime(UINT delay) { SendMessage(TTM_SETDELAYTIME, TTDT_AUTOMATIC, MAKELPARAM(delay, 0)); }
    void SetDelayTime(DWORD duration, int time) { SendMessage(TTM_SETDELAYTIME, duration, MAKELPARAM(time, 0)); }
    void Update() { SendMessage(TTM_UPDATE); }
    void Pop() { SendMessage(TTM_POP); }
};
