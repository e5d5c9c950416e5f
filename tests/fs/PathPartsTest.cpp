// PathPartsTest.cpp - path parts, existence, writability and nested folder creation.
#include <gtest/gtest.h>

#include "support/TempDir.h"

namespace {

TEST(PathPartsTest, SplitsIntoNameTitleExtensionAndFolder)
{
    const CString overLong = L"C:\\" + CString(L'x', 300) + L"\\a.dwg";
    const CString atLimit = L"C:\\" + CString(L'x', 251) + L"\\a.dwg", atLimitFolder = atLimit.Left(255);   // 260 characters
    const struct { const wchar_t *path, *name, *title, *ext, *folder; } rows[] = {
        {L"C:\\x\\a.dwg", L"a.dwg", L"a", L"dwg", L"C:\\x\\"}, {L"a.dwg", L"a.dwg", L"a", L"dwg", L""},
        {L"C:/x/y/a.tar.gz", L"a.tar.gz", L"a.tar", L"gz", L"C:/x/y/"}, {L"C:\\x\\a", L"a", L"a", L"", L"C:\\x\\"},
        {L"C:\\x\\", L"", L"", L"", L"C:\\x\\"}, {L"C:a.dwg", L"a.dwg", L"a", L"dwg", L"C:"},
        {L"\\\\srv\\share\\d\\b.sld", L"b.sld", L"b", L"sld", L"\\\\srv\\share\\d\\"},
        {L"", L"", L"", L"", L""}, {nullptr, L"", L"", L"", L""}, {atLimit, L"a.dwg", L"a", L"dwg", atLimitFolder},
        {overLong, L"", L"", L"", L""}};  // past the platform's limit: nothing
    for (const auto& row : rows) {
        SCOPED_TRACE(::testing::Message() << (row.path ? lstrlenW(row.path) : -1) << " characters");
        const CString parts[] = {QM::GetFileName(row.path), QM::GetFileTitle(row.path), QM::GetFileExt(row.path),
                                 QM::GetFilePath(row.path)};
        EXPECT_EQ(parts[0] + L"|" + parts[1] + L"|" + parts[2] + L"|" + parts[3],
                  CString(row.name) + L"|" + row.title + L"|" + row.ext + L"|" + row.folder);
    }
    EXPECT_TRUE(QM::IsNULL(nullptr) && QM::IsNULL(L"") && !QM::IsNULL(L" "));
}

TEST(PathOnDiskTest, IsExistIsDirReadOnlyAndMkMDirOnRealFoldersLongPathsIncluded)
{
    qmtest::TempDir dir;
    ASSERT_TRUE(CreateDirectoryW(dir.Path() + L"empty", nullptr));
    const CString file = dir.WriteFile(L"a.dwg", "x");
    const struct { CString path; bool exists; } rows[] = {
        {dir.Path() + L"empty", true}, {dir.Path() + L"empty\\", true}, {dir.Path(), true}, {file, true},
        {dir.Path() + L"b.dwg", false}, {dir.Path() + L"missing", false}, {dir.Path() + L"missing\\", false},
        {L"", false}, {dir.Path() + CString(L'y', 300), false},
    };
    for (const auto& row : rows)
        EXPECT_EQ(QM::IsExist(row.path), row.exists) << row.path.GetString();
    EXPECT_FALSE(QM::IsExist(nullptr));
    // Beyond MAX_PATH a tree is made and found, and DeleteTree, whose buffer cannot take it, refuses it.
    CString deep = dir.Path();
    while (deep.GetLength() <= 300)
        deep += L"abcdefghi\\";
    ASSERT_TRUE(QM::MkMDir(deep));
    EXPECT_TRUE(QM::IsExist(deep));
    EXPECT_FALSE(QM::DeleteTree(deep, false));
    EXPECT_TRUE(QM::IsExist(deep));
    // IsDirReadOnly probes without leaving the probe.
    EXPECT_FALSE(QM::IsDirReadOnly(dir.Path()));
    CFileFind probe;
    EXPECT_FALSE(probe.FindFile(dir.Path() + L"*.$$$")) << "probe file left behind";
    EXPECT_TRUE(QM::IsDirReadOnly(dir.Path() + L"missing\\"));
    // MkMDir creates every missing level but refuses roots, over-long names and files in the way.
    const CString tree = dir.Path() + L"a\\b\\c";
    EXPECT_TRUE(QM::MkMDir(tree) && QM::MkMDir(tree + L"\\d\\") && QM::MkMDir(tree));   // an existing tree is fine
    EXPECT_TRUE(QM::IsExist(tree + L"\\d\\"));
    for (const wchar_t* root : {L"C:\\", L"C:", L"\\\\srv\\share\\", L"\\\\srv\\"})
        EXPECT_FALSE(QM::MkMDir(root)) << root;
    EXPECT_FALSE(QM::MkMDir(dir.Path() + CString(L'z', 300)));

    const CString inTheWay = dir.WriteFile(L"f", "keep");
    EXPECT_FALSE(QM::MkMDir(inTheWay + L"\\g\\h"));
    EXPECT_EQ(qmtest::TempDir::ReadFile(inTheWay), "keep");
    EXPECT_EQ(GetFileAttributesW(inTheWay + L"\\g"), INVALID_FILE_ATTRIBUTES);
}

}  // namespace
