// The load sequence, run by loading a fresh copy of the library beside
// prepared start-up files.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/LibraryCopy.h"
#include "support/TempDir.h"

#include <string>

using qmtest::LibraryCopy;
using qmtest::TempDir;

namespace {

const CString kNotConfigured(L"INIT.INI文件中没有设置");

// One loaded copy and the exports the tests read from it.
struct LoadedLibrary
{
    explicit LoadedLibrary(const TempDir& dir) : copy(dir.Path()) {}

    CString SysIni() const { return copy.Proc<CString()>("_ZN2QM14SysINIFilePathEv")(); }
    CString UserIni() const { return copy.Proc<CString()>("_ZN2QM15UserINIFilePathEv")(); }
    INISetting& Init() const { return copy.Proc<INISetting&()>("_ZN2QM12CInitSettingEv")(); }
    INISetting& Menu() const { return copy.Proc<INISetting&()>("_ZN2QM14CADMenuSettingEv")(); }
    bool Switch(const char* name) const { return copy.Proc<bool()>(name)(); }

    LibraryCopy copy;
};

}  // namespace

TEST(LoadSequence, SysStartupFileWinsOverTheOneBesideTheLibrary)
{
    TempDir dir;
    dir.WriteFile(L"Sys\\INIT.ini", "[IniFilePath]\r\nSYS=sys-from-Sys.ini\r\nUser=%QMTEST_USER%\\u.ini\r\n");
    dir.WriteFile(L"INIT.ini", "[IniFilePath]\r\nSYS=sys-from-root.ini\r\n");
    SetEnvironmentVariableW(L"QMTEST_USER", L"C:\\users\\qm");
    LoadedLibrary lib(dir);
    SetEnvironmentVariableW(L"QMTEST_USER", nullptr);
    ASSERT_NE(lib.copy.Module(), nullptr);

    EXPECT_EQ(lib.Init().GetFilePath(), dir.Path() + L"Sys\\INIT.ini");
    EXPECT_EQ(lib.SysIni(), CString(L"sys-from-Sys.ini"));
    EXPECT_EQ(lib.UserIni(), CString(L"C:\\users\\qm\\u.ini")) << "paths pass through macro expansion";
}

TEST(LoadSequence, StartupFileBesideTheLibraryWithoutThePathsSection)
{
    TempDir dir;
    dir.WriteFile(L"INIT.ini", "[Software]\r\nx=1\r\n");
    LoadedLibrary lib(dir);
    ASSERT_NE(lib.copy.Module(), nullptr);
    EXPECT_EQ(lib.Init().GetFilePath(), dir.Path() + L"INIT.ini");
    EXPECT_EQ(lib.SysIni(), kNotConfigured);
    EXPECT_EQ(lib.UserIni(), kNotConfigured);
}

TEST(LoadSequence, NoStartupFileLeavesDefaultsEverywhere)
{
    TempDir dir;
    LoadedLibrary lib(dir);
    ASSERT_NE(lib.copy.Module(), nullptr);
    EXPECT_EQ(lib.SysIni(), kNotConfigured);
    EXPECT_EQ(lib.Init().GetSetting(L"ZERO", L"default", L"Precision"), CString(L"default"));
    EXPECT_TRUE(lib.Menu().GetFilePath().IsEmpty()) << "no work folder, no CAD-menu settings";
    EXPECT_TRUE(lib.Switch("_Z16GetDSDialogToEXEv"));
    EXPECT_FALSE(lib.Switch("_Z15GetDSMacroToEXEv"));
    EXPECT_FALSE(lib.Switch("_Z21GetDSCommandLineToEXEv"));
}

TEST(LoadSequence, CadDialogSwitchFollowsTheExeDialogSwitch)
{
    TempDir off, on;
    off.WriteFile(L"INIT.ini", "[Debug]\r\nDialogToEXE=0\r\nDialogToCAD=1\r\nMacroToCAD=1\r\n");
    on.WriteFile(L"INIT.ini", "[Debug]\r\nDialogToEXE=1\r\nDialogToCAD=0\r\n");
    {
        LoadedLibrary lib(off);
        ASSERT_NE(lib.copy.Module(), nullptr);
        EXPECT_FALSE(lib.Switch("_Z16GetDSDialogToCADv"));
        EXPECT_TRUE(lib.Switch("_Z15GetDSMacroToCADv"));
    }
    LoadedLibrary lib(on);
    ASSERT_NE(lib.copy.Module(), nullptr);
    EXPECT_TRUE(lib.Switch("_Z16GetDSDialogToCADv"));
}

TEST(LoadSequence, CadMenuSettingsAreBoundInTheWorkFolder)
{
    TempDir dir;
    const CString work = dir.Path() + L"work\\area";
    dir.WriteFile(L"INIT.ini",
                  "[System]\r\nCompanyName=x\r\nSoftName=QMLoadTest\r\nVersion=9.9\r\n"
                  "[Software]\r\nWorkDir=Work,HKCU\r\n[CADMenu]\r\nSaveFileName=Menus.ini\r\n");
    const wchar_t* key = L"SOFTWARE\\Tarvel\\QMLoadTest\\9.9";
    ASSERT_TRUE(QM::SetRegStr(HKEY_CURRENT_USER, key, L"Work", work));

    {
        LoadedLibrary lib(dir);
        ASSERT_NE(lib.copy.Module(), nullptr);
        EXPECT_TRUE(QM::IsExist(work)) << "the work folder is created when missing";
        EXPECT_EQ(lib.Menu().GetFilePath(), work + L"\\Menus.ini");
    }
    RegDeleteTreeW(HKEY_CURRENT_USER, L"SOFTWARE\\Tarvel\\QMLoadTest");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"SOFTWARE\\Tarvel\\QMLoadTest");
    RegDeleteKeyW(HKEY_CURRENT_USER, L"SOFTWARE\\Tarvel");  // only when nothing else lives there
}
