// CadCmdLineTests.cpp - the host's "/s" list from the suite's folders and the profile's support path.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"

using qmtest::Cad;

namespace {

// Only ";"-terminated pieces of the profile's list count, and a piece already in the merged
// text (in any case, even inside a longer folder) is not added again.
TEST(CadCmdLine, ProfileListIsMergedAfterTheSuiteFolders)
{
    const struct Row { const wchar_t *key, *setting, *profileList; CString expected; } rows[] = {
        {L"NoLogo", L"1", L"C:\\A;C:\\B;", L"/s \"C:\\A;C:\\B\" /nologo"},
        {L"NoLogo", L"1", L"C:\\A;C:\\B", L"/s \"C:\\A\" /nologo"},
        {L"NoLogo", L"1", L"C:\\A", L"/s \"\" /nologo"},
        {L"NoLogo", L"0", L"C:\\A;", L"/s \"C:\\A\""},
        {L"/s", L";D:\\Suite\\Support;", L" d:\\suite\\support ;E:\\X;;D:\\Suite;",
         L"/s \"D:\\Suite\\Support;E:\\X\" /nologo"},
        {L"/s", L"%INSTALLDIR%Support", L"E:\\X;", L"/s \"" + Cad().Folder(L"Suite\\Support;E:\\X") + L"\" /nologo"},
        // An empty profile list gives way to the default one.
        {L"DefaultCADSearchPath", L"%ACAD15Dir%Support;%ACAD15Dir%Fonts;x", L"",
         L"/s \"" + Cad().Folder(L"AutoCAD 2002\\Support;") + Cad().Folder(L"AutoCAD 2002\\Fonts") + L"\" /nologo"},
    };
    const CString general = CString(qmtest::kProfileKey) + L"General";
    qmtest::RegGuard guard(HKEY_CURRENT_USER, general);
    for (const Row& row : rows) {
        qmtest::SettingOverride setting(row.key, row.setting, L"CADCmdLine");
        qmtest::SetRegValue(HKEY_CURRENT_USER, general, L"ACAD", row.profileList);
        CString exe, cmdLine;
        EXPECT_TRUE(QM::GetCADCmdLineString(exe, cmdLine));
        EXPECT_EQ(row.expected, cmdLine) << row.key << "=" << row.setting << ", profile list " << row.profileList;
        EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\acad.exe"), exe);   // expanded
    }
}

}  // namespace
