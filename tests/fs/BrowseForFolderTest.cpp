// BrowseForFolderTest.cpp - the shell's folder dialog driven for real under
// Xvfb: a watcher thread selects items, reads the dialog and closes it.
#include <gtest/gtest.h>

#include "support/FolderDialogWatcher.h"
#include "support/TempDir.h"

#include <shellapi.h>

#include <ostream>
#include <string>

// Lets failures show the texts instead of their addresses.
void PrintTo(const CString& text, std::ostream* os)
{
    const int bytes = WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string utf8(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, &utf8[0], bytes, nullptr, nullptr);
    *os << '"' << utf8.c_str() << '"';
}

namespace {

using qmtest::FolderDialogWatcher;

// The ANSI form of `text` in the process code page (936 in the test prefix).
std::string Ansi(const wchar_t* text)
{
    const int bytes = WideCharToMultiByte(CP_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<size_t>(bytes), '\0');
    WideCharToMultiByte(CP_ACP, 0, text, -1, &ansi[0], bytes, nullptr, nullptr);
    ansi.resize(static_cast<size_t>(bytes) - 1);
    return ansi;
}

// dir\ a\ a\b\ a\f.dwg
class FolderDialogTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        file = dir.WriteFile(L"a\\f.dwg", "f");
        CreateDirectoryW(dir.Path() + L"a\\b", nullptr);
        a = dir.Path() + L"a";
        b = a + L"\\b";
    }

    qmtest::TempDir dir;
    CString a, b, file;
};

using GetDirTest = FolderDialogTest;

TEST_F(GetDirTest, FoldersOnlyReturnsTheFolderAndCancelRepeatsIt)
{
    const std::string title = Ansi(L"选择图库目录");
    CString chosen;
    {
        FolderDialogWatcher watcher({a}, IDOK);
        chosen = QM::GetDir(nullptr, 1, 0, title.c_str());
        const qmtest::FolderDialogSeen& seen = watcher.Wait();
        ASSERT_TRUE(seen.found);
        EXPECT_EQ(seen.title, CString(L"选择图库目录"));
        EXPECT_TRUE(seen.steps.at(0).okEnabled);
    }
    EXPECT_EQ(chosen, a);

    FolderDialogWatcher watcher({b}, IDCANCEL);
    EXPECT_EQ(QM::GetDir(nullptr, 1, 0, "x"), a);
    EXPECT_TRUE(watcher.Wait().found);
}

TEST_F(GetDirTest, FilesAllowedOnlyFilesEnableOK)
{
    for (unsigned int root : {0u, 1u}) {
        // The first visit fills the tree below a; Wine pumps messages while
        // it does, so the states are read on the second round.
        FolderDialogWatcher watcher({file, b, a, file, b}, IDCANCEL);
        QM::GetDir(nullptr, 0, root, "");
        const qmtest::FolderDialogSeen& seen = watcher.Wait();
        ASSERT_TRUE(seen.found);
        ASSERT_EQ(seen.steps.size(), 5u);
        EXPECT_FALSE(seen.steps[2].okEnabled) << "folder, root " << root;
        EXPECT_TRUE(seen.steps[3].okEnabled) << "file, root " << root;
        EXPECT_FALSE(seen.steps[4].okEnabled) << "folder, root " << root;
    }
}

TEST_F(GetDirTest, FilesAllowedReturnsTheFile)
{
    FolderDialogWatcher watcher({file}, IDOK);
    EXPECT_EQ(QM::GetDir(nullptr, 0, 1, nullptr), file);
    EXPECT_TRUE(watcher.Wait().found);
}

TEST_F(GetDirTest, ComputerRootWithFoldersOnlyHasNoCheck)
{
    FolderDialogWatcher watcher({b}, IDOK);
    EXPECT_EQ(QM::GetDir(nullptr, 1, 1, ""), b);
    const qmtest::FolderDialogSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_TRUE(seen.steps.at(0).okEnabled);
}

