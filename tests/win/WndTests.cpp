// The window foundation inside a host's modal dialog, whose loop is not ours.
#include <QMUtil.h>

#include "support/HostDialog.h"
#include "support/Input.h"

#include <gtest/gtest.h>

namespace {

enum : WORD { IDC_EDIT = 101, IDC_BUTTON = 102, IDC_CREATED = 103 };

// An edit that eats 'x' before the dialog manager sees it, counts its
// changes through reflection, and notes when it is let go.
class ProbeEdit : public CEdit
{
public:
    BOOL PreTranslateMessage(MSG* msg) override
    {
        keyDowns += msg->message == WM_KEYDOWN;
        return msg->message == WM_CHAR && msg->wParam == L'x';
    }
    void OnChange() { ++changes; }
    int OnCreate(LPCREATESTRUCTW cs)
    {
        createdWithId = static_cast<int>(reinterpret_cast<UINT_PTR>(cs->hMenu));
        return CEdit::OnCreate(cs);
    }
    void PreSubclassWindow() override { ++subclassed; }
    void PostNcDestroy() override { ++finished; }

    int keyDowns = 0, changes = 0, createdWithId = 0, subclassed = 0, finished = 0;
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ProbeEdit, CEdit)
    ON_WM_CREATE()
    ON_CONTROL_REFLECT(EN_CHANGE, &ProbeEdit::OnChange)
END_MESSAGE_MAP()

// A button that sees its click and lets the dialog have it as well.
class ProbeButton : public CButton
{
public:
    BOOL OnClicked()
    {
        ++clicks;
        return FALSE;
    }
    int clicks = 0;
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(ProbeButton, CButton)
    ON_CONTROL_REFLECT_EX(BN_CLICKED, &ProbeButton::OnClicked)
END_MESSAGE_MAP()

HostDialog MakeHost()
{
    return HostDialog({{L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_EDIT, 10, 10, 100, 14},
                       {L"BUTTON", L"OK", BS_PUSHBUTTON | WS_TABSTOP, IDC_BUTTON, 10, 40, 50, 14}});
}

TEST(WindowFoundation, HookAndReflectionWorkInsideTheHostsModalLoop)
{
    HostDialog host = MakeHost();
    ProbeEdit edit;
    ProbeButton button;
    host.onInit = [&](HWND dialog) {
        ASSERT_TRUE(edit.SubclassDlgItem(IDC_EDIT, CWnd::FromHandle(dialog)));
        ASSERT_TRUE(button.SubclassDlgItem(IDC_BUTTON, CWnd::FromHandle(dialog)));
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        h.Focus(IDC_EDIT);
        input::Type(L"axb");
        h.Settle();
        EXPECT_EQ(h.Text(IDC_EDIT), L"ab");
        input::Click(h.Item(IDC_BUTTON));
        h.Settle();
    }));
    EXPECT_EQ(edit.subclassed, 1);
    EXPECT_GE(edit.keyDowns, 3);
    EXPECT_EQ(edit.changes, 2);
    EXPECT_EQ(button.clicks, 1);
    // The edit's EN_CHANGE was handled where it was reflected, so the dialog
    // saw none; the button passed its click on.
    static const ExpectedMsg kSeen[] = {
        {WM_COMMAND, 0, MAKEWPARAM(IDC_EDIT, EN_SETFOCUS), 0},  {WM_COMMAND, 0, MAKEWPARAM(IDC_EDIT, EN_UPDATE), 0},
        {WM_COMMAND, 0, MAKEWPARAM(IDC_EDIT, EN_UPDATE), 0},    {WM_COMMAND, 0, MAKEWPARAM(IDC_EDIT, EN_KILLFOCUS), 0},
        {WM_COMMAND, 0, MAKEWPARAM(IDC_BUTTON, BN_CLICKED), 0}, {0, 0, 0, 0}};
    EXPECT_TRUE(SequenceMatches(host.Received(), kSeen, host.Window()));
}

LRESULT CALLBACK CountChanges(HWND hWnd, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR, DWORD_PTR count)
{
    if (message == WM_COMMAND && HIWORD(wParam) == EN_CHANGE)
        ++*reinterpret_cast<int*>(count);
    return ::DefSubclassProc(hWnd, message, wParam, lParam);
}

