// FileFindTest.cpp - CFileFind over a real folder.
#include <gtest/gtest.h>

#include "support/TempDir.h"

#include <set>

namespace {

class FileFindTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        dir.WriteFile(L"a.dwg", "a");
        dir.WriteFile(L"b.tar.gz", "bb");
        const CString ro = dir.WriteFile(L"ro.txt", "r");
        SetFileAttributesW(ro, FILE_ATTRIBUTE_READONLY);
        CreateDirectoryW(dir.Path() + L"sub", nullptr);
    }

    qmtest::TempDir dir;
};

TEST_F(FileFindTest, LoopSeesEveryEntryOnceWithItsParts)
{
    CFileFind finder;
    std::set<std::wstring> names;
    int dots = 0;
    BOOL more = finder.FindFile(dir.Path() + L"*.*");
    ASSERT_TRUE(more);
    while (more) {
        more = finder.FindNextFile();
        if (finder.IsDots()) {
            ++dots;
            continue;
        }
        names.insert(finder.GetFileName().GetString());
        EXPECT_EQ(finder.GetFilePath(), dir.Path() + finder.GetFileName());
        EXPECT_EQ(finder.GetRoot(), dir.Path());
        if (finder.GetFileName() == L"b.tar.gz") {
            EXPECT_EQ(finder.GetFileTitle(), CString(L"b.tar"));
            EXPECT_EQ(finder.GetLength(), 2u);
        }
        EXPECT_EQ(finder.IsDirectory() != FALSE, finder.GetFileName() == L"sub");
        EXPECT_EQ(finder.IsReadOnly() != FALSE, finder.GetFileName() == L"ro.txt");
    }
    EXPECT_EQ(dots, 2);
    EXPECT_EQ(names, (std::set<std::wstring>{L"a.dwg", L"b.tar.gz", L"ro.txt", L"sub"}));
    EXPECT_FALSE(finder.FindNextFile()) << "past the end stays at the end";
}

TEST_F(FileFindTest, PatternFiltersAndFilesAreArchived)
{
    CFileFind finder;
    ASSERT_TRUE(finder.FindFile(dir.Path() + L"*.dwg"));
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_EQ(finder.GetFileName(), CString(L"a.dwg"));
    EXPECT_TRUE(finder.IsArchived());
    EXPECT_TRUE(finder.MatchesMask(FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_DIRECTORY));
    EXPECT_FALSE(finder.MatchesMask(FILE_ATTRIBUTE_DIRECTORY));
}

TEST_F(FileFindTest, NothingFoundAndClosedSearchesAnswerEmpty)
{
    CFileFind finder;
    EXPECT_FALSE(finder.FindFile(dir.Path() + L"*.none"));
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_TRUE(finder.GetFileName().IsEmpty());
    EXPECT_FALSE(finder.IsDirectory());

    ASSERT_TRUE(finder.FindFile(dir.Path() + L"a.dwg"));
    finder.FindNextFile();
    EXPECT_EQ(finder.GetFileName(), CString(L"a.dwg"));
    finder.Close();
    EXPECT_TRUE(finder.GetFilePath().IsEmpty());
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindFile(dir.Path() + CString(L'x', 300)));
}

TEST_F(FileFindTest, RelativePatternKeepsCallersRoot)
{
    wchar_t previous[MAX_PATH];
    GetCurrentDirectoryW(MAX_PATH, previous);
    ASSERT_TRUE(SetCurrentDirectoryW(dir.Path()));
    {
        CFileFind finder;
        ASSERT_TRUE(finder.FindFile(L"sub"));
        finder.FindNextFile();
        EXPECT_EQ(finder.GetFilePath(), CString(L"sub"));
        EXPECT_TRUE(finder.IsDirectory());
    }
    SetCurrentDirectoryW(previous);
}

}  // namespace
