// FileOpsTest.cpp - shell copies in their four modes and deletes, on real
// folder trees.
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"
#include "support/TempDir.h"

#include <initializer_list>

namespace {

using qmtest::TempDir;

bool Exists(const CString& path)
{
    return GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

// Wine 8 applies the files-only option to the contents of a copied folder
// as well (Windows applies it to a wildcard in the source alone), so there a
// folder copied by the shell arrives without its own sub-folders. The levels
// that this gap hides are checked on Windows only.
const bool kUnderWine = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;

// src\Sym\ a.dwg b.dwg c.txt ro.dwg (read-only) sub\d.dwg sub\deeper\e.dwg
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
    }

    // The listed entries, or the whole source when none are listed.
    bool Copy(bool overwrite, bool recursive, std::initializer_list<const wchar_t*> list = {},
              std::initializer_list<const wchar_t*> names = {})
    {
        CStringArray files, renamed;
        for (const wchar_t* file : list)
            files.Add(file);
        for (const wchar_t* name : names)
            renamed.Add(name);
        return QM::CopyFiles(QM::CopyFilesStruct{source, list.size() ? &files : nullptr, target,
                                                 names.size() ? &renamed : nullptr, overwrite, recursive});
    }
    std::string Read(const wchar_t* below) const { return TempDir::ReadFile(copied + below); }

    TempDir dir;
    CString source = dir.Path() + L"src\\Sym\\", target = dir.Path() + L"tgt", copied = target + L"\\Sym\\";
};

TEST_F(CopyTest, EmptySourceOrTargetCopiesNothing)
{
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{L"", nullptr, target, nullptr, true, true}));
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, nullptr, L"", nullptr, true, true}));
    EXPECT_FALSE(Exists(target));
}

TEST_F(CopyTest, WholeFolderFlatCopiesItsFilesIntoLastComponent)
{
    target += L"\\";
    EXPECT_TRUE(Copy(false, false));
    EXPECT_EQ(Read(L"a.dwg"), "A");
    EXPECT_EQ(Read(L"c.txt"), "C");
    EXPECT_EQ(Read(L"ro.dwg"), "R");
    EXPECT_FALSE(Exists(copied + L"sub"));
}

TEST_F(CopyTest, ListIsRenamedAsFarAsTheNameListReaches)
{
    EXPECT_TRUE(Copy(false, false, {L"a.dwg", L"sub\\d.dwg", L"*.txt"}, {L"a-old.dwg"}));
    EXPECT_EQ(Read(L"a-old.dwg"), "A");
    EXPECT_FALSE(Exists(copied + L"a.dwg"));
    EXPECT_EQ(Read(L"d.dwg"), "D");
    EXPECT_EQ(Read(L"c.txt"), "C");
    EXPECT_FALSE(Exists(copied + L"b.dwg"));
}

TEST_F(CopyTest, MissingListEntryFailsButTheRestIsCopied)
{
    EXPECT_FALSE(Copy(true, false, {L"none.dwg", L"b.dwg"}));
    EXPECT_EQ(Read(L"b.dwg"), "B");
}

TEST_F(CopyTest, RecursiveListCopiesSubFoldersWholeAndOnlyListedFiles)
{
    EXPECT_TRUE(Copy(false, true, {L"a.dwg"}));
    EXPECT_EQ(Read(L"a.dwg"), "A");
    EXPECT_EQ(Read(L"sub\\d.dwg"), "D");
    if (!kUnderWine) {
        EXPECT_EQ(Read(L"sub\\deeper\\e.dwg"), "E");
    }
    EXPECT_FALSE(Exists(copied + L"b.dwg"));
    EXPECT_FALSE(Exists(copied + L"c.txt"));
}

