// CadDiscoveryTests.cpp - releases, products, install folders and the
// active profile against the test installation.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;
using qmtest::SettingOverride;

static auto* const g_cadEnvironment = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);

namespace {

class CadRelease : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
    }
};

TEST_F(CadRelease, DottedReleaseKeepsItsText)
{
    CString key;
    ASSERT_TRUE(QM::GetCADRegPos(key));
    EXPECT_EQ(CString(qmtest::kR161), key);
}

TEST_F(CadRelease, PlainReleaseGetsPointZero)
{
    SettingOverride version(L"ACADVer", L"15", L"CADCmdLine");
    CString key;
    ASSERT_TRUE(QM::GetCADRegPos(key));
    EXPECT_EQ(CString(L"Software\\Autodesk\\AutoCAD\\R15.0"), key);
    EXPECT_TRUE(QM::IsStartupWithCadR15());
    EXPECT_FALSE(QM::IsStartupWithCadR14());
}

TEST_F(CadRelease, PointZeroCountsForPathsButNotForTheReleaseTest)
{
    SettingOverride version(L"ACADVer", L" 15.0 ", L"CADCmdLine");
    EXPECT_EQ(CString(L"15"), QM::GetStartupAcadVer());
    EXPECT_FALSE(QM::IsStartupWithCadR15());
}

TEST_F(CadRelease, NoReleaseFindsNothing)
{
    SettingOverride version(L"ACADVer", L"", L"CADCmdLine");
    CString key(L"kept"), dir(L"kept");
    EXPECT_FALSE(QM::GetCADRegPos(key));
    EXPECT_FALSE(QM::GetAcadPath(dir));
    EXPECT_EQ(CString(L"kept"), key);
    EXPECT_EQ(CString(L"kept"), dir);
}

TEST_F(CadRelease, ProductKeyTakesAPresetSubKey)
{
    CString out(L"Profiles");
    ASSERT_TRUE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", out, L""));
    EXPECT_EQ(CString(qmtest::kR161) + L"\\ACAD-301:804\\Profiles", out);
}

TEST_F(CadRelease, ProductKeyFallsBackToTheFirstOpenableSubKey)
{
    CString out;
    ASSERT_TRUE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", out, L"Software\\Autodesk\\AutoCAD\\R14.0"));
    EXPECT_EQ(CString(L"Software\\Autodesk\\AutoCAD\\R14.0\\ACAD-1:409\\"), out);
    CString missing(L"\\NoSuchKey");
    EXPECT_FALSE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", missing, L"Software\\Autodesk\\AutoCAD\\R14.0"));
}

class CadFolders : public CadRelease
{
};

TEST_F(CadFolders, UsersProductWithoutExecutableGivesWayToTheMachines)
{
    CString dir;
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\"), dir);
}

TEST_F(CadFolders, EveryProductIsTriedWhenNoCurrentOneHoldsTheExecutable)
{
    qmtest::RegGuard machine(HKEY_LOCAL_MACHINE, qmtest::kR161);
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, qmtest::kR161, L"CurVer");
    qmtest::SetRegValue(HKEY_LOCAL_MACHINE, CString(qmtest::kR161) + L"\\ACAD-301:000", L"AcadLocation",
                        Cad().Folder(L"R14"));
    CString dir;
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"R14\\"), dir);   // ACAD-301:000 is enumerated first
}

TEST_F(CadFolders, ReleaseFoldersEndInOneBackslash)
{
    CString dir;
    ASSERT_TRUE(QM::GetAcadR15Path(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\"), dir);
    ASSERT_TRUE(QM::GetAcadMapPath(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\"), dir);
    ASSERT_TRUE(QM::GetAcadR14Path(dir));   // no CurVer: the product sub-key
    EXPECT_EQ(Cad().Folder(L"R14\\"), dir);
}

TEST_F(CadFolders, MapPathHasNoSubKeyFallback)
{
    qmtest::RegGuard release(HKEY_LOCAL_MACHINE, L"Software\\Autodesk\\AutoCAD\\R15.0");
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, L"Software\\Autodesk\\AutoCAD\\R15.0", L"CurVer");
    CString dir;
    EXPECT_FALSE(QM::GetAcadMapPath(dir));
    ASSERT_TRUE(QM::GetAcadR15Path(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\"), dir);
}

TEST_F(CadFolders, ServerRegistrationIsTheLastResort)
{
    SettingOverride version(L"ACADVer", L"17.20", L"CADCmdLine");
    const wchar_t clsid[] = L"{6C1F3A1E-0D7B-4C55-9B43-5A8E2D0C7F17}";
    qmtest::RegGuard progId(HKEY_CLASSES_ROOT, L"AutoCAD.Application.17.2");
    qmtest::RegGuard server(HKEY_CLASSES_ROOT, CString(L"CLSID\\") + clsid);
    CString dir;
    EXPECT_FALSE(QM::GetAcadPath(dir));
    qmtest::SetRegValue(HKEY_CLASSES_ROOT, L"AutoCAD.Application.17.2\\CLSID", L"", clsid);
    qmtest::SetRegValue(HKEY_CLASSES_ROOT, CString(L"CLSID\\") + clsid + L"\\LocalServer32", L"",
                        Cad().Folder(L"AutoCAD 2005\\acad.exe /Automation "));
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\"), dir);
}

TEST_F(CadFolders, ActiveProfileKeyKeepsTheDoubledBackslash)
{
    CString key, name;
    ASSERT_TRUE(QM::GetCADCurConfigName(key, name));
    EXPECT_EQ(CString(qmtest::kProfileKey), key);
    EXPECT_EQ(CString(qmtest::kProfileName), name);
}

TEST_F(CadFolders, NoProfilesNoActiveProfile)
{
    SettingOverride version(L"ACADVer", L"15", L"CADCmdLine");
    CString key(L"kept"), name;
    EXPECT_FALSE(QM::GetCADCurConfigName(key, name));
    EXPECT_EQ(CString(L"kept"), key);
}

TEST_F(CadFolders, StoredAutomationFolderIsUsedWhileTheExecutableIsThere)
{
    SettingOverride folder(L"CADPathNameCOM", Cad().Folder(L"AutoCAD 2002"), L"CADCmdLine");
    CString dir, exe;
    ASSERT_TRUE(QM::GetCADPath_I(dir, exe));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\"), dir);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\acad.exe"), exe);   // name from "%ACADDIR%acad.exe"
}

}  // namespace
