// FlatHeaderCtrl.cpp - the extended column records, the properties, and
// the header messages that keep them (insertion, layout, fonts, tool tips,
// hit testing and cursors).
#include "controls/FlatHeaderCtrl.h"

#include "platform/win/DeviceContexts.h"

#include <algorithm>
#include <new>

namespace {

constexpr UINT_PTR kToolId = 0xFF37ED5D;
constexpr int kItemTextSize = 160;
constexpr UINT kOnDivider = HHT_ONDIVIDER | HHT_ONDIVOPEN;

} // namespace

BEGIN_MESSAGE_MAP(CFlatHeaderCtrl, CHeaderCtrl)
    ON_MESSAGE(HDM_INSERTITEMA, &CFlatHeaderCtrl::OnInsertItem)
    ON_MESSAGE(HDM_INSERTITEMW, &CFlatHeaderCtrl::OnInsertItem)
    ON_MESSAGE(HDM_DELETEITEM, &CFlatHeaderCtrl::OnDeleteItem)
    ON_MESSAGE(HDM_LAYOUT, &CFlatHeaderCtrl::OnLayout)
    ON_MESSAGE(HDM_SETIMAGELIST, &CFlatHeaderCtrl::OnSetImageList)
    ON_MESSAGE(HDM_SETHOTDIVIDER, &CFlatHeaderCtrl::OnSetHotDivider)
    ON_NOTIFY_EX_RANGE(TTN_GETDISPINFOA, 0, 0xFFFFFFFFu, &CFlatHeaderCtrl::OnToolTipText)
    ON_NOTIFY_EX_RANGE(TTN_GETDISPINFOW, 0, 0xFFFFFFFFu, &CFlatHeaderCtrl::OnToolTipText)
    ON_WM_NCHITTEST()
    ON_WM_SETCURSOR()
    ON_WM_LBUTTONDOWN()
    ON_WM_LBUTTONDBLCLK()
    ON_WM_PAINT()
    ON_WM_SYSCOLORCHANGE()
    ON_WM_ERASEBKGND()
    ON_WM_LBUTTONUP()
    ON_WM_MOUSEMOVE()
    ON_WM_CANCELMODE()
    ON_MESSAGE(WM_CAPTURECHANGED, &CFlatHeaderCtrl::OnCaptureChanged)
    ON_MESSAGE(WM_SETFONT, &CFlatHeaderCtrl::OnSetFont)
    ON_MESSAGE(WM_GETFONT, &CFlatHeaderCtrl::OnGetFont)
END_MESSAGE_MAP()

CFlatHeaderCtrl::CFlatHeaderCtrl()
{
    m_hdiHotItem.pszText = m_szHotItemText;
    m_hdiHotItem.cchTextMax = kItemTextSize;
    ReadSysColors();
    m_font.CreateStockObject(DEFAULT_GUI_FONT);
}

// The floating windows go before the header does.
CFlatHeaderCtrl::~CFlatHeaderCtrl()
{
    delete m_pDragWnd;
    delete m_pDropWnd;
}

void CFlatHeaderCtrl::PreSubclassWindow()
{
    CHeaderCtrl::PreSubclassWindow();
    ReadSysColors();
    // The header keeps the look it had: its current font becomes the copy.
    SendMessage(WM_SETFONT, static_cast<WPARAM>(DefWindowProc(WM_GETFONT, 0, 0)), FALSE);
    m_arrayHdrItemEx.RemoveAll();
    m_arrayHdrItemEx.SetSize(GetItemCount());
}

void CFlatHeaderCtrl::ReadSysColors()
{
    m_cr3DHighLight = ::GetSysColor(COLOR_BTNHIGHLIGHT);
    m_cr3DShadow = ::GetSysColor(COLOR_BTNSHADOW);
    m_cr3DFace = ::GetSysColor(COLOR_BTNFACE);
    m_crText = ::GetSysColor(COLOR_BTNTEXT);
}

