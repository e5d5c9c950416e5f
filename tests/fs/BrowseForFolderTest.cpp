// BrowseForFolderTest.cpp - the shell's folder dialog driven by a watcher thread under Xvfb.
#include <gtest/gtest.h>

#include "support/FolderDialogWatcher.h"
#include "support/TempDir.h"

#include <vector>

namespace {

using qmtest::FolderDialogWatcher;

// dir\ a\ a\b\ a\f.dwg
class FolderDialogTest : public ::testing::Test
{
protected:
    FolderDialogTest() { CreateDirectoryW(b, nullptr); }

    qmtest::TempDir dir;
    const CString file = dir.WriteFile(L"a\\f.dwg", "f"), a = dir.Path() + L"a", b = a + L"\\b";
};

TEST_F(FolderDialogTest, GetDirFoldersOnlyOrFilesAndGetDirFormShell)
{
    // The title arrives in the process code page (936 in the test prefix).
    char title[64] = "";
    WideCharToMultiByte(CP_ACP, 0, L"选择图库目录", -1, title, sizeof title, nullptr, nullptr);
    for (unsigned int root : {0u, 1u}) {
        const CString folder = root == 0 ? a : b;
        FolderDialogWatcher watcher({folder}, IDOK);
        EXPECT_EQ(QM::GetDir(nullptr, 1, root, title), folder);
        const qmtest::FolderDialogSeen& seen = watcher.Wait();
        ASSERT_TRUE(seen.found);
        EXPECT_EQ(seen.title, CString(L"选择图库目录"));
        EXPECT_TRUE(seen.steps.at(0).okEnabled) << "root " << root;
    }
    FolderDialogWatcher watcher({a}, IDCANCEL);
    EXPECT_EQ(QM::GetDir(nullptr, 1, 0, "x"), b);
    EXPECT_TRUE(watcher.Wait().found);
    // With files allowed only files enable OK, and the file is returned.
    for (unsigned int root : {0u, 1u}) {
        // Wine pumps messages while the first visit fills the tree: read the second round.
        FolderDialogWatcher watcher({file, b, a, file, b, file}, IDOK);
        EXPECT_EQ(QM::GetDir(nullptr, 0, root, nullptr), file) << "root " << root;
        const qmtest::FolderDialogSeen& seen = watcher.Wait();
        ASSERT_EQ(seen.steps.size(), 6u);
        EXPECT_EQ(std::vector<bool>({seen.steps[2].okEnabled, seen.steps[3].okEnabled, seen.steps[4].okEnabled}),
                  std::vector<bool>({false, true, false})) << "folder, file, folder; root " << root;
    }
    // GetDirFormShell ends in one backslash, and a cancel keeps the path.
    const struct { const char* row; CString select; int button; bool ok; CString path; } rows[] = {
        {"folder", b, IDOK, true, b + L"\\"}, {"drive root", L"C:\\", IDOK, true, L"C:\\"},
        {"cancel", a, IDCANCEL, false, L"unchanged"}};
    for (const auto& row : rows) {
        CString path = L"unchanged";
        FolderDialogWatcher watcher({row.select}, row.button);
        EXPECT_EQ(QM::GetDirFormShell(nullptr, L"工程目录", path), row.ok) << row.row;
        EXPECT_EQ(path, row.path) << row.row;
        EXPECT_EQ(watcher.Wait().title, CString(L"工程目录")) << row.row;
    }
}

// Records the hooks; tries the setters and senders while the dialog is open.
class Recorder : public CBrowseForFolder
{
public:
    using CBrowseForFolder::CBrowseForFolder;

