// FlatHeaderWindows.cpp - the two pop-ups of a column drag: the floating
// picture of the column and the arrow-shaped drop marker.
#include "controls/FlatHeaderCtrl.h"

#include "platform/win/DeviceContexts.h"

namespace {

// Window classes live as long as the process; a class that cannot be
// registered is a resource failure.
void RegisterPopupClass(const wchar_t* name, HBRUSH background)
{
    const HINSTANCE instance = ::GetModuleHandleW(nullptr);
    WNDCLASSW wc{};
    if (::GetClassInfoW(instance, name, &wc))
        return;
    wc.style = CS_SAVEBITS;
    wc.lpfnWndProc = ::DefWindowProcW;
    wc.hInstance = instance;
    wc.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
    wc.hbrBackground = background;
    wc.lpszClassName = name;
    if (!::RegisterClassW(&wc))
        AfxThrowResourceException();
}

// One arrow 12 pixels wide, its tip 11 pixels from its foot; `down` points
// it downwards from y = `foot`, else upwards from there.
void ArrowPoints(POINT* points, int foot, bool down)
{
    const int sign = down ? 1 : -1;
    const POINT shape[7] = {{4, 0}, {8, 0}, {8, 5}, {12, 5}, {6, 11}, {0, 5}, {4, 5}};
    for (int at = 0; at < 7; ++at)
        points[at] = POINT{shape[at].x, foot + sign * shape[at].y};
}

} // namespace

BEGIN_MESSAGE_MAP(CFHDragWnd, CWnd)
    ON_WM_PAINT()
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

BOOL CFHDragWnd::Create(CRect rect, CFlatHeaderCtrl* header, int item)
{
    if (header == nullptr || header->GetSafeHwnd() == nullptr)
        return FALSE;
    RegisterPopupClass(L"MFCFHDragWnd", reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)));
    m_pFlatHeaderCtrl = header;
    m_iItem = item;
    m_hdi.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT | HDI_BITMAP | HDI_IMAGE | HDI_ORDER | HDI_LPARAM;
    m_hdi.pszText = m_szText;
    m_hdi.cchTextMax = ARRAYSIZE(m_szText);
    header->GetItem(item, &m_hdi);
    return CreateEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"MFCFHDragWnd", nullptr, WS_POPUP | WS_DISABLED, rect.left,
                    rect.top, rect.Width(), rect.Height(), header->GetSafeHwnd(), nullptr);
}

void CFHDragWnd::OnPaint()
{
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    const CFlatHeaderCtrl& header = *m_pFlatHeaderCtrl;
    dc.FillSolidRect(client, header.m_cr3DFace);
    dc.Draw3dRect(client, header.m_cr3DHighLight, header.m_cr3DShadow);
    CFont* oldFont = dc.SelectObject(const_cast<CFont*>(&header.m_font));
    dc.SetBkColor(header.m_cr3DFace);
    dc.SetTextColor(header.m_crText);
    client.DeflateRect(header.m_iSpacing, 0);
    m_pFlatHeaderCtrl->DrawItem(&dc, client, &m_hdi, m_iItem == header.m_iSortColumn, header.m_bSortAscending);
    dc.SelectObject(oldFont);
}

BOOL CFHDragWnd::OnEraseBkgnd(CDC*)
{
    return TRUE;
}

BEGIN_MESSAGE_MAP(CFHDropWnd, CWnd)
    ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

// Each marker fills itself with its own colour, so markers of different
// colours can be shown side by side although they share a class.
CFHDropWnd::CFHDropWnd(COLORREF colour)
{
    m_brush.CreateSolidBrush(colour);
}

BOOL CFHDropWnd::Create(int headerHeight)
{
    RegisterPopupClass(L"MFCFHDropWnd", nullptr);
    m_iHeight = headerHeight + 20;
    if (!CreateEx(WS_EX_TOOLWINDOW | WS_EX_TOPMOST, L"MFCFHDropWnd", nullptr, WS_POPUP | WS_DISABLED, 0, 0, 12,
                  m_iHeight, nullptr, nullptr))
        return FALSE;
    POINT above[7], below[7];
    ArrowPoints(above, 0, true);
    ArrowPoints(below, m_iHeight, false);
    CRgn top, bottom, shape;
    if (top.CreatePolygonRgn(above, 7, WINDING) && bottom.CreatePolygonRgn(below, 7, WINDING) &&
        shape.CreateRectRgn(0, 0, 0, 0) && shape.CombineRgn(&top, &bottom, RGN_OR) != ERROR)
        SetWindowRgn(static_cast<HRGN>(shape.Detach()), FALSE);
    return TRUE;
}

void CFHDropWnd::PlaceAt(CPoint gap)
{
    ::SetWindowPos(m_hWnd, HWND_TOPMOST, gap.x - 6, gap.y - 10, 0, 0, SWP_NOSIZE | SWP_NOACTIVATE | SWP_SHOWWINDOW);
}

BOOL CFHDropWnd::OnEraseBkgnd(CDC* dc)
{
    CRect client;
    GetClientRect(client);
    dc->FillRect(client, &m_brush);
    return TRUE;
}
