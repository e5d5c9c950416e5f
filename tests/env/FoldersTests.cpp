// FoldersTests.cpp - the suite's folders from the registry locations that
// the start-up settings name.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;
using qmtest::SettingOverride;

static auto* const g_cadEnvironment = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);

namespace {

class SoftwareKey : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
    }
};

TEST_F(SoftwareKey, AnyCompanyNameGivesTheJoinedWord)
{
    EXPECT_EQ(CString(qmtest::kSoftKey), QM::GetSoftRegItem());
    SettingOverride company(L"CompanyName", L"x", L"System");
    EXPECT_EQ(CString(qmtest::kSoftKey), QM::GetSoftRegItem());
}

TEST_F(SoftwareKey, EmptyCompanyNameGivesTheWordWithABlank)
{
    SettingOverride company(L"CompanyName", L"", L"System");
    EXPECT_EQ(CString(L"SOFTWARE\\Tar Vel\\QMTestSuite\\9.1"), QM::GetSoftRegItem());
}

TEST_F(SoftwareKey, NameAndVersionAreKeptFromTheFirstUse)
{
    EXPECT_EQ(CString(L"QMTestSuite"), QM::RegItem());
    SettingOverride name(L"SoftName", L"Other", L"System");
    SettingOverride version(L"Version", L"2.0", L"System");
    EXPECT_EQ(CString(L"QMTestSuite"), QM::RegItem());
    EXPECT_EQ(CString(L"9.1"), QM::RegVer());
}

TEST_F(SoftwareKey, RootWordSelectsTheHive)
{
    CString dir;
    ASSERT_TRUE(QM::GetRegLocalDir(dir));   // "LocalDir,hkcu"
    EXPECT_EQ(Cad().Folder(L"Local\\"), dir);
    {
        SettingOverride machine(L"LocalDir", L"LocalDir,HKLM", L"Software");
        CString untouched(L"kept");
        EXPECT_FALSE(QM::GetRegLocalDir(untouched));
        EXPECT_EQ(CString(L"kept"), untouched);
    }
    {
        SettingOverride user(L"InstallDir", L"InstallDir,HKCU", L"Software");
        EXPECT_FALSE(QM::GetRegInstallDir(dir));
    }
    ASSERT_TRUE(QM::GetRegInstallDir(dir));   // name alone: the machine's hive, raw text
    EXPECT_EQ(L"  " + Cad().Folder(L"Suite\\\\") + L"  ", dir);
}

TEST_F(SoftwareKey, WorkFolderIsWrittenUnchanged)
{
    qmtest::RegGuard guard(HKEY_CURRENT_USER, qmtest::kSoftKey);
    ASSERT_TRUE(QM::SetRegWorkDir(L" D:\\Other\\\\"));
    EXPECT_EQ(CString(L" D:\\Other\\\\"), qmtest::GetRegValue(HKEY_CURRENT_USER, qmtest::kSoftKey, L"WorkDir"));
}

class Folders : public SoftwareKey
{
};

TEST_F(Folders, InstallFolderIsTrimmedToOneBackslash)
{
    CString dir;
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(Cad().Folder(L"Suite\\"), dir);
}

TEST_F(Folders, LocalFolderJoinsTheLocalFolderName)
{
    CString dir;
    ASSERT_TRUE(QM::GetLocalDir(dir));
    EXPECT_EQ(Cad().Folder(L"Local\\Data\\"), dir);
}

TEST_F(Folders, WorkFolderIsCreatedWithItsParents)
{
    const CString work = Cad().Folder(L"Work\\W\\X\\");
    qmtest::RemoveTree(Cad().Folder(L"Work"));
    CString dir;
    ASSERT_TRUE(QM::GetWorkDir(dir, true));
    EXPECT_EQ(work, dir);
    EXPECT_TRUE(QM::IsExist(work));
}

TEST_F(Folders, WorkFolderIsReadAfreshEachTime)
{
    qmtest::RegGuard guard(HKEY_CURRENT_USER, qmtest::kSoftKey);
    qmtest::SetRegValue(HKEY_CURRENT_USER, qmtest::kSoftKey, L"WorkDir", Cad().Folder(L"Suite\\Sys\\\\"));
    CString dir;
    ASSERT_TRUE(QM::GetWorkDir(dir));
    EXPECT_EQ(Cad().Folder(L"Suite\\Sys\\"), dir);
}

TEST_F(Folders, SharedCadFolderHasNoTrailingBackslash)
{
    wchar_t common[MAX_PATH] = {};
    DWORD size = sizeof(common);
    ASSERT_EQ(ERROR_SUCCESS, RegGetValueW(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Microsoft\\Windows\\CurrentVersion",
                                          L"CommonFilesDir", RRF_RT_REG_SZ, nullptr, common, &size));
    CString expected(common);
    expected.TrimRight(L'\\');
    CString dir;
    ASSERT_TRUE(QM::GetQMCommonFilesDir(dir));
    EXPECT_EQ(expected + L"\\Tarvel Shared\\CAD", dir);
}

