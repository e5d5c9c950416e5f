// FileOpsTest.cpp - copies in their four modes and deletes, on real folder trees.
#include <gtest/gtest.h>

#include "support/MsgBoxWatcher.h"
#include "support/ChildProcess.h"
#include "support/ScratchDrive.h"
#include "support/TempDir.h"

#include <utility>
#include <vector>

namespace {

using qmtest::TempDir;

// src\Sym\ a.dwg b.dwg c.txt ro.dwg (read-only) sub\d.dwg sub\deeper\e.dwg
class CopyTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        for (const auto& [file, text] : {std::pair{L"a.dwg", "A"}, {L"b.dwg", "B"}, {L"c.txt", "C"}, {L"ro.dwg", "R"},
                                         {L"sub\\d.dwg", "D"}, {L"sub\\deeper\\e.dwg", "E"}})
            dir.WriteFile(CString(L"src\\Sym\\") + file, text);
        SetFileAttributesW(source + L"ro.dwg", FILE_ATTRIBUTE_READONLY);
    }

    // The listed entries, or the whole source when none are listed.
    bool Copy(bool overwrite, bool recursive, const std::vector<const wchar_t*>& list = {},
              const std::vector<const wchar_t*>& names = {})
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

// An empty source or target copies nothing; qmtool says when the source is missing.
TEST_F(CopyTest, CopiesTakeWhatTheyNameAndAskOnlyWhenTheyMayNotOverwrite)
{
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{L"", nullptr, target, nullptr, true, true}));
    EXPECT_TRUE(QM::CopyFiles(QM::CopyFilesStruct{source, nullptr, L"", nullptr, true, true}));
    CString output;
    EXPECT_EQ(1, qmtest::RunQmtool(L"copy " + dir.Path() + L"none " + target, output));
    EXPECT_GE(output.Find(L"none does not exist"), 0) << output.GetString();
    EXPECT_FALSE(QM::IsExist(target));
    // Files land in the source's last component (the first row's target ends in a separator); a list
    // is renamed as far as the name list reaches, and a recursive list copies sub-folders whole.
    using Files = std::vector<std::pair<const wchar_t*, const char*>>;
    const struct { bool recursive; std::vector<const wchar_t*> list, names; bool result; Files files; } rows[] = {
        {false, {}, {}, true, {{L"a.dwg", "A"}, {L"c.txt", "C"}, {L"ro.dwg", "R"}, {L"sub\\d.dwg", ""}}},
        {false, {L"a.dwg", L"sub\\d.dwg", L"*.txt"}, {L"a-old.dwg"}, true,
         {{L"a-old.dwg", "A"}, {L"a.dwg", ""}, {L"d.dwg", "D"}, {L"c.txt", "C"}, {L"b.dwg", ""}}},
        {false, {L"none.dwg", L"b.dwg"}, {}, false, {{L"b.dwg", "B"}}},
        {true, {L"a.dwg"}, {}, true, {{L"a.dwg", "A"}, {L"sub\\deeper\\e.dwg", "E"}, {L"b.dwg", ""}, {L"c.txt", ""}}},
    };
    for (const auto& row : rows) {
        qmtest::RemoveTree(target);
        target = dir.Path() + (&row == rows ? L"tgt\\" : L"tgt");
        EXPECT_EQ(Copy(false, row.recursive, row.list, row.names), row.result);
        for (const auto& [file, content] : row.files)
            EXPECT_EQ(Read(file), content) << CString(file).GetString();
    }
    // A tree copy keeps nesting and read-only files but needs its source.
    EXPECT_FALSE(QM::CopyTree(dir.Path() + L"none", target, true));
    EXPECT_TRUE(QM::CopyTree(source, dir.Path() + L"new\\deep", false));
    copied = dir.Path() + L"new\\deep\\Sym\\";
    EXPECT_EQ(Read(L"b.dwg"), "B");
    EXPECT_EQ(Read(L"ro.dwg"), "R");
    EXPECT_EQ(Read(L"sub\\deeper\\e.dwg"), "E");
    EXPECT_TRUE(GetFileAttributesW(copied + L"ro.dwg") & FILE_ATTRIBUTE_READONLY);
    // Every mode asks only when it may not overwrite an old file.
    copied = target + L"\\Sym\\";
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

// "\." steps lengthen a path without changing what it names.
CString Padded(const CString& folder, const wchar_t* name, int minLength)
{
    CString path = folder;
    path.TrimRight(L'\\');
    while (path.GetLength() + 1 + lstrlenW(name) < minLength)
        path += L"\\.";
    return path + L"\\" + name;
}

