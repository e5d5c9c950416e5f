// InPlaceEdit.h - the text editor the editable list opens over a cell, and
// the "..." browse button that may sit glued to its right.
//
//   CInPlaceEdit* edit = list.ShowInPlaceEdit(row, column);   // the list owns it
//   edit->SetNumeric(TRUE);
//   edit->SetRange(0.0f, 10.0f);
//
// The edit hands its text back through WM_INPLACE_CTRL (InPlaceCtrl.h):
// Enter, or any loss of the focus, asks the list to validate; Escape
// cancels. A blank cannot be typed (the suite's cells never hold one), nor
// can the characters whose codes share the navigation keys' numbers ("#",
// "$", "&", "(", and "%" or "'" at the ends of the text): every message whose
// wParam is 9...40 is looked at as a key, and Tab, Home, End, Up, Down, and
// Left or Right at the ends of the text go to the list, which moves its cell
// cursor. The first loss of the focus is the only one that acts; moving to
// the edit's own browse button does not count as one, so the text is still
// validated once the user leaves both; after a refusal, Enter and Escape
// still end the edit. However its window goes, the edit tells the list
// (IPN_CLOSED). When the list accepts the text on a
// focus loss the window that took the focus is sent a button press and
// release, so the click still reaches it - unless the user's own press is
// under way on that window: a button clicked to leave the edit is clicked
// once, never twice (think of a Delete button).
//
// Numeric mode checks the text after every character: a number outside the
// range or a text that is no number is undone and the rest of the typed
// characters dropped; a lone "+", "-", "." or "-." is kept while typing.
// Check results: 0 valid, 1 out of range, 2 not a number, 3 a lone sign,
// 4 (CheckValue only) a lone point. Values are written with as many
// decimals as the most precise value written so far.
#pragma once
#include "controls/InPlaceCtrl.h"
#include "platform/win/Controls.h"

class CInPlaceButton;

class QM_API CInPlaceEdit : public CEdit
{
public:
    CInPlaceEdit() = default;

    virtual void Step(int count);
    virtual float GetStep() const { return m_fStep; }
    virtual void SetStep(float step) { m_fStep = step; }
    virtual void GetRange(float& minimum, float& maximum) const;
    virtual void SetRange(float minimum, float maximum);
    virtual int GetShowErrors() const { return m_bShowErrors; }
    virtual void SetShowErrors(int show) { m_bShowErrors = show; }
    virtual int CheckText(const CString& text) const;
    virtual int CheckValue() const;
    virtual int SetValue(float value);
    virtual float GetValue() const;

    void SetNumeric(int numeric) { m_bNumeric = numeric; }
    // Widens and heightens the edit inside the list until its text fits.
    void FitToText();
    // Glues `button` to this edit, both ways; the edit destroys and deletes
    // it with itself.
    void LinkButton(CInPlaceButton* button);
    CInPlaceButton* GetButton() const { return m_pButton; }

    BOOL PreTranslateMessage(MSG* msg) override;
    BOOL DestroyWindow() override;

    int OnCreate(LPCREATESTRUCTW cs);
    void OnChar(UINT nChar, UINT repeat, UINT flags);
    void OnKillFocus(CWnd* newWnd);
    void OnClose();
    void OnDestroy();
    void OnNcDestroy();

private:
    bool PassesToList(WPARAM key) const;
    void ShowCheckError(int result) const;
    static int Classify(const CString& text, float minimum, float maximum);

    int m_bNumeric = 0;
    int m_nDecimals = 0;
    int m_bShowErrors = 0;
    float m_fStep = 1.0f;
    float m_fMin = -3.4028235e38f;
    float m_fMax = 3.4028235e38f;
    CInPlaceButton* m_pButton = nullptr;
    int m_bEnterPressed = 0;
    int m_bAcceptOnClose = 1;
    int m_bFocusLost = 0;
    DECLARE_MESSAGE_MAP()
};

// A square "..." button at the right of an in-place edit: a click asks the
// list's parent, through IPN_BUTTON, for a new text (a file or colour
// chosen in a dialog, say) and gives the edit the focus back. Losing the
// focus to anything but its edit, except while it is asking, destroys it.
class QM_API CInPlaceButton : public CButton
{
public:
    CInPlaceButton(int item, int subItem) : m_iItem(item), m_iSubItem(subItem) {}

    CInPlaceEdit* GetEdit() const { return m_pEdit; }
    void OnClicked();
    void OnKillFocus(CWnd* newWnd);

private:
    friend class CInPlaceEdit;
    int m_iItem;
    int m_iSubItem;
    int m_bActive = 1;
    CInPlaceEdit* m_pEdit = nullptr;
    DECLARE_MESSAGE_MAP()
};
