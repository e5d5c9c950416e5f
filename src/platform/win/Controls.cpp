// Controls.cpp - the members of the control wrappers that need more than
// one message: creation, texts, owner drawing and tool records.
#include "platform/win/Controls.h"

namespace {

// The common controls' window classes, registered once per process.
void InitControls()
{
    static const bool done = [] {
        const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX),
                                           ICC_WIN95_CLASSES | ICC_DATE_CLASSES | ICC_STANDARD_CLASSES};
        return ::InitCommonControlsEx(&classes) != FALSE;
    }();
    (void)done;
}

// WM_DRAWITEM / WM_MEASUREITEM from the parent, handed to the control's
// virtual drawing members.
template <class Control>
BOOL OwnerDraw(Control* control, UINT message, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM)
        control->DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
    else
        control->MeasureItem(reinterpret_cast<LPMEASUREITEMSTRUCT>(lParam));
    if (result != nullptr)
        *result = TRUE;
    return TRUE;
}

CString ItemText(const CWnd& control, UINT lengthMessage, UINT textMessage, int index)
{
    const LRESULT length = control.SendMessage(lengthMessage, static_cast<WPARAM>(index));
    if (length <= 0)
        return CString();
    CString text;
    wchar_t* buffer = text.GetBufferSetLength(static_cast<int>(length));
    const LRESULT got = control.SendMessage(textMessage, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer));
    text.ReleaseBuffer(got < 0 ? 0 : static_cast<int>(got));
    return text;
}

} // namespace

BOOL CEdit::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"EDIT", nullptr, style, rect, parent, id);
}

void CEdit::GetSel(int& start, int& end) const
{
    DWORD first = 0, last = 0;
    SendMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&first), reinterpret_cast<LPARAM>(&last));
    start = static_cast<int>(first);
    end = static_cast<int>(last);
}

void CEdit::SetSel(int start, int end, BOOL noScroll)
{
    SendMessage(EM_SETSEL, static_cast<WPARAM>(start), end);
    if (!noScroll)
        SendMessage(EM_SCROLLCARET);
}

void CEdit::ReplaceSel(const wchar_t* text, BOOL canUndo)
{
    SendMessage(EM_REPLACESEL, canUndo, reinterpret_cast<LPARAM>(text));
}

IMPLEMENT_DYNAMIC(CButton, CWnd)

BOOL CButton::Create(const wchar_t* caption, DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"BUTTON", caption, style, rect, parent, id);
}

void CButton::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CButton::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM)
    {
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        if (result != nullptr)
            *result = TRUE;
        return TRUE;
    }
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CListBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"LISTBOX", nullptr, style, rect, parent, id);
}

int CListBox::FindString(int start, const wchar_t* text) const
{
    return m_hWnd == nullptr ? LB_ERR
                             : static_cast<int>(SendMessage(LB_FINDSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CListBox::FindStringExact(int start, const wchar_t* text) const
{
    return m_hWnd == nullptr ? LB_ERR
                             : static_cast<int>(SendMessage(LB_FINDSTRINGEXACT, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CListBox::SelectString(int start, const wchar_t* text)
{
    return m_hWnd == nullptr ? LB_ERR
                             : static_cast<int>(SendMessage(LB_SELECTSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CListBox::GetText(int index, wchar_t* buffer) const
{
    return static_cast<int>(SendMessage(LB_GETTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)));
}

void CListBox::GetText(int index, CString& text) const
{
    text = ItemText(*this, LB_GETTEXTLEN, LB_GETTEXT, index);
}

void CListBox::DrawItem(LPDRAWITEMSTRUCT)
{
}

void CListBox::MeasureItem(LPMEASUREITEMSTRUCT)
{
}

BOOL CListBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM || message == WM_MEASUREITEM)
        return OwnerDraw(this, message, lParam, result);
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CComboBox::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    return CWnd::Create(L"COMBOBOX", nullptr, style, rect, parent, id);
}

int CComboBox::FindString(int start, const wchar_t* text) const
{
    return m_hWnd == nullptr ? CB_ERR
                             : static_cast<int>(SendMessage(CB_FINDSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CComboBox::FindStringExact(int start, const wchar_t* text) const
{
    return m_hWnd == nullptr ? CB_ERR
                             : static_cast<int>(SendMessage(CB_FINDSTRINGEXACT, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CComboBox::SelectString(int start, const wchar_t* text)
{
    return m_hWnd == nullptr ? CB_ERR
                             : static_cast<int>(SendMessage(CB_SELECTSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(text)));
}

int CComboBox::GetLBText(int index, wchar_t* buffer) const
{
    return static_cast<int>(SendMessage(CB_GETLBTEXT, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(buffer)));
}

void CComboBox::GetLBText(int index, CString& text) const
{
    text = ItemText(*this, CB_GETLBTEXTLEN, CB_GETLBTEXT, index);
}

void CComboBox::DrawItem(LPDRAWITEMSTRUCT)
{
}

void CComboBox::MeasureItem(LPMEASUREITEMSTRUCT)
{
}

BOOL CComboBox::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM || message == WM_MEASUREITEM)
        return OwnerDraw(this, message, lParam, result);
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}

BOOL CHeaderCtrl::Create(DWORD style, const RECT& rect, CWnd* parent, UINT id)
{
    InitControls();
    return CWnd::Create(WC_HEADERW, nullptr, style, rect, parent, id);
}

void CHeaderCtrl::DrawItem(LPDRAWITEMSTRUCT)
{
}

BOOL CHeaderCtrl::OnChildNotify(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result)
{
    if (message == WM_DRAWITEM)
    {
        DrawItem(reinterpret_cast<LPDRAWITEMSTRUCT>(lParam));
        if (result != nullptr)
            *result = TRUE;
        return TRUE;
    }
    return CWnd::OnChildNotify(message, wParam, lParam, result);
}
