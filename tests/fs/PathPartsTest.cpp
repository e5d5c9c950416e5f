// PathPartsTest.cpp - path parts, existence, writability and nested folder
// creation on real folders.
#include <gtest/gtest.h>

#include "support/TempDir.h"

namespace {

struct PartsCase
{
    const wchar_t* path;
    const wchar_t* name;
    const wchar_t* title;
    const wchar_t* ext;
    const wchar_t* folder;
};

class PathPartsTest : public ::testing::TestWithParam<PartsCase>
{
};

TEST_P(PathPartsTest, SplitsIntoNameTitleExtensionAndFolder)
{
    const PartsCase& c = GetParam();
    EXPECT_EQ(QM::GetFileName(c.path), CString(c.name));
    EXPECT_EQ(QM::GetFileTitle(c.path), CString(c.title));
    EXPECT_EQ(QM::GetFileExt(c.path), CString(c.ext));
    EXPECT_EQ(QM::GetFilePath(c.path), CString(c.folder));
}

INSTANTIATE_TEST_SUITE_P(
    Paths, PathPartsTest,
    ::testing::Values(PartsCase{L"C:\\x\\a.dwg", L"a.dwg", L"a", L"dwg", L"C:\\x\\"},
                      PartsCase{L"a.dwg", L"a.dwg", L"a", L"dwg", L""},
                      PartsCase{L"C:/x/y/a.tar.gz", L"a.tar.gz", L"a.tar", L"gz", L"C:/x/y/"},
                      PartsCase{L"C:\\x\\a", L"a", L"a", L"", L"C:\\x\\"},
                      PartsCase{L"C:\\x\\", L"", L"", L"", L"C:\\x\\"},
                      PartsCase{L"C:a.dwg", L"a.dwg", L"a", L"dwg", L"C:"},
                      PartsCase{L"\\\\srv\\share\\d\\b.sld", L"b.sld", L"b", L"sld", L"\\\\srv\\share\\d\\"},
                      PartsCase{L"", L"", L"", L"", L""}));

TEST(PathPartsEdgeTest, NullAndOverLongPathsGiveEmptyParts)
{
    EXPECT_TRUE(QM::IsNULL(nullptr));
    EXPECT_TRUE(QM::IsNULL(L""));
    EXPECT_FALSE(QM::IsNULL(L" "));
    EXPECT_TRUE(QM::GetFileName(nullptr).IsEmpty());
    EXPECT_TRUE(QM::GetFilePath(nullptr).IsEmpty());

    const CString longPath = L"C:\\" + CString(L'x', 300) + L"\\a.dwg";
    EXPECT_TRUE(QM::GetFileName(longPath).IsEmpty());
    EXPECT_TRUE(QM::GetFileTitle(longPath).IsEmpty());
    EXPECT_TRUE(QM::GetFileExt(longPath).IsEmpty());
    EXPECT_TRUE(QM::GetFilePath(longPath).IsEmpty());
}

class PathExistenceTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(PathExistenceTest, EmptyFolderIsFoundWithAndWithoutSeparator)
{
    const CString folder = dir.Path() + L"empty";
    ASSERT_TRUE(CreateDirectoryW(folder, nullptr));
    EXPECT_TRUE(QM::IsExist(folder));
    EXPECT_TRUE(QM::IsExist(folder + L"\\"));
    EXPECT_TRUE(QM::IsExist(dir.Path()));
}

TEST_F(PathExistenceTest, FilesAndMissingPaths)
{
    const CString file = dir.WriteFile(L"a.dwg", "x");
    EXPECT_TRUE(QM::IsExist(file));
    EXPECT_FALSE(QM::IsExist(dir.Path() + L"b.dwg"));
    EXPECT_FALSE(QM::IsExist(dir.Path() + L"missing\\"));
    EXPECT_FALSE(QM::IsExist(L""));
    EXPECT_FALSE(QM::IsExist(nullptr));
    EXPECT_FALSE(QM::IsExist(dir.Path() + CString(L'y', 300)));
}

TEST_F(PathExistenceTest, WritableFolderAnswersFalseAndLeavesNoProbe)
{
    EXPECT_FALSE(QM::IsDirReadOnly(dir.Path()));
    WIN32_FIND_DATAW data;
    HANDLE search = FindFirstFileW(dir.Path() + L"*.$$$", &data);
    EXPECT_EQ(search, INVALID_HANDLE_VALUE) << "probe file left behind";
    if (search != INVALID_HANDLE_VALUE)
        FindClose(search);
}

TEST_F(PathExistenceTest, MissingFolderAnswersReadOnly)
{
    EXPECT_TRUE(QM::IsDirReadOnly(dir.Path() + L"missing\\"));
    EXPECT_FALSE(QM::IsExist(dir.Path() + L"missing"));
}

class MkMDirTest : public ::testing::Test
{
protected:
    qmtest::TempDir dir;
};

TEST_F(MkMDirTest, CreatesEveryMissingLevel)
{
    const CString deep = dir.Path() + L"a\\b\\c";
    EXPECT_TRUE(QM::MkMDir(deep));
    EXPECT_TRUE(GetFileAttributesW(deep) & FILE_ATTRIBUTE_DIRECTORY);
    EXPECT_NE(GetFileAttributesW(deep), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(QM::MkMDir(deep + L"\\d\\"));
    EXPECT_NE(GetFileAttributesW(deep + L"\\d"), INVALID_FILE_ATTRIBUTES);
    EXPECT_TRUE(QM::MkMDir(deep)) << "an existing tree is fine";
}

TEST_F(MkMDirTest, RefusesDriveRootAndBareShare)
{
    EXPECT_FALSE(QM::MkMDir(L"C:\\"));
    EXPECT_FALSE(QM::MkMDir(L"C:"));
    EXPECT_FALSE(QM::MkMDir(L"\\\\srv\\share\\"));
    EXPECT_FALSE(QM::MkMDir(L"\\\\srv\\"));
}

TEST_F(MkMDirTest, FileInTheWayStopsWithoutCreatingBelowIt)
{
    const CString file = dir.WriteFile(L"f", "keep");
    EXPECT_FALSE(QM::MkMDir(file + L"\\g\\h"));
    EXPECT_EQ(qmtest::TempDir::ReadFile(file), "keep");
    EXPECT_EQ(GetFileAttributesW(file) & FILE_ATTRIBUTE_DIRECTORY, 0u);
    EXPECT_EQ(GetFileAttributesW(dir.Path() + L"f\\g"), INVALID_FILE_ATTRIBUTES);
}

TEST_F(MkMDirTest, OverLongPathIsRefused)
{
    EXPECT_FALSE(QM::MkMDir(dir.Path() + CString(L'z', 300)));
}

}  // namespace