// The parent goes on reflecting for an attached child after its own object
// lets go; a host subclass put on above the library keeps its place when
// the child lets go in turn, and the dialog then gets the child's commands.
TEST(WindowFoundation, ParentReflectsAfterItsObjectAndUnderAHostSubclass)
{
    HostDialog host = MakeHost();
    CWnd parent;
    ProbeEdit edit;
    int hostSaw = 0;
    host.onInit = [&](HWND dialog) {
        ASSERT_TRUE(parent.SubclassWindow(dialog));
        ASSERT_TRUE(edit.SubclassDlgItem(IDC_EDIT, &parent));
        parent.UnsubclassWindow();
        ::SetWindowSubclass(dialog, &CountChanges, 1, reinterpret_cast<DWORD_PTR>(&hostSaw));
    };
    ASSERT_TRUE(host.RunModal([&](HostDialog& h) {
        h.Focus(IDC_EDIT);
        input::Type(L"ab");
        h.Settle();
        h.OnDialogThread([&] { edit.UnsubclassWindow(); });
        input::Type(L"c");
        h.Settle();
        EXPECT_EQ(h.Text(IDC_EDIT), L"abc");
    }));
    EXPECT_EQ(std::make_pair(edit.changes, hostSaw), std::make_pair(2, 3));
    int dialogSaw = 0;
    for (const ReceivedMsg& msg : host.Received())
        dialogSaw += msg.message == WM_COMMAND && HIWORD(msg.wParam) == EN_CHANGE;
    EXPECT_EQ(dialogSaw, 1);
}

TEST(WindowFoundation, ClosingTheDialogReleasesEveryAttachedObject)
{
    HostDialog host = MakeHost();
    ProbeEdit subclassed, created;
    CWnd attached;
    HWND handles[3] = {};
    host.onInit = [&](HWND dialog) {
        subclassed.SubclassDlgItem(IDC_EDIT, CWnd::FromHandle(dialog));
        attached.Attach(::GetDlgItem(dialog, IDC_BUTTON));
        created.Create(WS_CHILD | WS_VISIBLE | WS_BORDER, CRect(10, 100, 100, 120), CWnd::FromHandle(dialog), IDC_CREATED);
        handles[0] = subclassed.m_hWnd, handles[1] = attached.m_hWnd, handles[2] = created.m_hWnd;
    };
    ASSERT_TRUE(host.RunModal([](HostDialog&) {}));
    EXPECT_EQ(created.createdWithId, IDC_CREATED);
    EXPECT_EQ(created.subclassed, 1);
    const CWnd* objects[] = {&subclassed, &attached, &created};
    for (int i = 0; i < 3; ++i)
    {
        ASSERT_NE(handles[i], nullptr) << i;
        EXPECT_EQ(CWnd::FromHandlePermanent(handles[i]), nullptr) << i;
        EXPECT_EQ(objects[i]->m_hWnd, nullptr) << i;
    }
    EXPECT_EQ(std::make_pair(subclassed.finished, created.finished), std::make_pair(1, 1));
}

TEST(WindowFoundation, NullWindowsAndMissingIdsGiveEmptyResults)
{
    CWnd none;
    CEdit edit;
    CListBox box;
    CString text = L"kept?";
    none.GetWindowText(text);
    EXPECT_TRUE(text.IsEmpty());
    for (CWnd* got : {CWnd::FromHandle(nullptr), none.GetDlgItem(1), none.GetParent()})
        EXPECT_EQ(got, nullptr);
    EXPECT_FALSE(edit.SubclassDlgItem(1, nullptr) || edit.SubclassDlgItem(1, &none) || edit.SubclassWindow(nullptr));
    EXPECT_EQ(std::make_pair(box.GetCurSel(), box.FindString(-1, L"a")), std::make_pair(LB_ERR, LB_ERR));
    EXPECT_EQ(none.SendMessage(WM_GETTEXTLENGTH), 0);
    EXPECT_EQ(none.Detach(), nullptr);
}

// SetFocus hands back the window that had the focus; when the focus change
// destroyed it (an editor closing on its focus loss), there is no window to
// wrap, and the wrappers of live windows stay valid across the sweep.
TEST(WindowFoundation, AWindowThatDiedGetsNoTemporaryWrapper)
{
    HWND first = ::CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    HWND second = ::CreateWindowW(L"STATIC", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr, nullptr, nullptr);
    CWnd* live = CWnd::FromHandle(second);
    CWnd::FromHandle(first);
    ::DestroyWindow(first);
    EXPECT_EQ(CWnd::FromHandle(first), nullptr);
    EXPECT_EQ(CWnd::FromHandle(second), live);
    EXPECT_EQ(live->GetSafeHwnd(), second);
    ::DestroyWindow(second);
}

} // namespace
