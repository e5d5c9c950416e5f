// FoldersTests.cpp - the suite's folders from the registry places the start-up settings name.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;
using qmtest::kSoftKey;
using qmtest::SettingOverride;

static auto* const g_cadEnvironment = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);

namespace {

// Only whether a company name is set counts; name and version are kept from the first use.
TEST(SoftwareKey, CompanyWordNameVersionAndRootWordAndFoldersTrimmed)
{
    EXPECT_EQ(CString(kSoftKey), QM::GetSoftRegItem());
    EXPECT_EQ(CString(L"QMTestSuite"), QM::RegItem());
    SettingOverride name(L"SoftName", L"Other", L"System"), version(L"Version", L"2.0", L"System");
    for (const wchar_t* company : {L"x", L""}) {
        SettingOverride set(L"CompanyName", company, L"System");
        EXPECT_EQ(CString(*company ? kSoftKey : L"SOFTWARE\\Tar Vel\\QMTestSuite\\9.1"), QM::GetSoftRegItem());
    }
    EXPECT_EQ(CString(L"QMTestSuite"), QM::RegItem());
    EXPECT_EQ(CString(L"9.1"), QM::RegVer());
    // "Name,HKCU" reads the user's hive; a name alone, or any other root word, the machine's.
    CString dir;
    ASSERT_TRUE(QM::GetRegLocalDir(dir));   // "LocalDir,hkcu"
    EXPECT_EQ(Cad().Folder(L"Local\\"), dir);
    const struct { const wchar_t *key, *value; bool (*get)(CString&); } rows[] = {
        {L"LocalDir", L"LocalDir,HKLM", QM::GetRegLocalDir}, {L"InstallDir", L"InstallDir,HKCU", QM::GetRegInstallDir}};
    for (const auto& row : rows) {
        SettingOverride other(row.key, row.value, L"Software");
        CString untouched(L"kept");
        EXPECT_FALSE(row.get(untouched)) << row.value;
        EXPECT_EQ(CString(L"kept"), untouched);
    }
    ASSERT_TRUE(QM::GetRegInstallDir(dir));   // raw text
    EXPECT_EQ(L"  " + Cad().Folder(L"Suite\\\\") + L"  ", dir);
    // The folders themselves are trimmed to one backslash.
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(Cad().Folder(L"Suite\\"), dir);
    ASSERT_TRUE(QM::GetLocalDir(dir));   // joined with the local folder's name "\Data\"
    EXPECT_EQ(Cad().Folder(L"Local\\Data\\"), dir);
}

// The work folder is never cached, and written as given; the shared CAD folder has no trailing backslash.
TEST(Folders, WorkFolderIsCreatedWrittenAsGivenAndReadAfreshPathVariableCutAsText)
{
    qmtest::RemoveTree(Cad().Folder(L"Work"));
    CString dir;
    ASSERT_TRUE(QM::GetWorkDir(dir, true));
    EXPECT_EQ(Cad().Folder(L"Work\\W\\X\\"), dir);
    EXPECT_TRUE(QM::IsExist(dir));   // with its parents

    qmtest::RegGuard guard(HKEY_CURRENT_USER, kSoftKey);
    ASSERT_TRUE(QM::SetRegWorkDir(L" D:\\Other\\\\"));
    EXPECT_EQ(CString(L" D:\\Other\\\\"), qmtest::GetRegValue(HKEY_CURRENT_USER, kSoftKey, L"WorkDir"));
    ASSERT_TRUE(QM::SetRegWorkDir(Cad().Folder(L"Suite\\Sys\\\\")));
    ASSERT_TRUE(QM::GetWorkDir(dir));
    EXPECT_EQ(Cad().Folder(L"Suite\\Sys\\"), dir);
    CString expected = qmtest::GetRegValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion",
                                           L"CommonFilesDir");
    expected.TrimRight(L'\\');
    ASSERT_TRUE(QM::GetQMCommonFilesDir(dir));
    EXPECT_EQ(expected + L"\\Tarvel Shared\\CAD", dir);
    // Added folders are cut from the upper-cased variable as plain text (even out of a longer
    // name) and appended; only doubled separators are mended, so a hole left at the front stays.
    CString longPath;   // longer than the first buffer the library reads into
    for (int i = 0; i < 500; ++i)
        longPath.AppendFormat(L"C:\\F%04d;", i);
    const struct { CString path; const wchar_t* added; CString expected; } rows[] = {
        {L"C:\\TOOLS;C:\\WIN", L"c:\\tools;", L";C:\\WIN;C:\\TOOLS"},
        {L"C:\\WIN;C:\\TOOLS", L"c:\\tools;", L"C:\\WIN;C:\\TOOLS"},
        {L"c:\\toolset;C:\\Win", L"C:\\Tools;D:\\Bin", L"ET;C:\\WIN;C:\\TOOLS;D:\\BIN"},
        {longPath, L"D:\\Bin", longPath + L"D:\\BIN"},
    };
    for (const auto& row : rows) {
        qmtest::EnvOverride path(L"Path", row.path);
        ASSERT_TRUE(QM::AddPathEnvironmentVariable(row.added));
        EXPECT_EQ(row.expected, qmtest::GetEnv(L"Path")) << row.added << " added to " << row.path.Left(40).GetString();
    }
}

// In a fresh process: blanks and backslashes are no folder, a missing one is looked up again, a found one kept.
const char kChildIni[] = "[System]\r\nCompanyName=1\r\nSoftName=QMChild\r\nVersion=1\r\n"
                         "[Software]\r\nInstallDir=Install\r\nLocalDir=Local\r\nLocalDirName=Data\r\n";

TEST(FoldersChild, OnlyASuccessfulLookUpIsCached)
{
    QMTEST_CHILD_ONLY();
    qmtest::RegGuard guard(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tarvel\\QMChild");
    const auto set = [](const wchar_t* name, const CString& value) {
        qmtest::SetRegValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tarvel\\QMChild\\1", name, value);
    };
    qmtest::TempDir temp;
    const CString install = temp.Path() + L"Later", local = temp.Path() + L"Loc";
    set(L"Install", L" \\\\ ");
    CString dir(L"kept");
    EXPECT_FALSE(QM::GetInstallDir(dir));
    EXPECT_EQ(CString(L"kept"), dir);

    set(L"Install", install);
    set(L"Local", local + L"\\");
    EXPECT_FALSE(QM::GetInstallDir(dir));
    EXPECT_FALSE(QM::GetLocalDir(dir));
    ASSERT_TRUE(QM::MkMDir(install) && QM::MkMDir(local + L"\\Data"));
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(install + L"\\", dir);
    ASSERT_TRUE(QM::GetLocalDir(dir));
    EXPECT_EQ(local + L"\\Data\\", dir);
    set(L"Install", L"C:\\windows");
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(install + L"\\", dir);
    qmtest::ChildReached();
}

TEST(FoldersInFreshProcess, OnlyASuccessfulLookUpIsCached)
{
    EXPECT_EQ(0, qmtest::RunInChild("FoldersChild.OnlyASuccessfulLookUpIsCached", kChildIni));
}

}  // namespace