TEST_F(CopyTest, TreeCopyKeepsNestingAndReadOnlyFilesButNeedsItsSource)
{
    EXPECT_FALSE(QM::CopyTree(dir.Path() + L"none", target, true));
    EXPECT_TRUE(QM::CopyTree(source, dir.Path() + L"new\\deep", false));
    copied = dir.Path() + L"new\\deep\\Sym\\";
    EXPECT_EQ(Read(L"b.dwg"), "B");
    EXPECT_EQ(Read(L"ro.dwg"), "R");
    if (!kUnderWine) {
        EXPECT_EQ(Read(L"sub\\deeper\\e.dwg"), "E");
    }
    EXPECT_TRUE(GetFileAttributesW(copied + L"ro.dwg") & FILE_ATTRIBUTE_READONLY);
}

TEST_F(CopyTest, EveryModeAsksOnlyWhenItMayNotOverwriteAnOldFile)
{
    const struct { const char* name; bool list, recursive; } modes[] = {
        {"list flat", true, false}, {"whole flat", false, false},
        {"list recursive", true, true}, {"whole recursive", false, true}};
    const struct { bool old, overwrite, asks; const char* result; } cases[] = {
        {false, false, false, "A"}, {true, true, false, "A"}, {true, false, true, "old"}};
    for (const auto& mode : modes) {
        for (const auto& c : cases) {
            qmtest::RemoveTree(target);
            if (c.old)
                dir.WriteFile(L"tgt\\Sym\\a.dwg", "old");
            SCOPED_TRACE(::testing::Message() << mode.name << ", old " << c.old << ", overwrite " << c.overwrite);
            // The box is answered No, so the old file stays.
            qmtest::MsgBoxWatcher watcher(qmtest::MsgBoxWatcher::Press(IDNO), nullptr, c.asks ? 10000 : 1500);
            const bool copiedOk = mode.list ? Copy(c.overwrite, mode.recursive, {L"a.dwg"})
                                            : Copy(c.overwrite, mode.recursive);
            EXPECT_EQ(watcher.Wait().found, c.asks);
            EXPECT_EQ(Read(L"a.dwg"), c.result);
            EXPECT_TRUE(copiedOk || c.asks);
        }
    }
}

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

// "\." steps lengthen a path without changing what it names.
CString Padded(const CString& folder, const wchar_t* name, int minLength)
{
    CString path = folder;
    path.TrimRight(L'\\');
    while (path.GetLength() + 1 + lstrlenW(name) < minLength)
        path += L"\\.";
    return path + L"\\" + name;
}

TEST_F(DeleteTest, MissingEmptyAndPastTheBufferPathsAreRefused)
{
    EXPECT_FALSE(QM::DeleteFiles(dir.Path() + L"none.tmp", false));
    EXPECT_FALSE(QM::DeleteFiles(nullptr, false));
    EXPECT_FALSE(QM::DeleteFiles(L"", false));
    EXPECT_FALSE(QM::DeleteFiles(CString(L'a', 5000), false));

    const CString file = dir.WriteFile(L"x.tmp", "x");
    const CString tooLong = Padded(dir.Path(), L"x.tmp", 259);
    ASSERT_GE(tooLong.GetLength(), 259);
    EXPECT_FALSE(QM::DeleteFiles(tooLong, false));
    EXPECT_TRUE(Exists(file));
    EXPECT_TRUE(QM::DeleteFiles(Padded(dir.Path(), L"x.tmp", 200), false));
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

TEST_F(DeleteTest, DelTreeTakesFilesAndMissingPathsButRefusesABareDrive)
{
    const CString file = dir.WriteFile(L"f.dwg", "f");
    EXPECT_TRUE(QM::DelTree(file));
    EXPECT_FALSE(Exists(file));
    EXPECT_TRUE(QM::DelTree(file));
    EXPECT_TRUE(QM::DeleteTree(dir.Path() + L"none\\", false));
    EXPECT_TRUE(QM::DelTree(nullptr));
    // An unmapped letter: were the guard missing, the answer would be true
    // (absent path) instead of the refusal.
    EXPECT_FALSE(QM::DelTree(L"Q:"));
    EXPECT_FALSE(QM::DeleteTree(L"Q:\\\\", false));
}

}  // namespace