// Each delete takes exactly what it names: a file, a wildcard's matches, a tree holding read-only
// files (trailing separators ignored); an absent path is true for the tree delete only.
TEST(DeleteTest, EachDeleteTakesExactlyWhatItNames)
{
    TempDir dir;
    for (const char* file : {"a.tmp", "b.tmp", "c.dwg", "treeX.dwg", "tree\\a.dwg", "tree\\sub\\deeper\\b.dwg"})
        dir.WriteFile(CString(file), file);
    SetFileAttributesW(dir.WriteFile(L"tree\\sub\\ro.dwg", "r"), FILE_ATTRIBUTE_READONLY);
    const struct { const wchar_t* path; bool tree, result; const wchar_t* gone; } rows[] = {
        {L"a.tmp", false, true, L"a.tmp"}, {L"*.tmp", false, true, L"b.tmp"}, {L"a.tmp", false, false, nullptr},
        {L"tree\\\\", true, true, L"tree"}, {L"c.dwg", true, true, L"c.dwg"}, {L"c.dwg", true, true, nullptr},
        {L"none\\", true, true, nullptr}};
    for (const auto& row : rows) {
        const CString path = dir.Path() + row.path;
        EXPECT_EQ(row.tree ? QM::DelTree(path) : QM::DeleteFiles(path, false), row.result) << row.path;
        EXPECT_TRUE(row.gone == nullptr || !QM::IsExist(dir.Path() + row.gone)) << row.path;
    }
    EXPECT_EQ(TempDir::ReadFile(dir.Path() + L"treeX.dwg"), "treeX.dwg");
    EXPECT_TRUE(QM::DelTree(nullptr));
    // Missing, empty and past-the-buffer paths are refused.
    EXPECT_FALSE(QM::DeleteFiles(nullptr, false));
    EXPECT_FALSE(QM::DeleteFiles(L"", false));
    EXPECT_FALSE(QM::DeleteFiles(CString(L'a', 5000), false));

    const CString file = dir.WriteFile(L"x.tmp", "x");
    const CString tooLong = Padded(dir.Path(), L"x.tmp", 259);
    EXPECT_FALSE(QM::DeleteFiles(tooLong, false));
    EXPECT_TRUE(QM::IsExist(file));
    EXPECT_TRUE(QM::DeleteFiles(Padded(dir.Path(), L"x.tmp", 200), false));
    EXPECT_FALSE(QM::IsExist(file));
}

// Every spelling of a whole drive or share (a scratch drive) is refused by
// both deletes and by qmtool rm; below the root the deletes still work.
TEST(DeleteRoot, EverySpellingOfADriveOrShareIsRefused)
{
    qmtest::ScratchDrive drive;
    ASSERT_TRUE(drive.Mapped());
    const CString keep = drive.Folder().WriteFile(L"sub\\keep.txt", "k");
    ASSERT_EQ(TempDir::ReadFile(drive.Root() + L"sub\\keep.txt"), "k");
    const wchar_t* const spellings[] = {
        L"Q:", L"Q:\\", L"Q:/", L"Q:\\.", L"Q:.", L"Q:\\\\", L"Q:\\sub\\..", L"Q:/sub/../.",
        L"\\\\?\\Q:\\", L"\\\\?\\Q:\\.", L"\\\\.\\Q:\\", L"\\\\?\\Q:\\*.*", L"Q:\\*", L"Q:\\*.*", L"Q:*", L"Q:/sub/../*",
        L"\\\\server\\share", L"\\\\server\\share\\", L"//server/share/x/..", L"\\\\?\\UNC\\server\\share\\*"};
    for (const wchar_t* spelling : spellings) {
        CString path(spelling);
        path.Replace(L"Q:", CString(drive.Letter()) + L":");
        SCOPED_TRACE(path.GetString());
        EXPECT_FALSE(QM::DeleteTree(path, false));
        EXPECT_FALSE(QM::DeleteFiles(path, false));
        for (const wchar_t* tree : {L"", L" --tree"}) {
            CString output;
            EXPECT_EQ(1, qmtest::RunQmtool(L"rm " + path + tree, output));
            EXPECT_GE(output.Find(L"names a whole drive or share"), 0) << output.GetString();
        }
        ASSERT_EQ(TempDir::ReadFile(keep), "k");
    }
    EXPECT_TRUE(QM::DeleteFiles(drive.Root() + L"sub\\*", false));
    EXPECT_FALSE(QM::IsExist(keep));
    EXPECT_TRUE(QM::DeleteTree(drive.Root() + L"sub", false));
    EXPECT_FALSE(QM::IsExist(drive.Folder().Path() + L"sub"));
}

}  // namespace
