// FileOpsTest.cpp - shell copies in their four modes and deletes, on real
// folder trees.
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

namespace {

using qmtest::MsgBoxWatcher;
using qmtest::TempDir;

bool Exists(const CString& path)
{
    return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

// Wine 8 applies the files-only option to the contents of a copied folder
// as well (Windows applies it to a wildcard in the source alone), so there a
// folder copied by the shell arrives without its own sub-folders. The levels
// that this gap hides are checked on Windows only.
bool UnderWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

// Sym\ a.dwg b.dwg c.txt ro.dwg (read-only) sub\d.dwg sub\deeper\e.dwg
class CopyTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        dir.WriteFile(L"src\\Sym\\a.dwg", "A");
        dir.WriteFile(L"src\\Sym\\b.dwg", "B");
        dir.WriteFile(L"src\\Sym\\c.txt", "C");
        SetFileAttributesW(dir.WriteFile(L"src\\Sym\\ro.dwg", "R"), FILE_ATTRIBUTE_READONLY);
        dir.WriteFile(L"src\\Sym\\sub\\d.dwg", "D");
        dir.WriteFile(L"src\\Sym\\sub\\deeper\\e.dwg", "E");
        source = dir.Path() + L"src\\Sym\\";
        target = dir.Path() + L"tgt";
        copied = target + L"\\Sym\\";
    }

    std::string Read(const wchar_t* below) const { return TempDir::ReadFile(copied + below); }

    TempDir dir;
    CString source, target, copied;
};

TEST_F(CopyTest, EmptySourceOrTargetCopiesNothing)
{
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{L"", nullptr, target, nullptr, true, true}));
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, nullptr, L"", nullptr, true, true}));
    EXPECT_FALSE(Exists(target));
}

TEST_F(CopyTest, WholeFolderFlatCopiesItsFilesIntoLastComponent)
{
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, nullptr, target + L"\\", nullptr, false, false}));
    EXPECT_EQ(Read(L"a.dwg"), "A");
    EXPECT_EQ(Read(L"c.txt"), "C");
    EXPECT_EQ(Read(L"ro.dwg"), "R");
    EXPECT_FALSE(Exists(copied + L"sub"));
}

TEST_F(CopyTest, ListWithShorterTargetNameList)
{
    CStringArray files, names;
    files.Add(L"a.dwg");
    files.Add(L"sub\\d.dwg");
    files.Add(L"*.txt");
    names.Add(L"a-old.dwg");
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, &files, target, &names, false, false}));
    EXPECT_EQ(Read(L"a-old.dwg"), "A");
    EXPECT_FALSE(Exists(copied + L"a.dwg"));
    EXPECT_EQ(Read(L"d.dwg"), "D");
    EXPECT_EQ(Read(L"c.txt"), "C");
    EXPECT_FALSE(Exists(copied + L"b.dwg"));
}

TEST_F(CopyTest, MissingListEntryFailsButTheRestIsCopied)
{
    CStringArray files;
    files.Add(L"none.dwg");
    files.Add(L"b.dwg");
    EXPECT_FALSE(QM::CopyFiles(QM::CopyFilesStruct{source, &files, target, nullptr, true, false}));
    EXPECT_EQ(Read(L"b.dwg"), "B");
}

TEST_F(CopyTest, RecursiveListCopiesSubFoldersWholeAndOnlyListedFiles)
{
    CStringArray files;
    files.Add(L"a.dwg");
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, &files, target, nullptr, false, true}));
    EXPECT_EQ(Read(L"a.dwg"), "A");
    EXPECT_EQ(Read(L"sub\\d.dwg"), "D");
    if (!UnderWine()) {
        EXPECT_EQ(Read(L"sub\\deeper\\e.dwg"), "E");
    }
    EXPECT_FALSE(Exists(copied + L"b.dwg"));
    EXPECT_FALSE(Exists(copied + L"c.txt"));
}

TEST_F(CopyTest, TreeCopyKeepsNestingAndReadOnlyFiles)
{
    EXPECT_TRUE(QM::CopyTree(source, dir.Path() + L"new\\deep", false));
    copied = dir.Path() + L"new\\deep\\Sym\\";
    EXPECT_EQ(Read(L"b.dwg"), "B");
    EXPECT_EQ(Read(L"ro.dwg"), "R");
    if (!UnderWine()) {
        EXPECT_EQ(Read(L"sub\\deeper\\e.dwg"), "E");
    }
    EXPECT_TRUE(GetFileAttributesW(copied + L"ro.dwg") & FILE_ATTRIBUTE_READONLY);
}

TEST_F(CopyTest, MissingSourceFolderFails)
{
    EXPECT_FALSE(QM::CopyTree(dir.Path() + L"none", target, true));
}

// Every mode against a target that already holds an old a.dwg.
struct ModeCase
{
    const char* name;
    bool list;
    bool recursive;
};

class CopyOverwriteTest : public CopyTest, public ::testing::WithParamInterface<ModeCase>
{
protected:
    bool Copy(bool overwrite)
    {
        files.RemoveAll();
        files.Add(L"a.dwg");
        const ModeCase& mode = GetParam();
        return QM::CopyFiles(
            QM::CopyFilesStruct{source, mode.list ? &files : nullptr, target, nullptr, overwrite, mode.recursive});
    }

