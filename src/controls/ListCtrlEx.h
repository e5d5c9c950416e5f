// ListCtrlEx.h - CListCtrlEx: a report list that works like a small
// spreadsheet. A cell cursor moves with the keyboard, cells are edited in
// editors that the parent window chooses cell by cell, header clicks sort
// by per-column rules, an optional first column numbers the rows, and rows
// move up and down.
//
//   CListCtrlEx list;                                   // a member of the dialog
//   list.SubclassDlgItem(IDC_GRID, dialog);             // in OnInitDialog
//   list.ModifyStyleEx(LVEX_SERIALNO, 0);
//   list.InsertColumn(0, L"名称", LVCFMT_LEFT, 80);     // real column 1
//   list.SetSort(1, SORT_STRING);
//   list.InsertItem(0, L"梁");
//   // in the parent, on LVN_BEGINLABELEDITW:
//   //     list.ShowInPlaceEdit(info->item.iItem, info->item.iSubItem);
//   // on WM_INPLACE_CTRL / IPN_VALIDATE: answer 0 to accept record->strText
//
// Two column numberings. A real column is the list's own; a user column is
// the real one less 1 while LVEX_SERIALNO keeps the numbers in real column
// 0. GetItemText, SetItemText, SetItem, InsertItem, the ShowInPlace...
// calls and LVN_BEGINLABELEDITW take user columns; InsertColumn takes a user
// column and answers the real one; the sort table, SetSort, SortColumn,
// ModifyColumnStyle, SetHeaderToolTip and header clicks take real columns.
// Inserting user column 0 adds a serial column each time: insert it once.
// SetItem and InsertItem with a record shift the record's sub-item in place.
//
// Editing: a click on a cell, Enter (next column) or F2 (this column) sends
// the parent LVN_BEGINLABELEDITW (item = row, sub-item = user column); the
// parent opens an editor with one of the ShowInPlace... calls, or leaves the
// cell read-only. Tab, Shift+Tab and the arrows move the open editor from
// cell to cell, wrapping between rows; Home and End go to the first and last
// row, with Ctrl also to the first and last column. Every text an editor
// hands back is offered to the parent (IPN_VALIDATE) before it is stored; a
// refusal keeps the editor open and swallows the click or key. On the
// keyboard paths the text handed over with LVN_BEGINLABELEDITW is read one
// column to the right in serial-number mode; editors read their own text.
//
// Sorting: SORT_STRING compares texts without case, SORT_NUMBER their
// leading numbers (_wtof; equal values answer -1, so their order is the
// sort's), SORT_CALLBACK a function of the caller's, which gets the rows'
// indexes from before the sort and a SORTINFO*. Each column remembers its
// direction: the first click sorts ascending, the next descending. Item data
// stays with the positions, not the rows, across a sort.
//
// Row and column arguments outside the list answer 0 or -1 as each member
// says; SetSort, SortColumn(int, BOOL) and header clicks throw
// CInvalidArgException* for negative columns.
//
// Editors: the list owns its one editor (pass ShowInPlaceCtrl only editors
// made with new). Whatever ends an editor - the list storing or dropping
// its text, a new editor, the cursor moving on, another party destroying
// its window - the list lets go of it before its window goes, so nothing
// the editor says on its way out validates again, and the object itself is
// deleted later from the list's queue, never under a handler of its own
// that is still running. Destroying the list destroys the open editor
// without storing its text. An editor the list cannot place (a column
// narrower than 5 pixels, a row out of range or out of sight) is hidden,
// returned and recorded, and changes no cell: the list's own focus moves
// never validate, and an accepted text goes into the cell the editor was
// opened on (which the parent's record names), never into another cell
// the cursor happens to be on.
#pragma once
#include "controls/FlatHeaderCtrl.h"
#include "controls/InPlaceComboBox.h"
#include "controls/InPlaceDateTimeCtrl.h"
#include "controls/InPlaceEdit.h"
#include "platform/Collections.h"

#include <memory>
#include <vector>

