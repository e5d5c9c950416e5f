// CadDiscoveryTests.cpp - releases, products, folders and the active profile of the test installation.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"

using qmtest::Cad;
using qmtest::SettingOverride;

static auto* const g_cadEnvironment = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);

namespace {

const wchar_t kR150[] = L"Software\\Autodesk\\AutoCAD\\R15.0", kR140[] = L"Software\\Autodesk\\AutoCAD\\R14.0";

TEST(CadRelease, SettingGivesTheKeysAndTheReleaseTestsAndTheFirstCandidateWithTheExecutableWins)
{
    const struct { const wchar_t *setting, *key, *version; bool r14, r15; } rows[] = {
        {L"16.1", qmtest::kR161, L"16.1", false, false}, {L"15", kR150, L"15", false, true},
        {L" 15.0 ", kR150, L"15", false, false},   // ".0" counts for paths, not for the release tests
        {L"14", kR140, L"14", true, false}, {L"", nullptr, L"", false, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.setting);
        SettingOverride version(L"ACADVer", row.setting, L"CADCmdLine");
        CString key(L"kept"), dir(L"kept");
        EXPECT_EQ(row.key != nullptr, QM::GetCADRegPos(key));
        EXPECT_EQ(CString(row.key != nullptr ? row.key : L"kept"), key);
        EXPECT_EQ(CString(row.version), QM::GetStartupAcadVer());
        EXPECT_EQ(row.r14, QM::IsStartupWithCadR14());
        EXPECT_EQ(row.r15, QM::IsStartupWithCadR15());
        EXPECT_TRUE(row.key != nullptr || (!QM::GetAcadPath(dir) && dir == L"kept"));   // no release, no folder
    }
    // The product key is CurVer, or else the first sub-key, holding the rest of the path.
    CString out(L"Profiles");
    ASSERT_TRUE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", out, L""));
    EXPECT_EQ(CString(qmtest::kR161) + L"\\ACAD-301:804\\Profiles", out);
    out.Empty();
    ASSERT_TRUE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", out, kR140));
    EXPECT_EQ(CString(kR140) + L"\\ACAD-1:409\\", out);
    out = L"\\NoSuchKey";
    EXPECT_FALSE(QM::GetRegPos(HKEY_LOCAL_MACHINE, L"CurVer", out, kR140));
    // Candidates: the user's CurVer, the machine's, then every product; the first with the executable
    // wins; the server's registration is the last resort.
    CString dir;
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\"), dir);

    qmtest::RegGuard machine(HKEY_LOCAL_MACHINE, qmtest::kR161);
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, qmtest::kR161, L"CurVer");
    qmtest::SetRegValue(HKEY_LOCAL_MACHINE, CString(qmtest::kR161) + L"\\ACAD-301:000", L"AcadLocation",
                        Cad().Folder(L"R14"));
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"R14\\"), dir);   // ACAD-301:000 is enumerated first
    // The server registration is the last resort.
    SettingOverride version(L"ACADVer", L"17.20", L"CADCmdLine");
    const CString clsid = L"{6C1F3A1E-0D7B-4C55-9B43-5A8E2D0C7F17}";
    qmtest::RegGuard progId(HKEY_CLASSES_ROOT, L"AutoCAD.Application.17.2");
    qmtest::RegGuard server(HKEY_CLASSES_ROOT, L"CLSID\\" + clsid);
    EXPECT_FALSE(QM::GetAcadPath(dir));
    qmtest::SetRegValue(HKEY_CLASSES_ROOT, L"AutoCAD.Application.17.2\\CLSID", L"", clsid);
    qmtest::SetRegValue(HKEY_CLASSES_ROOT, L"CLSID\\" + clsid + L"\\LocalServer32", L"",
                        Cad().Folder(L"AutoCAD 2005\\acad.exe /Automation "));
    ASSERT_TRUE(QM::GetAcadPath(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\"), dir);
}

TEST(CadFolders, ReleaseFoldersEndInOneBackslashOnlyTheMapOneNeedsCurVerProfileKeyKeepsItsDoubledOne)
{
    const struct { bool (*get)(CString&); const wchar_t* folder; } rows[] = {
        {QM::GetAcadR15Path, L"AutoCAD 2002\\"}, {QM::GetAcadMapPath, L"AutoCAD 2002\\"},
        {QM::GetAcadR14Path, L"R14\\"}};   // R14 has no CurVer: the product sub-key
    CString dir;
    for (const auto& row : rows) {
        ASSERT_TRUE(row.get(dir)) << row.folder;
        EXPECT_EQ(Cad().Folder(row.folder), dir);
    }

    qmtest::RegGuard release(HKEY_LOCAL_MACHINE, kR150);
    RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, kR150, L"CurVer");
    EXPECT_FALSE(QM::GetAcadMapPath(dir));
    ASSERT_TRUE(QM::GetAcadR15Path(dir));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\"), dir);
    // The active profile's key keeps the doubled backslash.
    CString key, name;
    ASSERT_TRUE(QM::GetCADCurConfigName(key, name));
    EXPECT_EQ(CString(qmtest::kProfileKey), key);
    EXPECT_EQ(CString(qmtest::kProfileName), name);

    // The caller's name is the product look-up's tail: "junk" finds no profiles, nothing is written.
    key = L"kept";
    name = L"junk";
    EXPECT_FALSE(QM::GetCADCurConfigName(key, name));
    EXPECT_EQ(CString(L"kept"), key);
    EXPECT_EQ(CString(L"junk"), name);

    SettingOverride noProfiles(L"ACADVer", L"15", L"CADCmdLine");
    key = L"kept";
    EXPECT_FALSE(QM::GetCADCurConfigName(key, name));
    EXPECT_EQ(CString(L"kept"), key);
}

}  // namespace
