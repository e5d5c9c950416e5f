// FlatHeaderMouse.cpp - pressing, resizing and the header's own drag and
// drop of columns: the floating picture, the drop marker and the reorder.
#include "controls/FlatHeaderCtrl.h"

#include <algorithm>
#include <memory>

namespace {

constexpr UINT kOnDivider = HHT_ONDIVIDER | HHT_ONDIVOPEN;
constexpr UINT kOnItem = HHT_ONHEADER | kOnDivider;
constexpr int kNoMaximum = 16384;

int MaximumOf(const HDITEMEX& item)
{
    return item.iMaxWidth < 1 ? kNoMaximum : item.iMaxWidth;
}

} // namespace

void CFlatHeaderCtrl::OnLButtonDown(UINT flags, CPoint point)
{
    m_nClickFlags = flags;
    m_ptClickPoint = point;
    HDHITTESTINFO hit{};
    hit.pt = point;
    HitTest(&hit);
    m_nPressedHit = hit.flags;
    if (m_iHotIndex < 0)
    {
        CHeaderCtrl::OnLButtonDown(flags, point);
        return;
    }
    m_hdiHotItem.mask = HDI_WIDTH | HDI_TEXT | HDI_FORMAT | HDI_LPARAM | HDI_BITMAP | HDI_IMAGE | HDI_ORDER;
    m_hdiHotItem.pszText = m_szHotItemText;
    m_hdiHotItem.cchTextMax = ARRAYSIZE(m_szHotItemText);
    m_szHotItemText[0] = L'\0';
    GetItem(m_iHotIndex, &m_hdiHotItem);
    GetItemEx(m_iHotIndex, &m_hdiHotItemEx);
    if (m_nHitTest & HHT_ONHEADER)
    {
        CRect item;
        GetItemRect(m_iHotIndex, item);
        InvalidateRect(item);
        m_bButtonDown = TRUE;
    }
    if (!(m_nHitTest & kOnDivider))
    {
        CHeaderCtrl::OnLButtonDown(flags, point);
        return;
    }
    if (!m_bHotItemResizable)
        return;
    m_bButtonDown = TRUE;
    if (m_bAutoSize)
        ClipResizeCursor();
    m_bResizing = TRUE;
    CHeaderCtrl::OnLButtonDown(flags, point);
}

// Keeps the divider where the columns after it can still take what is left
// of the client width within their minima and maxima.
void CFlatHeaderCtrl::ClipResizeCursor()
{
    const int count = GetItemCount();
    if (m_iHotOrder >= count - 1)
        return;
    std::unique_ptr<int[]> order(NewOrderArray(count));
    GetOrderArray(order.get(), count);
    int minima = 0, maxima = 0;
    for (int at = m_iHotOrder + 1; at < count; ++at)
    {
        HDITEMEX ex;
        GetItemEx(order[at], &ex);
        minima += ex.iMinWidth;
        maxima += MaximumOf(ex);
    }
    m_iMinWidthRight = minima;
    CRect client, item;
    GetClientRect(client);
    GetItemRect(m_iHotIndex, item);
    const int right = client.right - item.left + 1;
    const int low = std::max(m_hdiHotItemEx.iMinWidth, right - maxima);
    const int high = std::min(MaximumOf(m_hdiHotItemEx), right - minima);
    if (low > high)
        return;
    // The header measures the new width from where the divider was caught.
    CPoint from(item.left - (item.right - m_ptClickPoint.x), 0);
    ClientToScreen(&from);
    const CRect band(from.x + low, ::GetSystemMetrics(SM_YVIRTUALSCREEN), from.x + high,
                     ::GetSystemMetrics(SM_YVIRTUALSCREEN) + ::GetSystemMetrics(SM_CYVIRTUALSCREEN));
    ::ClipCursor(band);
}

void CFlatHeaderCtrl::OnMouseMove(UINT flags, CPoint point)
{
    if (!m_bButtonDown || m_iHotIndex < 0 || m_bResizing)
    {
        CHeaderCtrl::OnMouseMove(flags, point);
        return;
    }
    if (m_bDragging)
    {
        TrackDrag(point);
        return;
    }
    CRect threshold(m_ptClickPoint.x, m_ptClickPoint.y, m_ptClickPoint.x, m_ptClickPoint.y);
    threshold.InflateRect(::GetSystemMetrics(SM_CXDRAG) / 2, ::GetSystemMetrics(SM_CYDRAG) / 2);
    if ((GetStyle() & HDS_DRAGDROP) && !threshold.PtInRect(point))
        BeginDrag(point);
}

LRESULT CFlatHeaderCtrl::SendHeaderNotify(UINT code, int item)
{
    NMHEADERW notify{};
    notify.hdr.hwndFrom = m_hWnd;
    notify.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID());
    notify.hdr.code = code;
    notify.iItem = item;
    notify.pitem = &m_hdiHotItem;
    const HWND parent = ::GetParent(m_hWnd);
    return parent == nullptr ? 0
                             : ::SendMessageW(parent, WM_NOTIFY, notify.hdr.idFrom, reinterpret_cast<LPARAM>(&notify));
}