enum SORT_MODE : DWORD {
    SORT_NONE = 0,
    SORT_CALLBACK = 1,
    SORT_STRING = 2,
    SORT_NUMBER = 3,
};

constexpr DWORD LVEX_HEADERTIP = 0x1;
constexpr DWORD LVEX_SERIALNO = 0x2;

struct SORTITEM
{
    SORT_MODE nSortMode = SORT_NONE;
    PFNLVCOMPARE pfnCompare = nullptr;
    int bAscending = 1;
};

class CListCtrlEx;

// What a compare function gets as its third argument: exactly these three
// fields, since callers build it themselves to call CompareStringW and
// CompareNumber.
//   SORTINFO info{&list, 2, TRUE};
//   CListCtrlEx::CompareNumber(0, 1, reinterpret_cast<LPARAM>(&info));
struct SORTINFO
{
    CListCtrlEx* pList;
    int nColumn;     // real column
    int bAscending;
};

class QM_API CListCtrlEx : public CListCtrl
{
public:
    CListCtrlEx();
    ~CListCtrlEx() override;

    // The list's own style bits (LVEX_...); answers 1.
    int ModifyStyleEx(DWORD add, DWORD remove);
    DWORD GetStyleEx() const { return m_dwExStyle; }

    int InsertColumn(int nCol, const LVCOLUMNW* column);
    int InsertColumn(int nCol, LPCWSTR heading, int nFormat = LVCFMT_LEFT, int nWidth = -1, int nSubItem = -1);
    int GetColumnCount() const;
    // Header style bits in the high 16 bits of `add` and `remove`.
    int ModifyColumnStyle(int realCol, DWORD add, DWORD remove);
    int SetHeaderToolTip(int realCol, LPCWSTR text);

    int InsertItem(const LVITEMW* item);
    int InsertItem(int nItem, LPCWSTR text);
    int InsertItem(int nItem, LPCWSTR text, int nImage);
    int InsertItem(UINT mask, int nItem, LPCWSTR text, UINT state, UINT stateMask, int nImage, LPARAM lParam);
    int SetItem(const LVITEMW* item);
    int SetItem(int nItem, int nSubItem, UINT mask, LPCWSTR text, int nImage, UINT state, UINT stateMask,
                LPARAM lParam);
    int SetItemText(int nItem, int nSubItem, LPCWSTR text);
    int GetItemText(int nItem, int nSubItem, LPWSTR buffer, int size) const;
    CString GetItemText(int nItem, int nSubItem) const;
    int DeleteItem(int nItem);
    // -1 names the first selected row; -1 when there is none or the row
    // does not exist.
    int DelItem(int nItem);
    int UpItem(int nItem);
    int DownItem(int nItem);

    int SetSort(int realCol, SORT_MODE mode);
    int SetSort(int realCol, PFNLVCOMPARE compare);
    int SortColumn(int realCol, BOOL ascending);
    int SortColumn(int realCol, PFNLVCOMPARE compare, BOOL ascending);
    int SortColumn(int realCol, SORT_MODE mode, BOOL ascending);
    static int CALLBACK CompareStringW(LPARAM row1, LPARAM row2, LPARAM info);
    static int CALLBACK CompareNumber(LPARAM row1, LPARAM row2, LPARAM info);

    CWnd* GetIpPlaceWnd() { return m_editor.get(); }
    int ShowInPlaceCtrl(int nItem, int realCol, CWnd* editor);
    // Editors for (row, user column); null when the window cannot be made.
    CInPlaceEdit* ShowInPlaceEdit(int nItem, int nSubItem);
    CInPlaceEdit* ShowInPlaceEditEx(int nItem, int nSubItem);
    CInPlaceComboBox* ShowInPlaceComboBox(int nItem, int nSubItem);
    CInPlaceDateTimeCtrl* ShowInPlaceDateTimeCtrl(int nItem, int nSubItem);
    int PositionControl(CWnd* editor, int nItem, int realCol);
    void MakeColumnVisible(int realCol);