using GetDirFormShellTest = FolderDialogTest;

TEST_F(GetDirFormShellTest, FolderGetsExactlyOneBackslash)
{
    CString path = L"unchanged";
    FolderDialogWatcher watcher({b}, IDOK);
    EXPECT_TRUE(QM::GetDirFormShell(nullptr, L"工程目录", path));
    EXPECT_EQ(path, b + L"\\");
    EXPECT_EQ(watcher.Wait().title, CString(L"工程目录"));
}

TEST_F(GetDirFormShellTest, DriveRootKeepsOneBackslash)
{
    CString path;
    FolderDialogWatcher watcher({L"C:\\"}, IDOK);
    EXPECT_TRUE(QM::GetDirFormShell(nullptr, L"", path));
    EXPECT_EQ(path, CString(L"C:\\"));
}

TEST_F(GetDirFormShellTest, CancelLeavesThePath)
{
    CString path = L"unchanged";
    FolderDialogWatcher watcher({a}, IDCANCEL);
    EXPECT_FALSE(QM::GetDirFormShell(nullptr, L"", path));
    EXPECT_EQ(path, CString(L"unchanged"));
    EXPECT_TRUE(watcher.Wait().found);
}

// Records what the dialog tells its object, and tries the setters and the
// message senders while the dialog is open.
class Recorder : public CBrowseForFolder
{
public:
    using CBrowseForFolder::CBrowseForFolder;

    mutable int inits = 0;
    mutable CStringArray changes;
    bool disableOnInit = false;

protected:
    void OnInit() const override
    {
        ++inits;
        auto* self = const_cast<Recorder*>(this);
        self->SetTitle(CString(L"changed while open"));
        self->SetFlags(0);
        SetStatusText(L"状态");
        if (disableOnInit)
            EnableOK(false);
    }
    void OnSelChanged(LPCITEMIDLIST item) const override
    {
        wchar_t path[MAX_PATH] = L"";
        SHGetPathFromIDListW(item, path);
        changes.Add(path);
    }
};

using BrowseForFolderTest = FolderDialogTest;

TEST_F(BrowseForFolderTest, HooksRunAndSettersWaitWhileOpen)
{
    Recorder dlg(nullptr, nullptr, CString(L"挑选"));
    dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
    FolderDialogWatcher watcher({a, b}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    const qmtest::FolderDialogSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.title, CString(L"挑选"));
    EXPECT_TRUE(seen.statusVisible);
    EXPECT_EQ(seen.initial.status, CString(L"状态"));

    EXPECT_EQ(dlg.inits, 1);
    ASSERT_GE(dlg.changes.GetSize(), 2);
    EXPECT_EQ(dlg.changes[dlg.changes.GetSize() - 1], b);
    EXPECT_EQ(dlg.GetSelectedFolder(), b);
    EXPECT_EQ(dlg.GetTitle(), CString(L"挑选"));
    EXPECT_EQ(dlg.GetFlags(), static_cast<unsigned int>(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT));

    dlg.SetTitle(CString(L"closed again"));
    EXPECT_EQ(dlg.GetTitle(), CString(L"closed again"));
}

TEST_F(BrowseForFolderTest, EnableOKReachesTheOpenDialog)
{
    Recorder dlg;
    dlg.disableOnInit = true;
    FolderDialogWatcher watcher({}, IDCANCEL);
    EXPECT_FALSE(dlg.SelectFolder());
    const qmtest::FolderDialogSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_FALSE(seen.initial.okEnabled);
}

