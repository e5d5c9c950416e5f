// ListCtrlEx.cpp - CListCtrlEx's set-up, styles and columns.
#include "controls/ListCtrlEx.h"

BEGIN_MESSAGE_MAP(CListCtrlEx, CListCtrl)
    ON_WM_LBUTTONDOWN()
    ON_WM_HSCROLL()
    ON_WM_VSCROLL()
    ON_WM_KEYDOWN()
    ON_WM_DESTROY()
    ON_NOTIFY_REFLECT(NM_CUSTOMDRAW, &CListCtrlEx::OnCustomDraw)
    ON_NOTIFY(HDN_ITEMCLICKA, 0, &CListCtrlEx::OnHeaderClicked)
    ON_NOTIFY(HDN_ITEMCLICKW, 0, &CListCtrlEx::OnHeaderClicked)
    ON_MESSAGE(WM_INPLACE_CTRL, &CListCtrlEx::OnInPlaceCtrlMsg)
    ON_MESSAGE(WM_SETREDRAW, &CListCtrlEx::OnSetRedraw)
END_MESSAGE_MAP()

namespace {

// Column styles travel in the high 16 bits: width fitted to the content,
// fixed width.
const DWORD kSerialColumnStyle = (HDF_EX_AUTOWIDTH | HDF_EX_FIXEDWIDTH) << 16;

} // namespace

CListCtrlEx::CListCtrlEx()
{
    m_aSortItems.SetSize(0, 8);
}

CListCtrlEx::~CListCtrlEx()
{
    DestroyInPlaceWnd();
}

// Report view without the platform's own label editing: cells are edited
// in the list's editors.
void CListCtrlEx::PreSubclassWindow()
{
    CListCtrl::PreSubclassWindow();
    ModifyStyle(0x203, LVS_REPORT);
    SendMessage(LVM_SETEXTENDEDLISTVIEWSTYLE, 0x531, 0x531);
    m_wndHeader.SubclassWindow(reinterpret_cast<HWND>(SendMessage(LVM_GETHEADER)));
    if (m_dwExStyle & LVEX_HEADERTIP)
        m_wndHeader.SetProperty(FH_PROPERTY_ENABLETOOLTIPS, TRUE);
}

int CListCtrlEx::ModifyStyleEx(DWORD add, DWORD remove)
{
    m_dwExStyle = (m_dwExStyle | add) & ~remove;
    m_wndHeader.SetProperty(FH_PROPERTY_ENABLETOOLTIPS, (m_dwExStyle & LVEX_HEADERTIP) != 0);
    return 1;
}

int CListCtrlEx::GetColumnCount() const
{
    return m_wndHeader.GetItemCount();
}

int CListCtrlEx::InsertColumn(int nCol, const LVCOLUMNW* column)
{
    if (column == nullptr)
        return -1;
    if (Serial() && nCol == 0)
    {
        LVCOLUMNW serial{};
        serial.mask = LVCF_TEXT | LVCF_FMT;
        serial.fmt = LVCFMT_LEFT;
        serial.pszText = const_cast<wchar_t*>(static_cast<const wchar_t*>(m_strSerialTitle));
        if (CListCtrl::InsertColumn(0, &serial) == 0)
        {
            m_aSortItems.InsertAt(0, SORTITEM{});
            ModifyColumnStyle(0, kSerialColumnStyle, 0);
            if (m_dwExStyle & LVEX_HEADERTIP)
                SetHeaderToolTip(0, m_strSerialTitle);
        }
    }
    const int at = CListCtrl::InsertColumn(nCol + Serial(), column);
    if (at < 0)
        return at;
    m_aSortItems.InsertAt(at, SORTITEM{});
    if ((m_dwExStyle & LVEX_HEADERTIP) && (column->mask & LVCF_TEXT) && column->pszText != nullptr)
        SetHeaderToolTip(at, column->pszText);
    return at;
}

int CListCtrlEx::InsertColumn(int nCol, LPCWSTR heading, int nFormat, int nWidth, int nSubItem)
{
    LVCOLUMNW column{};
    column.mask = LVCF_TEXT | LVCF_FMT;
    column.fmt = nFormat;
    column.pszText = const_cast<wchar_t*>(heading);
    if (nWidth != -1)
    {
        column.mask |= LVCF_WIDTH;
        column.cx = nWidth;
    }
    if (nSubItem != -1)
    {
        column.mask |= LVCF_SUBITEM;
        column.iSubItem = nSubItem;
    }
    return InsertColumn(nCol, &column);
}

int CListCtrlEx::ModifyColumnStyle(int realCol, DWORD add, DWORD remove)
{
    HDITEMEX item;
    if (realCol < 0 || !m_wndHeader.GetItemEx(realCol, &item))
        return 0;
    item.nStyle = (item.nStyle | (add >> 16)) & ~(remove >> 16);
    return m_wndHeader.SetItemEx(realCol, &item);
}

int CListCtrlEx::SetHeaderToolTip(int realCol, LPCWSTR text)
{
    HDITEMEX item;
    if (realCol < 0 || !m_wndHeader.GetItemEx(realCol, &item))
        return 0;
    item.strToolTip = text;
    return m_wndHeader.SetItemEx(realCol, &item);
}

LRESULT CListCtrlEx::OnSetRedraw(WPARAM redraw, LPARAM)
{
    m_bDrawing = redraw != FALSE;
    return Default();
}

CListCtrlEx::DrawingHeld::DrawingHeld(CListCtrlEx& list) : m_list(list), m_held(list.m_bDrawing)
{
    if (m_held)
        m_list.SetRedraw(FALSE);
}

CListCtrlEx::DrawingHeld::~DrawingHeld()
{
    if (!m_held)
        return;
    m_list.SetRedraw(TRUE);
    m_list.Invalidate();
}