    BOOL PreTranslateMessage(MSG* msg) override;
    void DrawItem(LPDRAWITEMSTRUCT item) override;

    void OnLButtonDown(UINT flags, CPoint point);
    void OnHScroll(UINT code, UINT pos, CScrollBar* bar);
    void OnVScroll(UINT code, UINT pos, CScrollBar* bar);
    void OnKeyDown(UINT nChar, UINT repeat, UINT flags);
    void OnDestroy();
    void OnCustomDraw(NMHDR* header, LRESULT* result);
    void OnHeaderClicked(NMHDR* header, LRESULT* result);
    LRESULT OnInPlaceCtrlMsg(WPARAM code, LPARAM record);
    LRESULT OnSetRedraw(WPARAM redraw, LPARAM);

protected:
    void PreSubclassWindow() override;
    void EditSubitem(int nItem, int realCol, CString text);
    void FocusSubitem(int nItem, int realCol);

private:
    static CString SortText(const SORTINFO* sort, LPARAM row);
    int CurrentRealColumn() const;
    int IndexToOrder(int realCol);
    void FillRecord(INPLACEMSG& record) const;
    int ValideData(int close, INPLACEMSG* record = nullptr);
    int DestroyInPlaceWnd();
    // The one teardown path: forgets the editor, destroys its window (unless
    // it is already going) and keeps the object until the queue frees it.
    void RetireEditor(bool destroyWindow);
    void FreeRetiredEditors();
    // A code of the list's own on WM_INPLACE_CTRL, posted to itself: editors
    // let go of may be deleted now. Editors never send it.
    static constexpr WPARAM kFreeRetired = 0x7F01;
    int Serial() const { return (m_dwExStyle & LVEX_SERIALNO) != 0 ? 1 : 0; }
    void Renumber(int from);
    int WidthBefore(int realCol) const;
    int PrepareRow(int& nItem, UINT& state) const;
    void SwapRows(int a, int b);
    void MoveKeyCursor(UINT nChar, int row, int column);
    void DrawCurrentCell(NMLVCUSTOMDRAW* draw);
    template <class Editor> Editor* CreateEditor(DWORD style, UINT id);

    // Holds drawing off while many rows are rewritten (each write would
    // repaint its row) and draws the list once at the end; a list whose
    // drawing its owner has stopped stays stopped.
    class DrawingHeld
    {
    public:
        explicit DrawingHeld(CListCtrlEx& list);
        ~DrawingHeld();
        DrawingHeld(const DrawingHeld&) = delete;
        DrawingHeld& operator=(const DrawingHeld&) = delete;

    private:
        CListCtrlEx& m_list;
        const bool m_held;
    };

    std::unique_ptr<CWnd> m_editor;
    // The cell the editor was opened on: row and real column.
    int m_nEditItem = -1;
    int m_nEditColumn = -1;
    DWORD m_dwExStyle = LVEX_HEADERTIP;
    int m_bKeyboardMode = 0;
    int m_nCurColumn = -1;
    CString m_strSerialTitle = L"序号";
    CArray<SORTITEM, const SORTITEM&> m_aSortItems;
    CFlatHeaderCtrl m_wndHeader;
    // Editors let go of, kept until no handler of theirs runs.
    std::vector<std::unique_ptr<CWnd>> m_retired;
    // Whether drawing is on (WM_SETREDRAW), which the list does not tell.
    bool m_bDrawing = true;
    // While a sort by mode runs: the sorted column's texts by row index, read
    // once before the sort, which the compare functions read instead of the
    // list when the record names this list and that column.
    const CString* m_pSortTexts = nullptr;
    // While the list itself moves the focus, hides, creates or destroys an
    // editor: what the editor says then (a focus loss validating or
    // cancelling, IPN_CLOSED) is not the user's and is not acted on.
    bool m_bListActing = false;
    int m_nSortTextsColumn = -1;
    DECLARE_MESSAGE_MAP()
};
