// The load sequence, run by loading a fresh copy of the library beside prepared start-up files.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/LibraryCopy.h"
#include "support/RegGuard.h"
#include "support/TempDir.h"

using qmtest::TempDir;

namespace {

const CString kNotConfigured(L"INIT.INI文件中没有设置");

// One loaded copy and the exports the tests read from it.
struct LoadedLibrary : qmtest::LibraryCopy
{
    explicit LoadedLibrary(const TempDir& dir) : LibraryCopy(dir.Path()) {}

    CString Text(const char* name) const { return Proc<CString()>(name)(); }
    INISetting& Setting(const char* name) const { return Proc<INISetting&()>(name)(); }
    bool Switch(const char* name) const { return Proc<bool()>(name)(); }
};

const char kSys[] = "_ZN2QM14SysINIFilePathEv", kUser[] = "_ZN2QM15UserINIFilePathEv",
           kInit[] = "_ZN2QM12CInitSettingEv", kMenu[] = "_ZN2QM14CADMenuSettingEv";

}  // namespace

// Sys\INIT.ini wins over the one beside the library; paths pass through macro expansion; what
// is not set keeps its default (only DialogToEXE is on).
TEST(LoadSequence, StartupFileItsPathsAndSwitches)
{
    const struct { const char *sysFolderIni, *besideIni; const wchar_t* bound; CString sys, user; } rows[] = {
        {"[IniFilePath]\r\nSYS=sys-from-Sys.ini\r\nUser=%QMTEST_USER%\\u.ini\r\n",
         "[IniFilePath]\r\nSYS=sys-from-root.ini\r\n", L"Sys\\INIT.ini", L"sys-from-Sys.ini", L"C:\\users\\qm\\u.ini"},
        {nullptr, "[Software]\r\nx=1\r\n", L"INIT.ini", kNotConfigured, kNotConfigured},
        {nullptr, nullptr, nullptr, kNotConfigured, kNotConfigured},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.besideIni != nullptr ? row.besideIni : "no start-up file");
        TempDir dir;
        if (row.sysFolderIni != nullptr)
            dir.WriteFile(L"Sys\\INIT.ini", row.sysFolderIni);
        if (row.besideIni != nullptr)
            dir.WriteFile(L"INIT.ini", row.besideIni);
        SetEnvironmentVariableW(L"QMTEST_USER", L"C:\\users\\qm");
        LoadedLibrary lib(dir);
        SetEnvironmentVariableW(L"QMTEST_USER", nullptr);
        ASSERT_NE(lib.Module(), nullptr);
        EXPECT_TRUE(row.bound == nullptr || lib.Setting(kInit).GetFilePath() == dir.Path() + row.bound);
        EXPECT_EQ(lib.Text(kSys), row.sys);
        EXPECT_EQ(lib.Text(kUser), row.user);
        EXPECT_EQ(lib.Setting(kInit).GetSetting(L"ZERO", L"default", L"Precision"), CString(L"default"));
        EXPECT_TRUE(lib.Setting(kMenu).GetFilePath().IsEmpty()) << "no work folder, no CAD-menu settings";
        EXPECT_TRUE(lib.Switch("_Z16GetDSDialogToEXEv"));
        EXPECT_FALSE(lib.Switch("_Z15GetDSMacroToEXEv") || lib.Switch("_Z21GetDSCommandLineToEXEv"));
    }
    // The CAD dialog switch follows the EXE dialog switch.
    const struct { const char* ini; bool dialogToCad; } switches[] = {
        {"[Debug]\r\nDialogToEXE=0\r\nDialogToCAD=1\r\nMacroToCAD=1\r\n", false},
        {"[Debug]\r\nDialogToEXE=1\r\nDialogToCAD=0\r\n", true}};
    for (const auto& row : switches) {
        TempDir dir;
        dir.WriteFile(L"INIT.ini", row.ini);
        LoadedLibrary lib(dir);
        ASSERT_NE(lib.Module(), nullptr);
        EXPECT_EQ(lib.Switch("_Z16GetDSDialogToCADv"), row.dialogToCad);
        EXPECT_EQ(lib.Switch("_Z15GetDSMacroToCADv"), !row.dialogToCad);
    }
    // The CAD-menu settings are bound in the work folder.
    TempDir dir;
    const CString work = dir.Path() + L"work\\area";
    dir.WriteFile(L"INIT.ini",
                  "[System]\r\nCompanyName=x\r\nSoftName=QMLoadTest\r\nVersion=9.9\r\n"
                  "[Software]\r\nWorkDir=Work,HKCU\r\n[CADMenu]\r\nSaveFileName=Menus.ini\r\n");
    qmtest::RegGuard guard(HKEY_CURRENT_USER, L"SOFTWARE\\Tarvel\\QMLoadTest");
    ASSERT_TRUE(QM::SetRegStr(HKEY_CURRENT_USER, L"SOFTWARE\\Tarvel\\QMLoadTest\\9.9", L"Work", work));
    LoadedLibrary lib(dir);
    ASSERT_NE(lib.Module(), nullptr);
    EXPECT_TRUE(QM::IsExist(work)) << "the work folder is created when missing";
    EXPECT_EQ(lib.Setting(kMenu).GetFilePath(), work + L"\\Menus.ini");
}
