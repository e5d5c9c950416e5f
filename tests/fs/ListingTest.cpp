// ListingTest.cpp - file and folder listings with their suffix rules.
#include <gtest/gtest.h>

#include "support/TempDir.h"

#include <set>

namespace {

std::set<std::wstring> AsSet(const CStringArray& names)
{
    std::set<std::wstring> set;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        set.insert(names[i].GetString());
    return set;
}

class ListingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        dir.WriteFile(L"drawing.dwg", "1");
        dir.WriteFile(L"plan.DWG", "2");
        dir.WriteFile(L"xgd.dwg", "3");
        dir.WriteFile(L"notes.txt", "4");
        const CString ro = dir.WriteFile(L"locked.dwg", "5");
        SetFileAttributesW(ro, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
        for (const wchar_t* sub : {L"x.DWG", L"proj", L"y.dwg.old", L"pdwg"})
            CreateDirectoryW(dir.Path() + sub, nullptr);
        out.Add(L"left over from an earlier call");
    }

    qmtest::TempDir dir;
    CStringArray out;
};

TEST_F(ListingTest, FilesLoseEveryTrailingCharacterOfTheSuffixSet)
{
    EXPECT_EQ(QM::GetPathFiles(dir.Path(), out, L"*", L"dwg", false), 4);
    // "xgd.dwg" loses ".dwg" and then "gd" as well; "plan.DWG" keeps its
    // upper-case suffix because the trim compares characters exactly.
    EXPECT_EQ(AsSet(out), (std::set<std::wstring>{L"drawin", L"plan.DWG", L"x", L"locke"}));
}

TEST_F(ListingTest, FilesKeepTheirNamesWithKeepExt)
{
    EXPECT_EQ(QM::GetPathFiles(dir.Path(), out, L"*", L"dwg", true), 4);
    EXPECT_EQ(AsSet(out), (std::set<std::wstring>{L"drawing.dwg", L"plan.DWG", L"xgd.dwg", L"locked.dwg"}));
}

TEST_F(ListingTest, LeadingDotsAndTrailingBackslashesAreIgnored)
{
    CString folder = dir.Path() + L"\\\\";
    EXPECT_EQ(QM::GetPathFiles(folder, out, L"d*", L"..dwg", true), 1);
    ASSERT_EQ(out.GetSize(), 1);
    EXPECT_EQ(out[0], CString(L"drawing.dwg"));
}

TEST_F(ListingTest, FoldersAreNotListedAsFiles)
{
    // Wine reports folders with the directory attribute alone, so they show
    // the archive filter at work: a "*.*" search finds them and drops them.
    EXPECT_EQ(QM::GetPathFiles(dir.Path(), out, L"*", L"*", true), 5);
    EXPECT_EQ(AsSet(out).count(L"proj"), 0u);
    EXPECT_EQ(AsSet(out).count(L"x.DWG"), 0u);
}

TEST_F(ListingTest, FoldersLoseExactlyTheSuffixIgnoringCase)
{
    EXPECT_EQ(QM::GetPathDirs(dir.Path(), out, L"*", L"dwg", false), 1);
    ASSERT_EQ(out.GetSize(), 1);
    EXPECT_EQ(out[0], CString(L"x"));
}

TEST_F(ListingTest, EveryFolderButDotsWithWildcards)
{
    EXPECT_EQ(QM::GetPathDirs(dir.Path(), out, L"*", L"*", false), 4);
    EXPECT_EQ(AsSet(out), (std::set<std::wstring>{L"x.DWG", L"proj", L"y.dwg.old", L"pdwg"}));
    EXPECT_EQ(QM::GetPathDirs(dir.Path(), out, L"*", L"old", false), 1);
    EXPECT_EQ(out[0], CString(L"y.dwg"));
}

TEST_F(ListingTest, MissingFolderEmptiesTheOutput)
{
    EXPECT_EQ(QM::GetPathFiles(dir.Path() + L"missing", out, L"*", L"*", true), 0);
    EXPECT_EQ(out.GetSize(), 0);
    out.Add(L"x");
    EXPECT_EQ(QM::GetPathDirs(nullptr, out, nullptr, nullptr, true), 0);
    EXPECT_EQ(out.GetSize(), 0);
}

}  // namespace