BOOL CFlatHeaderCtrl::GetItemEx(int column, HDITEMEX* item) const
{
    if (item == nullptr || column >= m_arrayHdrItemEx.GetSize())
        return FALSE;
    *item = m_arrayHdrItemEx.GetAt(column);
    if (item->nStyle & HDF_EX_FIXEDWIDTH)
    {
        HDITEMW hdi{};
        hdi.mask = HDI_WIDTH;
        GetItem(column, &hdi);
        item->iMinWidth = item->iMaxWidth = hdi.cxy;
    }
    return TRUE;
}

BOOL CFlatHeaderCtrl::SetItemEx(int column, const HDITEMEX* item)
{
    if (item == nullptr || column < 0 || column >= m_arrayHdrItemEx.GetSize())
        return FALSE;
    wchar_t text[kItemTextSize] = L"";
    HDITEMW hdi{};
    hdi.mask = HDI_WIDTH | HDI_FORMAT | HDI_TEXT | HDI_IMAGE | HDI_BITMAP;
    hdi.pszText = text;
    hdi.cchTextMax = kItemTextSize;
    if (!GetItem(column, &hdi))
        return FALSE;
    int width = hdi.cxy;
    if (item->nStyle & HDF_EX_AUTOWIDTH)
        width = ContentWidth(&hdi, item->nStyle);
    if (!(item->nStyle & HDF_EX_FIXEDWIDTH))
    {
        width = std::max(width, item->iMinWidth);
        if (item->iMaxWidth >= 1)
            width = std::min(width, item->iMaxWidth);
    }
    if (width != hdi.cxy)
    {
        HDITEMW resized{};
        resized.mask = HDI_WIDTH;
        resized.cxy = width;
        SetItem(column, &resized);
    }
    m_arrayHdrItemEx[column] = *item;
    return TRUE;
}

// The item's parts side by side, each after one spacing, and a spacing at
// the end: what DrawItem needs to show them all without cutting any.
int CFlatHeaderCtrl::ContentWidth(LPHDITEMW item, UINT style)
{
    int width = m_iSpacing;
    if (item->fmt & HDF_IMAGE)
        width += m_iSpacing + m_sizeImage.cx;
    BITMAP bitmap{};
    if ((item->fmt & HDF_BITMAP) && ::GetObjectW(item->hbm, sizeof(bitmap), &bitmap) == sizeof(bitmap))
        width += m_iSpacing + bitmap.bmWidth;
    if (style & HDF_EX_INCLUDESORT)
        width += m_iSpacing + m_sizeArrow.cx;
    if ((item->fmt & HDF_STRING) && item->pszText != nullptr && item->pszText[0] != L'\0')
        width += TextExtent(item) + m_iSpacing;
    return width;
}

int CFlatHeaderCtrl::TextExtent(LPHDITEMW item)
{
    CClientDC dc(this);
    CFont* old = dc.SelectObject(&m_font);
    const int extent = dc.GetTextExtent(item->pszText, lstrlenW(item->pszText)).cx;
    dc.SelectObject(old);
    return extent;
}

BOOL CFlatHeaderCtrl::SetProperty(int property, LPARAM value)
{
    switch (property)
    {
    case FH_PROPERTY_SPACING:
        m_iSpacing = std::max(0, static_cast<int>(value));
        break;
    case FH_PROPERTY_ARROW:
        m_sizeArrow = SIZE{LOWORD(value), HIWORD(value)};
        break;
    case FH_PROPERTY_STATICBORDER:
        m_bStaticBorder = value != 0;
        break;
    case FH_PROPERTY_DONTDROPCURSOR:
        m_nDontDropCursor = LOWORD(value);
        break;
    case FH_PROPERTY_DROPTARGET:
        m_hDropTarget = reinterpret_cast<HWND>(value);
        break;
    case FH_PROPERTY_ENABLETOOLTIPS:
        EnableToolTips(value != 0);
        break;
    case FH_PROPERTY_AUTOSIZE:
        m_bAutoSize = value != 0;
        if (m_bAutoSize)
            AutoSize(-1);
        break;
    default:
        return FALSE;
    }
    if (m_hWnd != nullptr)
        Invalidate();
    return TRUE;
}

