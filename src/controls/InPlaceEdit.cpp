// InPlaceEdit.cpp - the in-place text editor: keys, numeric checks, growing
// to fit, and the ways an edit ends.
#include "controls/InPlaceEdit.h"

#include "frame/Messages.h"
#include "platform/win/DeviceContexts.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <vector>

BEGIN_MESSAGE_MAP(CInPlaceEdit, CEdit)
    ON_WM_KILLFOCUS()
    ON_WM_CHAR()
    ON_WM_CREATE()
    ON_WM_NCDESTROY()
    ON_WM_CLOSE()
    ON_WM_DESTROY()
END_MESSAGE_MAP()

void CInPlaceEdit::GetRange(float& minimum, float& maximum) const
{
    minimum = m_fMin;
    maximum = m_fMax;
}

void CInPlaceEdit::SetRange(float minimum, float maximum)
{
    m_fMin = minimum;
    m_fMax = maximum;
}

void CInPlaceEdit::Step(int count)
{
    float value = GetValue() + static_cast<float>(count) * m_fStep;
    value = value < m_fMin ? m_fMin : value > m_fMax ? m_fMax : value;
    SetValue(value);
}

// 0 a number in range, 1 out of range, 2 no number, 3 a lone sign.
int CInPlaceEdit::Classify(const CString& text, float minimum, float maximum)
{
    if (text == L"+" || text == L"-")
        return 3;
    float value = 0.0f;
    std::vector<wchar_t> rest(static_cast<size_t>(text.GetLength()) + 1);
    if (std::swscanf(text, L"%f%s", &value, rest.data()) != 1)
        return 2;
    return value < minimum || value > maximum ? 1 : 0;
}

void CInPlaceEdit::ShowCheckError(int result) const
{
    CString text;
    if (result & 1)
        text += L"Given value is out of range.\n";
    if (result & 2)
        text += L"Characters must be a number.\n";
    QM::MsgBox(m_hWnd, text, MB_ICONSTOP);
}

int CInPlaceEdit::CheckText(const CString& text) const
{
    const int result = Classify(text, m_fMin, m_fMax);
    if (m_bShowErrors && (result == 1 || result == 2))
        ShowCheckError(result);
    return result;
}

// A lone point is still on its way to a number; the box it shows with
// errors on is empty, since neither message fits.
int CInPlaceEdit::CheckValue() const
{
    CString text;
    GetWindowText(text);
    const int result = text == L"." || text == L"-." ? 4 : Classify(text, m_fMin, m_fMax);
    if (m_bShowErrors && result != 0 && result != 3)
        ShowCheckError(result);
    return result;
}

int CInPlaceEdit::SetValue(float value)
{
    if (value < m_fMin || value > m_fMax)
        return 0;
    CString text;
    text.Format(L"%G", static_cast<double>(value));
    const int point = text.Find(L'.');
    if (point >= 0)
    {
        int digits = 0;
        while (point + 1 + digits < text.GetLength() && std::iswdigit(text[point + 1 + digits]))
            ++digits;
        if (digits > m_nDecimals)
            m_nDecimals = digits;
    }
    CString format;
    format.Format(L"%%.%df", m_nDecimals);
    text.Format(format, static_cast<double>(value));
    SetWindowText(text);
    return 1;
}

float CInPlaceEdit::GetValue() const
{
    if (CheckValue() != 0)
        return m_fMin;
    CString text;
    GetWindowText(text);
    float value = m_fMin;
    std::swscanf(text, L"%f", &value);
    return value;
}

void CInPlaceEdit::LinkButton(CInPlaceButton* button)
{
    m_pButton = button;
    if (button != nullptr)
        button->m_pEdit = this;
}

bool CInPlaceEdit::PassesToList(WPARAM key) const
{
    int start = 0, end = 0;
    switch (key)
    {
    case VK_TAB:
    case VK_END:
    case VK_HOME:
    case VK_UP:
    case VK_DOWN:
        return true;
    case VK_LEFT:
        GetSel(start, end);
        return start == 0 && end == 0;
    case VK_RIGHT:
        GetSel(start, end);
        return start == GetWindowTextLength() && end == start;
    default:
        return false;
    }
}

// Keys the dialog manager would take (Enter for the default button, Escape
// for Cancel, Tab for the next control) go straight to the edit instead.
// The Ctrl key's raw state is tested, so its toggle bit counts as held.
BOOL CInPlaceEdit::PreTranslateMessage(MSG* msg)
{
    if (msg->wParam >= VK_TAB && msg->wParam <= VK_DOWN && PassesToList(msg->wParam))
    {
        ::SendMessageW(::GetParent(m_hWnd), msg->message, msg->wParam, msg->lParam);
        return TRUE;
    }
    if (msg->message != WM_KEYDOWN)
        return CEdit::PreTranslateMessage(msg);
    const WPARAM key = msg->wParam;
    if (key != VK_RETURN && key != VK_DELETE && key != VK_ESCAPE && key != VK_TAB && ::GetKeyState(VK_CONTROL) == 0)
        return CEdit::PreTranslateMessage(msg);
    if (key == VK_RETURN)
        m_bEnterPressed = 1;
    ::TranslateMessage(msg);
    if (key != VK_ESCAPE || (GetStyle() & ES_MULTILINE) == 0)
        ::DispatchMessageW(msg);
    return TRUE;
}

