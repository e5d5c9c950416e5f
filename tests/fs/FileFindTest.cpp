// FileFindTest.cpp - CFileFind over a real folder.
#include <gtest/gtest.h>

#include "support/TempDir.h"

#include <set>

namespace {

TEST(FileFindTest, LoopSeesEveryEntryOnceWithItsParts)
{
    qmtest::TempDir dir;
    dir.WriteFile(L"a.dwg", "a");
    dir.WriteFile(L"b.tar.gz", "bb");
    SetFileAttributesW(dir.WriteFile(L"ro.txt", "r"), FILE_ATTRIBUTE_READONLY);
    CreateDirectoryW(dir.Path() + L"sub", nullptr);
    CFileFind finder;
    std::multiset<std::wstring> names;
    BOOL more = finder.FindFile(dir.Path() + L"*.*");
    ASSERT_TRUE(more);
    while (more) {
        more = finder.FindNextFile();
        const CString name = finder.GetFileName();
        names.insert(name.GetString());
        if (finder.IsDots())
            continue;
        EXPECT_EQ(finder.GetFilePath(), dir.Path() + name);
        EXPECT_EQ(finder.GetRoot(), dir.Path());
        EXPECT_EQ(finder.IsDirectory() != FALSE, name == L"sub") << name.GetString();
        EXPECT_EQ(finder.IsReadOnly() != FALSE, name == L"ro.txt") << name.GetString();
        if (name == L"b.tar.gz") {
            EXPECT_EQ(finder.GetFileTitle(), CString(L"b.tar"));
            EXPECT_EQ(finder.GetLength(), 2u);
        }
    }
    EXPECT_EQ(names, (std::multiset<std::wstring>{L".", L"..", L"a.dwg", L"b.tar.gz", L"ro.txt", L"sub"}));
    EXPECT_FALSE(finder.FindNextFile()) << "past the end stays at the end";
    // Nothing found, closed and over-long searches answer empty.
    EXPECT_FALSE(finder.FindFile(dir.Path() + L"*.none"));
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_TRUE(finder.GetFileName().IsEmpty());

    ASSERT_TRUE(finder.FindFile(dir.Path() + L"a.dwg"));
    finder.FindNextFile();
    EXPECT_TRUE(finder.MatchesMask(FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_DIRECTORY));   // any of the bits
    finder.Close();
    EXPECT_TRUE(finder.GetFilePath().IsEmpty());
    EXPECT_FALSE(finder.FindNextFile());
    EXPECT_FALSE(finder.FindFile(dir.Path() + CString(L'x', 300)));
}

}  // namespace