    CStringArray files;
};

TEST_P(CopyOverwriteTest, FreshTargetIsWrittenWithoutAQuestion)
{
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDNO), nullptr, 1500);
    EXPECT_TRUE(Copy(false));
    EXPECT_FALSE(watcher.Wait().found);
    EXPECT_EQ(Read(L"a.dwg"), "A");
}

TEST_P(CopyOverwriteTest, OverwriteReplacesWithoutAQuestion)
{
    dir.WriteFile(L"tgt\\Sym\\a.dwg", "old");
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDNO), nullptr, 1500);
    EXPECT_TRUE(Copy(true));
    EXPECT_FALSE(watcher.Wait().found);
    EXPECT_EQ(Read(L"a.dwg"), "A");
}

TEST_P(CopyOverwriteTest, WithoutOverwriteTheShellAsksAndNoKeepsTheFile)
{
    dir.WriteFile(L"tgt\\Sym\\a.dwg", "old");
    MsgBoxWatcher watcher(MsgBoxWatcher::Press(IDNO));
    Copy(false);
    EXPECT_TRUE(watcher.Wait().found);
    EXPECT_EQ(Read(L"a.dwg"), "old");
}

INSTANTIATE_TEST_SUITE_P(Modes, CopyOverwriteTest,
                         ::testing::Values(ModeCase{"ListFlat", true, false}, ModeCase{"WholeFlat", false, false},
                                           ModeCase{"ListRecursive", true, true},
                                           ModeCase{"WholeRecursive", false, true}),
                         [](const ::testing::TestParamInfo<ModeCase>& info) { return info.param.name; });

class DeleteTest : public ::testing::Test
{
protected:
    TempDir dir;
};

TEST_F(DeleteTest, SingleFileAndWildcard)
{
    const CString a = dir.WriteFile(L"a.tmp", "a");
    dir.WriteFile(L"b.tmp", "b");
    const CString keep = dir.WriteFile(L"c.dwg", "c");
    EXPECT_TRUE(QM::DeleteFiles(a, false));
    EXPECT_FALSE(Exists(a));
    EXPECT_TRUE(QM::DeleteFiles(dir.Path() + L"*.tmp", false));
    EXPECT_FALSE(Exists(dir.Path() + L"b.tmp"));
    EXPECT_EQ(TempDir::ReadFile(keep), "c");
}

TEST_F(DeleteTest, MissingNullAndEmptyPathsFail)
{
    EXPECT_FALSE(QM::DeleteFiles(dir.Path() + L"none.tmp", false));
    EXPECT_FALSE(QM::DeleteFiles(nullptr, false));
    EXPECT_FALSE(QM::DeleteFiles(L"", false));
}

// "\." steps lengthen a path without changing what it names.
CString Padded(const CString& folder, const wchar_t* name, int minLength)
{
    CString path = folder;
    path.TrimRight(L'\\');
    while (path.GetLength() + 1 + lstrlenW(name) < minLength)
        path += L"\\.";
    return path + L"\\" + name;
}

TEST_F(DeleteTest, PathsPastTheBufferAreRefused)
{
    const CString file = dir.WriteFile(L"x.tmp", "x");
    const CString tooLong = Padded(dir.Path(), L"x.tmp", 259);
    ASSERT_GE(tooLong.GetLength(), 259);
    EXPECT_FALSE(QM::DeleteFiles(tooLong, false));
    EXPECT_TRUE(Exists(file));
    EXPECT_FALSE(QM::DeleteFiles(CString(L'a', 5000), false));

    const CString fits = Padded(dir.Path(), L"x.tmp", 200);
    EXPECT_TRUE(QM::DeleteFiles(fits, false));
    EXPECT_FALSE(Exists(file));
}

TEST_F(DeleteTest, TreeWithReadOnlyFilesGoes)
{
    dir.WriteFile(L"tree\\a.dwg", "a");
    dir.WriteFile(L"tree\\sub\\deeper\\b.dwg", "b");
    SetFileAttributesW(dir.WriteFile(L"tree\\sub\\ro.dwg", "r"), FILE_ATTRIBUTE_READONLY);
    const CString sibling = dir.WriteFile(L"treeX.dwg", "s");
    EXPECT_TRUE(QM::DeleteTree(dir.Path() + L"tree\\\\", false));
    EXPECT_FALSE(Exists(dir.Path() + L"tree"));
    EXPECT_EQ(TempDir::ReadFile(sibling), "s");
}

TEST_F(DeleteTest, DelTreeOfAFileAndOfMissingPaths)
{
    const CString file = dir.WriteFile(L"f.dwg", "f");
    EXPECT_TRUE(QM::DelTree(file));
    EXPECT_FALSE(Exists(file));
    EXPECT_TRUE(QM::DelTree(file));
    EXPECT_TRUE(QM::DeleteTree(dir.Path() + L"none\\", false));
    EXPECT_TRUE(QM::DelTree(nullptr));
}

TEST_F(DeleteTest, BareDriveIsRefused)
{
    // An unmapped letter: were the guard missing, the answer would be true
    // (absent path) instead of the refusal.
    EXPECT_FALSE(QM::DelTree(L"Q:"));
    EXPECT_FALSE(QM::DeleteTree(L"Q:\\\\", false));
}

}  // namespace
