// NumEditEx.h - an edit box that takes only a number within a range, puts
// its default back when the focus leaves it holding something else, and can
// show a tool tip stating the range and the default.
//
//   CNumEditEx m_width;                                   // member of the dialog
//   m_width.SubclassDlgItem(IDC_WIDTH, this);
//   m_width.SetAllValue(L"50", L"10", L"100");            // shows 50, tip on
//   double width = m_width.GetValue();
//
// Numbers are read in single precision on purpose: past the float range a
// value becomes infinite and so out of range, and about seven significant
// digits count. While typing, a number below the minimum (but not below 0)
// is let through so that it can be typed digit by digit up to a minimum
// above zero; the check on leaving puts the default back. With
// m_bIntegerOnly set, a "." cannot be typed (text pasted with one is not
// reset when the focus leaves: that check ignores the flag).
#pragma once
#include "platform/win/Controls.h"

class QM_API CNumEditEx : public CEdit
{
public:
    CNumEditEx();
    ~CNumEditEx() override;

    // The window text as a double (_wtof: invalid text gives 0).
    double GetValue();
    // Minimum = the smaller of min and max, default clamped into [minimum,
    // max], maximum = max as given; the default is shown ("%f" without
    // trailing zeros: 1.0 shows as 1, 2.50 as 2.5); the tip is rebuilt at the
    // next focus.
    void SetAllValue(double def, double min, double max);
    // The texts as numbers; an empty min means 0..1e30, an empty max
    // min..1e30. With both, the tip is switched on and, when no clamping
    // happened and the three texts are numbers in range, reads the caller's
    // texts as written: "最小值:10\n最大值:100\n默认值:50".
    void SetAllValue(CString def, CString min, CString max);
    void SetDefaultValue(double def);
    // Non-zero: mouse messages reach the tool tip, which then shows.
    void SetTip(int show);
    BOOL PreTranslateMessage(MSG* msg) override;

    int m_bIntegerOnly = 0;

    void OnChar(UINT ch, UINT repeat, UINT flags);
    void OnKillFocus(CWnd* newFocus);
    void OnSetfocus();
    void OnMouseMove(UINT flags, CPoint point);

private:
    // 0 valid, 1 out of range, 2 not a number, 3 a lone sign, 4 a lone
    // decimal point ("." or "-."); integer-only text with "." is 2.
    int IsValid();
    // Only the lone sign and the number test, on `text`.
    int IsValid(CString text);
    int RangeCode(const CString& text) const;
    void ShowNumber(double value);

    double m_dMin = 0.0;
    double m_dDefault = 1.0;
    double m_dMax = 1e50;
    CToolTipCtrl m_ToolTip;
    CString m_strTip;
    int m_nShowTip = 0;

    DECLARE_MESSAGE_MAP()
};