    mutable int inits = 0;
    mutable CStringArray changes;

protected:
    void OnInit() const override
    {
        ++inits;
        auto* self = const_cast<Recorder*>(this);
        self->SetTitle(CString(L"changed while open"));
        self->SetFlags(0);
        SetStatusText(L"状态");
        EnableOK(false);
    }
    void OnSelChanged(LPCITEMIDLIST item) const override
    {
        wchar_t path[MAX_PATH] = L"";
        SHGetPathFromIDListW(item, path);
        changes.Add(path);
    }
};

TEST_F(FolderDialogTest, HooksRunAndSettersWaitWhileOpen)
{
    Recorder dlg(nullptr, nullptr, CString(L"挑选"));
    dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
    FolderDialogWatcher watcher({a, b}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    const qmtest::FolderDialogSeen& seen = watcher.Wait();
    EXPECT_EQ(seen.title, CString(L"挑选"));
    EXPECT_TRUE(seen.statusVisible);
    EXPECT_EQ(seen.initial.status, CString(L"状态"));
    EXPECT_FALSE(seen.initial.okEnabled);

    EXPECT_EQ(dlg.inits, 1);
    ASSERT_GE(dlg.changes.GetSize(), 2);
    EXPECT_EQ(dlg.changes[dlg.changes.GetSize() - 1], b);
    EXPECT_EQ(dlg.GetSelectedFolder(), b);
    EXPECT_EQ(dlg.GetTitle(), CString(L"挑选"));
    EXPECT_EQ(dlg.GetFlags(), static_cast<unsigned int>(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT));
}

TEST_F(FolderDialogTest, CopyGetsTheCallbacksAndTitlesComeFromStringResources)
{
    Recorder original(nullptr, nullptr, CString(L"原"));
    original.SetFlags(BIF_RETURNONLYFSDIRS);
    Recorder copy(original);
    FolderDialogWatcher watcher({a}, IDOK);
    EXPECT_TRUE(copy.SelectFolder());
    EXPECT_EQ(watcher.Wait().title, CString(L"原"));
    EXPECT_EQ(copy.inits, 1);
    EXPECT_EQ(original.inits + original.changes.GetSize(), 0);
    EXPECT_EQ(copy.GetSelectedFolder(), a);
    EXPECT_TRUE(original.GetSelectedFolder().IsEmpty());

    Recorder assigned;
    assigned = copy;
    EXPECT_EQ(assigned.GetSelectedFolder(), a);
    // Titles from string resources: a missing one leaves the title as it was.
    CBrowseForFolder dlg(nullptr, nullptr, CString(L"旧"));
    for (int missing : {0, -3, 64999})
        EXPECT_FALSE(dlg.SetTitle(missing)) << missing;
    EXPECT_EQ(dlg.GetTitle(), CString(L"旧"));
    EXPECT_TRUE(dlg.SetTitle(1));   // the library's own table, through the resource chain
    EXPECT_EQ(dlg.GetTitle(), CString(L"塔维提示！"));
    EXPECT_EQ(CBrowseForFolder(nullptr, nullptr, 1).GetTitle(), CString(L"塔维提示！"));
}

TEST_F(FolderDialogTest, ItemWithoutPathLeavesNoPathAndDestinationOpensAtTheInitialFolder)
{
    CBrowseForFolder dlg(nullptr, nullptr, CString());
    FolderDialogWatcher watcher({L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    EXPECT_TRUE(watcher.Wait().found);
    // Confirmed, so true; what stays is the display name (Wine leaves it empty), never a path.
    EXPECT_EQ(dlg.GetSelectedFolder().Find(L'\\'), -1);
    // A destination opens at the initial folder and shows the selection.
    const struct { CString initial; std::vector<CString> select; } rows[] = {{a, {b}}, {b, {}}};
    for (const auto& row : rows) {
        CSBDestination dlg(nullptr, 1);
        dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
        dlg.SetInitialSelection(row.initial);
        FolderDialogWatcher watcher(row.select, IDOK);
        EXPECT_TRUE(dlg.SelectFolder());
        const qmtest::FolderDialogSeen& seen = watcher.Wait();
        EXPECT_EQ(seen.title, CString(L"塔维提示！"));
        EXPECT_EQ(seen.initial.status, row.initial);
        EXPECT_EQ(row.select.empty() ? seen.initial.status : seen.steps.at(0).status, b);
        EXPECT_EQ(dlg.GetSelectedFolder(), b) << row.select.size() << " selections";
    }
}

}  // namespace