// Children: each starts with no folder cached, its own start-up file beside
// its library, and its own registry text.
const char kChildIni[] = "[System]\r\nCompanyName=1\r\nSoftName=QMChild\r\nVersion=1\r\n"
                         "[Software]\r\nInstallDir=Install\r\nLocalDir=Local\r\nLocalDirName=Data\r\n";

class FolderChild : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QMTEST_CHILD_ONLY();
        m_guard = std::make_unique<qmtest::RegGuard>(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tarvel\\QMChild");
    }
    void Set(const wchar_t* name, const CString& value)
    {
        qmtest::SetRegValue(HKEY_LOCAL_MACHINE, L"SOFTWARE\\Tarvel\\QMChild\\1", name, value);
    }
    qmtest::TempDir m_dir;
    std::unique_ptr<qmtest::RegGuard> m_guard;
};

TEST_F(FolderChild, BlanksAndBackslashesAreNoFolder)
{
    Set(L"Install", L" \\\\ ");
    CString dir(L"kept");
    EXPECT_FALSE(QM::GetInstallDir(dir));
    EXPECT_EQ(CString(L"kept"), dir);
    qmtest::ChildReached();
}

TEST_F(FolderChild, FailuresAreRetriedAndSuccessIsKept)
{
    const CString install = m_dir.Path() + L"Later";
    const CString local = m_dir.Path() + L"Loc";
    Set(L"Install", install);
    Set(L"Local", local + L"\\");
    CString dir;
    EXPECT_FALSE(QM::GetInstallDir(dir));
    EXPECT_FALSE(QM::GetLocalDir(dir));
    CreateDirectoryW(install, nullptr);
    CreateDirectoryW(local, nullptr);
    CreateDirectoryW(local + L"\\Data", nullptr);
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(install + L"\\", dir);
    ASSERT_TRUE(QM::GetLocalDir(dir));
    EXPECT_EQ(local + L"\\Data\\", dir);
    Set(L"Install", L"C:\\windows");
    ASSERT_TRUE(QM::GetInstallDir(dir));
    EXPECT_EQ(install + L"\\", dir);
    qmtest::ChildReached();
}

TEST(FoldersInFreshProcess, BlanksAndBackslashesAreNoFolder)
{
    EXPECT_EQ(0, qmtest::RunInChild("FolderChild.BlanksAndBackslashesAreNoFolder", kChildIni));
}

TEST(FoldersInFreshProcess, FailuresAreRetriedAndSuccessIsKept)
{
    EXPECT_EQ(0, qmtest::RunInChild("FolderChild.FailuresAreRetriedAndSuccessIsKept", kChildIni));
}

class PathVariable : public SoftwareKey
{
protected:
    void SetUp() override
    {
        SoftwareKey::SetUp();
        DWORD length = GetEnvironmentVariableW(L"Path", nullptr, 0);
        m_saved.GetBufferSetLength(static_cast<int>(length));
        GetEnvironmentVariableW(L"Path", m_saved.GetBuffer(), length);
        m_saved.ReleaseBuffer();
    }
    void TearDown() override { SetEnvironmentVariableW(L"Path", m_saved); }
    static CString Path()
    {
        wchar_t buffer[8192] = {};
        GetEnvironmentVariableW(L"Path", buffer, ARRAYSIZE(buffer));
        return buffer;
    }
    CString m_saved;
};

TEST_F(PathVariable, FolderAlreadyThereMovesToTheEndOnce)
{
    SetEnvironmentVariableW(L"Path", L"C:\\TOOLS;C:\\WIN");
    ASSERT_TRUE(QM::AddPathEnvironmentVariable(L"c:\\tools;"));
    // Only doubled separators are mended: the hole the cut leaves at the
    // front stays.
    EXPECT_EQ(CString(L";C:\\WIN;C:\\TOOLS"), Path());
}

TEST_F(PathVariable, FolderAtTheEndStaysThere)
{
    SetEnvironmentVariableW(L"Path", L"C:\\WIN;C:\\TOOLS");
    ASSERT_TRUE(QM::AddPathEnvironmentVariable(L"c:\\tools;"));
    EXPECT_EQ(CString(L"C:\\WIN;C:\\TOOLS"), Path());
}

TEST_F(PathVariable, AFolderThatStartsALongerOneCutsItsText)
{
    SetEnvironmentVariableW(L"Path", L"c:\\toolset;C:\\Win");
    ASSERT_TRUE(QM::AddPathEnvironmentVariable(L"C:\\Tools;D:\\Bin"));
    EXPECT_EQ(CString(L"ET;C:\\WIN;C:\\TOOLS;D:\\BIN"), Path());
}

TEST_F(PathVariable, ALongPathIsKeptWhole)
{
    CString longPath;
    for (int i = 0; i < 400; ++i)
        longPath.AppendFormat(L"C:\\F%04d;", i);
    SetEnvironmentVariableW(L"Path", longPath);
    ASSERT_TRUE(QM::AddPathEnvironmentVariable(L"D:\\Bin"));
    longPath.MakeUpper();
    EXPECT_EQ(longPath + L"D:\\BIN", Path());
}

}  // namespace