void CFlatHeaderCtrl::SetSortColumn(int column, BOOL ascending)
{
    m_iSortColumn = column;
    m_bSortAscending = ascending;
    if (m_hWnd != nullptr)
        Invalidate();
}

void CFlatHeaderCtrl::SetHeaderHeight(int height)
{
    m_iHeaderHeight = height;
}

void CFlatHeaderCtrl::SetDoubleBuffer(BOOL doubleBuffer)
{
    m_bDoubleBuffer = doubleBuffer;
}

// A record goes in first, where the header will put the item, and comes
// out again if the header refuses it: records and items stay in step.
LRESULT CFlatHeaderCtrl::OnInsertItem(WPARAM wParam, LPARAM)
{
    const INT_PTR count = m_arrayHdrItemEx.GetSize();
    const INT_PTR at = wParam > static_cast<WPARAM>(count) ? count : static_cast<INT_PTR>(wParam);
    m_arrayHdrItemEx.InsertAt(at, HDITEMEX());
    const LRESULT result = Default();
    if (result < 0)
        m_arrayHdrItemEx.RemoveAt(at);
    return result;
}

LRESULT CFlatHeaderCtrl::OnDeleteItem(WPARAM wParam, LPARAM)
{
    if (wParam < static_cast<WPARAM>(m_arrayHdrItemEx.GetSize()))
        m_arrayHdrItemEx.RemoveAt(static_cast<INT_PTR>(wParam));
    return Default();
}

LRESULT CFlatHeaderCtrl::OnLayout(WPARAM, LPARAM lParam)
{
    auto* layout = reinterpret_cast<HDLAYOUT*>(lParam);
    if (m_bStaticBorder && layout != nullptr && layout->prc != nullptr)
        layout->prc->right += 2 * ::GetSystemMetrics(SM_CXBORDER);
    const LRESULT result = Default();
    if (result && m_iHeaderHeight > 0 && layout != nullptr && layout->prc != nullptr && layout->pwpos != nullptr)
    {
        layout->prc->top += m_iHeaderHeight - layout->pwpos->cy;
        layout->pwpos->cy = m_iHeaderHeight;
    }
    if (m_bAutoSize && !m_bResizing)
        AutoSize(-1);
    return result;
}

LRESULT CFlatHeaderCtrl::OnSetImageList(WPARAM wParam, LPARAM lParam)
{
    const LRESULT result = Default();
    if (wParam == HDSIL_NORMAL)
    {
        int cx = 0, cy = 0;
        if (lParam == 0 || !ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(lParam), &cx, &cy))
            cx = cy = 0;
        m_sizeImage = SIZE{cx, cy};
    }
    return result;
}

// The private copy goes to the header's own processing too, so that its
// layout measures the font it is drawn in, and a caller may delete the font
// it gave at once.
LRESULT CFlatHeaderCtrl::OnSetFont(WPARAM wParam, LPARAM lParam)
{
    LOGFONTW logFont{};
    const HFONT given = reinterpret_cast<HFONT>(wParam);
    if (given == nullptr || ::GetObjectW(given, sizeof(logFont), &logFont) != sizeof(logFont))
        ::GetObjectW(::GetStockObject(DEFAULT_GUI_FONT), sizeof(logFont), &logFont);
    CFont copy;
    if (!copy.CreateFontIndirect(&logFont))
        return 0;
    DefWindowProc(WM_SETFONT, reinterpret_cast<WPARAM>(copy.GetSafeHandle()), lParam);
    m_font.DeleteObject();
    m_font.Attach(copy.Detach());
    return 0;
}

LRESULT CFlatHeaderCtrl::OnGetFont(WPARAM, LPARAM)
{
    return reinterpret_cast<LRESULT>(m_font.GetSafeHandle());
}