BOOL CInPlaceEdit::DestroyWindow()
{
    m_bAcceptOnClose = 0;
    return CEdit::DestroyWindow();
}

int CInPlaceEdit::OnCreate(LPCREATESTRUCTW cs)
{
    if (CEdit::OnCreate(cs) == -1)
        return -1;
    SetFont(GetParent()->GetFont());
    SetFocus();
    return 0;
}

// Enter and Escape end the edit even after a refusal spent its first focus
// loss: the user corrected the text and asks again.
void CInPlaceEdit::OnChar(UINT nChar, UINT repeat, UINT flags)
{
    if (nChar == VK_ESCAPE || nChar == VK_RETURN)
    {
        if (nChar == VK_ESCAPE)
            m_bAcceptOnClose = 0;
        m_bFocusLost = 0;
        GetParent()->SetFocus();
        return;
    }
    if (nChar == L' ')
        return;
    const float before = m_bNumeric ? GetValue() : 0.0f;
    CEdit::OnChar(nChar, repeat, flags);
    const int check = m_bNumeric ? CheckValue() : 0;
    if (m_bNumeric && check == 0)
    {
        SetValue(GetValue());
        SetSel(GetWindowTextLength(), GetWindowTextLength());
    }
    else if (check == 1 || check == 2)
    {
        SetValue(before);
        SetSel(0, -1);
        SendMessage(EM_SCROLLCARET);
        MSG pending;
        while (::PeekMessageW(&pending, m_hWnd, WM_CHAR, WM_CHAR, PM_REMOVE))
            continue;
    }
    if (m_pButton == nullptr)
        FitToText();
}

// Validation may close this edit (the object is gone when it returns true),
// so everything needed afterwards is taken first.
void CInPlaceEdit::OnKillFocus(CWnd* newWnd)
{
    CEdit::OnKillFocus(newWnd);
    const HWND target = newWnd == nullptr ? nullptr : newWnd->GetSafeHwnd();
    if (m_bFocusLost || (m_pButton != nullptr && target == m_pButton->GetSafeHwnd()))
        return;
    m_bFocusLost = 1;
    if (!m_bAcceptOnClose)
    {
        SendInPlaceMsg(this, IPN_CANCEL, CString());
        return;
    }
    CString text;
    GetWindowText(text);
    if (!SendInPlaceMsg(this, IPN_VALIDATE, text) || target == nullptr || !::IsWindow(target))
        return;
    POINT cursor{};
    ::GetCursorPos(&cursor);
    const bool pressedThere = (::GetKeyState(VK_LBUTTON) & 0x8000) != 0 && ::WindowFromPoint(cursor) == target;
    ::SetFocus(target);
    if (pressedThere)
        return;
    ::SendMessageW(target, WM_LBUTTONDOWN, 0, 0);
    ::SendMessageW(target, WM_LBUTTONUP, 0, 0);
}

void CInPlaceEdit::OnClose()
{
    GetParent()->SetFocus();
    CEdit::OnClose();
}

// However the window goes, the list forgets it (the list itself let go
// first when it is the one destroying it).
void CInPlaceEdit::OnDestroy()
{
    CEdit::OnDestroy();
    SendInPlaceMsg(this, IPN_CLOSED, CString());
}

void CInPlaceEdit::OnNcDestroy()
{
    CEdit::OnNcDestroy();
    CInPlaceButton* button = m_pButton;
    m_pButton = nullptr;
    if (button != nullptr)
    {
        button->m_pEdit = nullptr;
        button->DestroyWindow();
        delete button;
    }
}

// Measured in the list's font twice, in the edit's own width and stretched
// to the list's right edge; the flatter measurement wins. A browse button
// keeps a square of room at the right.
void CInPlaceEdit::FitToText()
{
    CWnd* list = GetParent();
    if (m_hWnd == nullptr || list == nullptr)
        return;
    CRect client, listClient, window;
    GetClientRect(client);
    MapWindowPoints(list, client);
    list->GetClientRect(listClient);
    GetWindowRect(window);
    list->ScreenToClient(window);
    CString text;
    GetWindowText(text);
    if (text.IsEmpty())
        text = L" ";
    CClientDC dc(list);
    CFont* old = dc.SelectObject(list->GetFont());
    CRect own = client, wide = client;
    wide.right = listClient.right;
    dc.DrawText(text, own, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    dc.DrawText(text, wide, DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX);
    if (old != nullptr)
        dc.SelectObject(old);
    const CRect& size = own.Height() < wide.Height() ? own : wide;
    CRect fitted = window;
    if (size.Width() + 5 > client.Width())
        fitted.right = std::min<LONG>(client.left + size.Width() + 5, listClient.right - 2);
    if (size.Height() + 5 > client.Height())
    {
        fitted.bottom = client.top + size.Height() + 5;
        if (fitted.bottom >= listClient.bottom - 2)
        {
            fitted.bottom = listClient.bottom - 2;
            ShowScrollBar(SB_VERT);
        }
    }
    if (fitted == window)
        return;
    if (m_pButton != nullptr)
        fitted.right -= fitted.Height();
    MoveWindow(fitted);
}