// A parent that answers HDN_BEGINDRAG runs the drag itself: the header only
// keeps the mouse, shows nothing and moves nothing.
void CFlatHeaderCtrl::BeginDrag(CPoint point)
{
    m_iDropIndex = -1;
    m_iDropResult = -1;
    if (SendHeaderNotify(HDN_BEGINDRAG, m_iHotIndex) != 0)
    {
        SetCapture();
        m_bDragging = TRUE;
        return;
    }
    CRect item;
    GetItemRect(m_iHotIndex, item);
    ClientToScreen(item);
    m_pDragWnd = new CFHDragWnd;
    if (!m_pDragWnd->Create(item, this, m_iHotIndex))
    {
        delete m_pDragWnd;
        m_pDragWnd = nullptr;
    }
    m_rcDropTarget.SetRectEmpty();
    if (m_hDropTarget != nullptr &&
        (::IsWindowVisible(m_hDropTarget) || ::IsWindowVisible(::GetParent(m_hDropTarget))))
        ::GetWindowRect(m_hDropTarget, &m_rcDropTarget);
    SetCapture();
    m_bDragging = TRUE;
    TrackDrag(point);
}

void CFlatHeaderCtrl::TrackDrag(CPoint point)
{
    if (m_pDragWnd == nullptr)
        return;
    CPoint screen = point;
    ClientToScreen(&screen);
    CRect picture;
    m_pDragWnd->GetWindowRect(picture);
    ::SetWindowPos(m_pDragWnd->GetSafeHwnd(), nullptr, screen.x - picture.Width() / 2,
                   screen.y - picture.Height() / 2, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_SHOWWINDOW);
    HDHITTESTINFO hit{};
    hit.pt = point;
    const int item = HitTest(&hit);
    CRect client;
    GetClientRect(client);
    HCURSOR cursor = ::LoadCursorW(nullptr, IDC_ARROW);
    int drop = -1;
    if (item >= 0 && (hit.flags & kOnItem))
    {
        CRect rect;
        GetItemRect(item, rect);
        HDITEMW hdi{};
        hdi.mask = HDI_ORDER;
        GetItem(item, &hdi);
        drop = hdi.iOrder + (point.x > rect.CenterPoint().x ? 1 : 0);
        m_iDropResult = 0;
    }
    else if (client.PtInRect(point))
    {
        drop = GetItemCount();
        m_iDropResult = 0;
    }
    else if ((m_hdiHotItemEx.nStyle & HDF_EX_PERSISTENT) && m_rcDropTarget.PtInRect(screen))
        m_iDropResult = 1;
    else
    {
        m_iDropResult = (m_hdiHotItemEx.nStyle & HDF_EX_PERSISTENT) ? 2 : -1;
        cursor = m_nDontDropCursor == 0
                     ? nullptr
                     : ::LoadCursorW(::GetModuleHandleW(nullptr), MAKEINTRESOURCEW(m_nDontDropCursor));
        if (cursor == nullptr)
            cursor = ::LoadCursorW(nullptr, IDC_NO);
    }
    ::SetCursor(cursor);
    if (drop == m_iHotOrder || drop == m_iHotOrder + 1)
        drop = -1;
    if (drop != m_iDropIndex)
    {
        m_iDropIndex = drop;
        SendMessage(HDM_SETHOTDIVIDER, FALSE, drop);
    }
}

// The button going up ends the gesture itself: the capture changes this
// brings (the header's own release, the drag's) are not taken for an
// interruption.
void CFlatHeaderCtrl::OnLButtonUp(UINT flags, CPoint point)
{
    m_nClickFlags = flags;
    m_ptClickPoint = point;
    m_bButtonDown = FALSE;
    m_bReleasing = TRUE;
    if (m_iHotIndex >= 0)
    {
        if (m_bResizing && m_bAutoSize)
            ::ClipCursor(nullptr);
        if (m_bDragging)
            EndDrag(true);
        CRect item;
        GetItemRect(m_iHotIndex, item);
        InvalidateRect(item);
    }
    m_nPressedHit = 0;
    CHeaderCtrl::OnLButtonUp(flags, point);
    m_bReleasing = FALSE;
    if (m_bResizing && m_bAutoSize)
        AutoSize(m_iHotIndex);
    m_bResizing = FALSE;
}

// The system ends every gesture it interrupts (a dialog box, a window
// switch); a capture taken by another window ends it too. Either way the
// pointer is freed, the flags go and the drag windows are put away, so the
// next move with no button held starts nothing.
void CFlatHeaderCtrl::OnCancelMode()
{
    CHeaderCtrl::OnCancelMode();
    EndGesture();
}