TEST_F(BrowseForFolderTest, CopyGetsTheCallbacks)
{
    Recorder original(nullptr, nullptr, CString(L"原"));
    original.SetFlags(BIF_RETURNONLYFSDIRS);
    Recorder copy(original);
    EXPECT_EQ(copy.GetTitle(), CString(L"原"));
    EXPECT_EQ(copy.GetFlags(), static_cast<unsigned int>(BIF_RETURNONLYFSDIRS));

    FolderDialogWatcher watcher({a}, IDOK);
    EXPECT_TRUE(copy.SelectFolder());
    EXPECT_EQ(watcher.Wait().title, CString(L"原"));
    EXPECT_EQ(copy.inits, 1);
    EXPECT_EQ(original.inits, 0);
    EXPECT_EQ(original.changes.GetSize(), 0);
    EXPECT_EQ(copy.GetSelectedFolder(), a);
    EXPECT_TRUE(original.GetSelectedFolder().IsEmpty());

    Recorder assigned;
    assigned = copy;
    EXPECT_EQ(assigned.GetTitle(), CString(L"原"));
    EXPECT_EQ(assigned.GetSelectedFolder(), a);
}

TEST_F(BrowseForFolderTest, TitleFromStringResources)
{
    CBrowseForFolder dlg(nullptr, nullptr, CString(L"旧"));
    EXPECT_FALSE(dlg.SetTitle(0));
    EXPECT_FALSE(dlg.SetTitle(-3));
    EXPECT_FALSE(dlg.SetTitle(64999));
    EXPECT_EQ(dlg.GetTitle(), CString(L"旧"));
    // String 1 of the library's own table, found through the resource chain.
    EXPECT_TRUE(dlg.SetTitle(1));
    EXPECT_EQ(dlg.GetTitle(), CString(L"塔维提示！"));
    EXPECT_EQ(CBrowseForFolder(nullptr, nullptr, 1).GetTitle(), CString(L"塔维提示！"));
}

TEST_F(BrowseForFolderTest, ItemWithoutPathLeavesItsDisplayName)
{
    LPITEMIDLIST computer = nullptr;
    ASSERT_HRESULT_SUCCEEDED(SHGetSpecialFolderLocation(nullptr, CSIDL_DRIVES, &computer));
    SHFILEINFOW info{};
    SHGetFileInfoW(reinterpret_cast<LPCWSTR>(computer), 0, &info, sizeof info, SHGFI_PIDL | SHGFI_DISPLAYNAME);

    CBrowseForFolder dlg(nullptr, nullptr, CString());
    FolderDialogWatcher watcher({L"::{20D04FE0-3AEA-1069-A2D8-08002B30309D}"}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    EXPECT_TRUE(watcher.Wait().found);
    // Confirmed, so true, though no path exists; what stays is the name the
    // dialog left (Windows fills it in, Wine 8 leaves it empty), never a path.
    const CString left = dlg.GetSelectedFolder();
    EXPECT_TRUE(left.IsEmpty() || left == CString(info.szDisplayName)) << left.GetLength();
    EXPECT_EQ(left.Find(L'\\'), -1);
    CoTaskMemFree(computer);
}

class DestinationTest : public FolderDialogTest
{
};

TEST_F(DestinationTest, OpensAtTheInitialFolderAndFollowsTheSelection)
{
    CSBDestination dlg(nullptr, 1);
    dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
    dlg.SetInitialSelection(a);
    FolderDialogWatcher watcher({b}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    const qmtest::FolderDialogSeen& seen = watcher.Wait();
    ASSERT_TRUE(seen.found);
    EXPECT_EQ(seen.title, CString(L"塔维提示！"));
    EXPECT_EQ(seen.initial.status, a);
    EXPECT_EQ(seen.steps.at(0).status, b);
    EXPECT_EQ(dlg.GetSelectedFolder(), b);
}

TEST_F(DestinationTest, ConfirmingAtOnceGivesTheInitialFolder)
{
    CSBDestination dlg;
    dlg.SetFlags(BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT);
    dlg.SetInitialSelection(b);
    FolderDialogWatcher watcher({}, IDOK);
    EXPECT_TRUE(dlg.SelectFolder());
    EXPECT_EQ(watcher.Wait().initial.status, b);
    EXPECT_EQ(dlg.GetSelectedFolder(), b);
}

}  // namespace
