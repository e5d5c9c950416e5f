// NumEditEx.cpp - the numeric edit box: key filter, range check, tool tip.
#include "controls/NumEditEx.h"

#include "frame/Messages.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cwchar>

namespace {

constexpr UINT_PTR kToolId = 1;

} // namespace

BEGIN_MESSAGE_MAP(CNumEditEx, CEdit)
    ON_WM_CHAR()
    ON_WM_KILLFOCUS()
    ON_CONTROL_REFLECT(EN_SETFOCUS, &CNumEditEx::OnSetfocus)
    ON_WM_MOUSEMOVE()
END_MESSAGE_MAP()

CNumEditEx::CNumEditEx()
{
    m_ToolTip.Create(nullptr);
    m_ToolTip.Activate(FALSE);
    m_ToolTip.SetMaxTipWidth(400);
}

CNumEditEx::~CNumEditEx() = default;

namespace {

// A finite decimal number and nothing else but blanks around it: digits
// with at most one point, an optional sign and an optional exponent. The
// C runtime's readers also take "nan", "inf" and hexadecimal, which a user
// may paste but no one means as a size.
bool ReadDecimal(const wchar_t* text, double* value)
{
    const wchar_t* at = text;
    while (*at == L' ' || *at == L'\t')
        ++at;
    const wchar_t* start = at;
    if (*at == L'+' || *at == L'-')
        ++at;
    int digits = 0;
    for (; *at >= L'0' && *at <= L'9'; ++at)
        ++digits;
    if (*at == L'.')
        for (++at; *at >= L'0' && *at <= L'9'; ++at)
            ++digits;
    if (digits == 0)
        return false;
    // An exponent still being typed ("9e", "9e-") reads as its mantissa, as
    // the box always took it.
    if (*at == L'e' || *at == L'E')
    {
        ++at;
        if (*at == L'+' || *at == L'-')
            ++at;
        while (*at >= L'0' && *at <= L'9')
            ++at;
    }
    const wchar_t* end = at;
    while (*at == L' ' || *at == L'\t')
        ++at;
    if (*at != L'\0')
        return false;
    const std::wstring number(start, end);
    const double read = _wtof(number.c_str());
    if (!std::isfinite(read))
        return false;
    *value = read;
    return true;
}

} // namespace

// Anything that is not a finite decimal number counts as 0.
double CNumEditEx::GetValue()
{
    CString text;
    GetWindowText(text);
    double value = 0.0;
    return ReadDecimal(text, &value) ? value : 0.0;
}

// The number is compared as the single-precision value the box keeps.
int CNumEditEx::RangeCode(const CString& text) const
{
    double read = 0.0;
    if (!ReadDecimal(text, &read))
        return 2;
    const double value = static_cast<float>(read);
    return value > m_dMax || value < m_dMin ? 1 : 0;
}

int CNumEditEx::IsValid()
{
    CString text;
    GetWindowText(text);
    int code = IsValid(text);
    if (text == L"." || text == L"-.")
        code = 4;
    if (m_bIntegerOnly && text.Find(L'.') >= 0)
        code = 2;
    return code;
}

int CNumEditEx::IsValid(CString text)
{
    if (text == L"+" || text == L"-")
        return 3;
    return RangeCode(text);
}

void CNumEditEx::ShowNumber(double value)
{
    CString text;
    text.Format(L"%f", value);
    if (text.Find(L'.') >= 0)
    {
        text.TrimRight(L'0');
        text.TrimRight(L'.');
    }
    SetWindowText(text);
}

void CNumEditEx::SetAllValue(double def, double min, double max)
{
    m_strTip.Empty();
    m_dMin = std::min(min, max);
    m_dDefault = std::max(m_dMin, std::min(def, max));
    m_dMax = max;
    ShowNumber(m_dDefault);
}

void CNumEditEx::SetAllValue(CString def, CString min, CString max)
{
    m_strTip.Empty();
    const double d = _wtof(def), lo = _wtof(min), hi = _wtof(max);
    if (min.IsEmpty())
        return SetAllValue(d, 0.0, 1e30);
    if (max.IsEmpty())
        return SetAllValue(d, lo, 1e30);
    SetAllValue(d, lo, hi);
    m_nShowTip = 1;
    const bool asGiven = std::fabs(m_dMin - lo) < 1e-30 && std::fabs(m_dDefault - d) < 1e-30 &&
                         std::fabs(m_dMax - hi) < 1e-30;
    if (asGiven && IsValid(min) == 0 && IsValid(max) == 0 && IsValid(def) == 0)
        m_strTip = L"最小值:" + min + L"\n最大值:" + max + L"\n默认值:" + def;
    if (m_ToolTip.GetToolCount() > 0)
        m_ToolTip.DelTool(this, kToolId);
}

void CNumEditEx::SetDefaultValue(double def)
{
    SetAllValue(def, m_dMin, m_dMax);
}

void CNumEditEx::SetTip(int show)
{
    m_nShowTip = show;
}

// A rejected character puts the text back with the caret at its end and
// drops the characters still queued, so a burst of typing stops there.
void CNumEditEx::OnChar(UINT ch, UINT repeat, UINT flags)
{
    if (ch == L' ')
        return;
    CString before;
    GetWindowText(before);
    CEdit::OnChar(ch, repeat, flags);
    if (ch == VK_BACK)
        return;
    const int code = IsValid();
    if (code == 0 || code == 3 || code == 4)
        return;
    const double value = GetValue();
    if (code == 1 && value >= 0 && value <= m_dMin)
        return;
    SetWindowText(before);
    SetSel(before.GetLength(), before.GetLength());
    MSG pending;
    while (::PeekMessageW(&pending, m_hWnd, WM_CHAR, WM_CHAR, PM_REMOVE))
    {
    }
}

void CNumEditEx::OnKillFocus(CWnd* newFocus)
{
    if (CWnd* parent = GetParent())
        parent->UpdateData(TRUE);
    CString text;
    GetWindowText(text);
    if (IsValid(text) != 0)
        ShowNumber(m_dDefault);
    CEdit::OnKillFocus(newFocus);
}

void CNumEditEx::OnSetfocus()
{
    if (m_strTip.IsEmpty())
    {
        m_strTip.Format(L"最小值:%g\n最大值:%g\n默认值:%g", m_dMin, m_dMax, m_dDefault);
        if (m_ToolTip.GetToolCount() > 0)
            m_ToolTip.DelTool(this, kToolId);
    }
    if (m_ToolTip.GetToolCount() == 0)
    {
        CRect client;
        GetClientRect(client);
        if (!m_ToolTip.AddTool(this, m_strTip, client, kToolId))
            QM::MsgOk(m_hWnd, L"Create ToolTip Error");
    }
    m_ToolTip.Activate(TRUE);
    m_ToolTip.Update();
}

void CNumEditEx::OnMouseMove(UINT flags, CPoint point)
{
    m_ToolTip.Update();
    CEdit::OnMouseMove(flags, point);
}

BOOL CNumEditEx::PreTranslateMessage(MSG* msg)
{
    if (m_nShowTip)
        m_ToolTip.RelayEvent(msg);
    return CEdit::PreTranslateMessage(msg);
}