LRESULT CFlatHeaderCtrl::OnCaptureChanged(WPARAM, LPARAM newCapture)
{
    const LRESULT result = Default();
    if (!m_bReleasing && reinterpret_cast<HWND>(newCapture) != m_hWnd)
        EndGesture();
    return result;
}

// A resize cut short still leaves the columns filling the width.
void CFlatHeaderCtrl::EndGesture()
{
    const bool resized = m_bResizing != FALSE;
    m_nClickFlags = 0;
    m_bButtonDown = FALSE;
    m_bResizing = FALSE;
    if (resized && m_bAutoSize)
        ::ClipCursor(nullptr);
    if (m_bDragging)
        EndDrag(false);
    EndPlatformGesture();
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    if (resized && m_bAutoSize)
        AutoSize(m_iHotIndex);
    if (m_iHotIndex >= 0)
    {
        CRect item;
        GetItemRect(m_iHotIndex, item);
        InvalidateRect(item);
    }
}

// The platform's header does not end its own press or track on cancel-mode
// or a lost capture everywhere; left pressed, its next move with no button
// held would start a drag. It is given the button-up it missed: a track
// ends where the divider is now, a press far from any item, which drops
// it without a click (a header that drags columns takes a distant release
// for an ended drag, not a click; one that does not is left as it is).
void CFlatHeaderCtrl::EndPlatformGesture()
{
    const UINT pressed = m_nPressedHit;
    m_nPressedHit = 0;
    CPoint at(-30000, -30000);
    if (pressed & kOnDivider)
    {
        ::GetCursorPos(&at);
        ScreenToClient(&at);
    }
    else if (!(pressed & HHT_ONHEADER) || !(GetStyle() & HDS_DRAGDROP))
        return;
    const bool releasing = m_bReleasing;
    m_bReleasing = true;
    CHeaderCtrl::DefWindowProc(WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    m_bReleasing = releasing;
}

// The state goes before the capture: releasing it reports a capture change,
// which must find the drag over.
void CFlatHeaderCtrl::EndDrag(bool drop)
{
    if (drop && SendHeaderNotify(HDN_ENDDRAG, m_iHotIndex) == 0 && m_iDropIndex >= 0)
        Reorder();
    delete m_pDragWnd;
    m_pDragWnd = nullptr;
    m_bDragging = FALSE;
    m_iDropIndex = -1;
    if (::GetCapture() == m_hWnd)
        ::ReleaseCapture();
    SendMessage(HDM_SETHOTDIVIDER, FALSE, -1);
    Invalidate();
}

// The dragged column goes to the drop index; the others keep their order.
void CFlatHeaderCtrl::Reorder()
{
    const int count = GetItemCount();
    if (m_iHotOrder < 0 || m_iHotOrder >= count || m_iDropIndex > count)
        return;
    std::unique_ptr<int[]> order(NewOrderArray(count));
    GetOrderArray(order.get(), count);
    const int moved = order[m_iHotOrder];
    const int target = m_iDropIndex > m_iHotOrder ? m_iDropIndex - 1 : m_iDropIndex;
    for (int at = m_iHotOrder; at < count - 1; ++at)
        order[at] = order[at + 1];
    for (int at = count - 1; at > target; --at)
        order[at] = order[at - 1];
    order[target] = moved;
    SetOrderArray(count, order.get());
}

// The gap of a drop index: the left edge of the item at that display
// position, or the right edge of the last one.
int CFlatHeaderCtrl::DropGapX(int dropIndex) const
{
    const int count = GetItemCount();
    CRect item;
    GetItemRect(OrderToIndex(dropIndex < count ? dropIndex : count - 1), item);
    return dropIndex < count ? item.left : item.right;
}

LRESULT CFlatHeaderCtrl::OnSetHotDivider(WPARAM wParam, LPARAM lParam)
{
    int index = static_cast<int>(lParam);
    if (wParam)
    {
        HDHITTESTINFO hit{};
        hit.pt = CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)));
        const int item = HitTest(&hit);
        CRect rect;
        HDITEMW hdi{};
        hdi.mask = HDI_ORDER;
        index = item >= 0 && GetItemRect(item, rect) && GetItem(item, &hdi)
                    ? hdi.iOrder + (hit.pt.x > rect.CenterPoint().x ? 1 : 0)
                    : -1;
    }
    const int count = GetItemCount();
    if (index < 0 || index > count + 1 || count == 0)
    {
        delete m_pDropWnd;
        m_pDropWnd = nullptr;
        return -1;
    }
    CRect client;
    GetClientRect(client);
    if (m_pDropWnd == nullptr)
    {
        m_pDropWnd = new CFHDropWnd(m_crDropColor);
        if (!m_pDropWnd->Create(client.Height()))
        {
            delete m_pDropWnd;
            m_pDropWnd = nullptr;
            return -1;
        }
    }
    CPoint gap(DropGapX(index), client.top);
    ClientToScreen(&gap);
    m_pDropWnd->PlaceAt(gap);
    return index;
}