INT_PTR CFlatHeaderCtrl::OnToolHitTest(CPoint point, TOOLINFOW* info) const
{
    HDHITTESTINFO hit{};
    hit.pt = point;
    const int item = HitTest(&hit);
    if (item < 0 || !(hit.flags & (HHT_ONHEADER | kOnDivider)) || info == nullptr)
        return -1;
    info->hwnd = m_hWnd;
    info->uId = kToolId;
    GetItemRect(item, &info->rect);
    info->lpszText = LPSTR_TEXTCALLBACKW;
    return item;
}

// A text that fits the notification's buffer is copied there; a longer one
// is lent by pointer, whole.
BOOL CFlatHeaderCtrl::OnToolTipText(UINT, NMHDR* header, LRESULT* result)
{
    if (header->idFrom != kToolId)
        return FALSE;
    *result = 0;
    if (m_iHotIndex < 0 || m_iHotIndex >= m_arrayHdrItemEx.GetSize())
        return TRUE;
    const CString& tip = m_arrayHdrItemEx[m_iHotIndex].strToolTip;
    if (tip.IsEmpty())
        return TRUE;
    if (header->code == TTN_GETDISPINFOW)
    {
        auto* info = reinterpret_cast<NMTTDISPINFOW*>(header);
        if (tip.GetLength() < static_cast<int>(ARRAYSIZE(info->szText)))
        {
            lstrcpynW(info->szText, tip.GetString(), ARRAYSIZE(info->szText));
            info->lpszText = info->szText;
        }
        else
            info->lpszText = const_cast<wchar_t*>(tip.GetString());
        return TRUE;
    }
    const int bytes = ::WideCharToMultiByte(CP_ACP, 0, tip.GetString(), -1, nullptr, 0, nullptr, nullptr);
    m_tipTextA.SetSize(std::max(bytes, 1));
    m_tipTextA[0] = '\0';
    ::WideCharToMultiByte(CP_ACP, 0, tip.GetString(), -1, m_tipTextA.GetData(), bytes, nullptr, nullptr);
    reinterpret_cast<NMTTDISPINFOA*>(header)->lpszText = m_tipTextA.GetData();
    return TRUE;
}

LRESULT CFlatHeaderCtrl::OnNcHitTest(CPoint point)
{
    m_ptHitTest = point;
    ScreenToClient(&m_ptHitTest);
    HDHITTESTINFO hit{};
    hit.pt = m_ptHitTest;
    m_iHotIndex = HitTest(&hit);
    m_nHitTest = hit.flags;
    if (m_iHotIndex >= 0)
    {
        HDITEMW hdi{};
        hdi.mask = HDI_ORDER;
        GetItem(m_iHotIndex, &hdi);
        m_iHotOrder = hdi.iOrder;
        HDITEMEX ex;
        m_bHotItemResizable = GetItemEx(m_iHotIndex, &ex) && !(ex.nStyle & HDF_EX_FIXEDWIDTH);
    }
    return CHeaderCtrl::OnNcHitTest(point);
}

bool CFlatHeaderCtrl::HotDividerIsFixed() const
{
    return m_iHotIndex >= 0 && (m_nHitTest & kOnDivider) && !m_bHotItemResizable;
}

BOOL CFlatHeaderCtrl::OnSetCursor(CWnd* wnd, UINT hitTest, UINT message)
{
    if (!HotDividerIsFixed())
        return CHeaderCtrl::OnSetCursor(wnd, hitTest, message);
    ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
    return TRUE;
}

void CFlatHeaderCtrl::OnLButtonDblClk(UINT flags, CPoint point)
{
    if (!HotDividerIsFixed())
        CHeaderCtrl::OnLButtonDblClk(flags, point);
}

void CFlatHeaderCtrl::OnSysColorChange()
{
    CHeaderCtrl::OnSysColorChange();
    ReadSysColors();
}

BOOL CFlatHeaderCtrl::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

int* CFlatHeaderCtrl::NewOrderArray(int count)
{
    int* order = new (std::nothrow) int[static_cast<size_t>(std::max(count, 1))];
    if (order == nullptr)
        AfxThrowMemoryException();
    return order;
}
