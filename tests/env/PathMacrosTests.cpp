// PathMacrosTests.cpp - folder kinds and macro expansion against the test installation.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"

using qmtest::Cad;

namespace {

// The sub-path is joined without its outer backslashes, stars removed after; the CAD kind gives
// the install folder, combined or unknown kinds nothing.
TEST(PathMacros, FolderKindJoinsTheSubPathAndTextExpandsMacrosAndVariables)
{
    const struct { int kind; const wchar_t* sub; CString expected; } rows[] = {
        {QM::FSD_LOCALDIR, L"\\Plots\\", Cad().Folder(L"Local\\Data\\Plots\\")},
        {QM::FSD_WORKDIR, L"Temp", Cad().Folder(L"Work\\W\\X\\Temp\\")},
        {QM::FSD_ACADR15DIR, L"Fonts", Cad().Folder(L"AutoCAD 2002\\Fonts\\")},
        {QM::FSD_ACADR14DIR, L"", Cad().Folder(L"R14\\")},
        {QM::FSD_INSTALLDIR, L"\\\\", Cad().Folder(L"Suite\\")},
        {QM::FSD_INSTALLDIR, L"Bin\\*\\x*", Cad().Folder(L"Suite\\Bin\\x\\")},
        {QM::FSD_ACADDIR, L"Bin", Cad().Folder(L"Suite\\Bin\\")},
        {3, L"x", L""}, {64, L"x", L""}, {0, L"x", L""},
    };
    for (const auto& row : rows)
        EXPECT_EQ(row.expected, QM::FixSystemDir(static_cast<QM::FSD_DirType>(row.kind), row.sub))
            << "kind " << row.kind << ", sub-path " << row.sub;
    // Macros in any case and other variables expand, stars go after; unknown references stay, and a
    // too long expansion is what the library's 1024-character buffer holds.
    qmtest::EnvOverride mine(L"QMTEST_USERVAR", L"E:\\Mine");
    const CString tooLong = L"%INSTALLDIR%" + CString(L'a', 1020);
    const struct { CString text, expected; } texts[] = {
        {L"%workdir%Temp", Cad().Folder(L"Work\\W\\X\\Temp")},
        {L"%AcadDir%acad.exe", Cad().Folder(L"AutoCAD 2005\\acad.exe")},
        {L"%ACAD15DIR%Support;%acad14dir%Fonts;%INSTALLDIR%%LocalDir%",
         Cad().Folder(L"AutoCAD 2002\\Support;") + Cad().Folder(L"R14\\Fonts;") + Cad().Folder(L"Suite\\") +
             Cad().Folder(L"Local\\Data\\")},
        {L"%qmtest_uservar%\\a", L"E:\\Mine\\a"},
        {L"%INSTALLDIR%Bin\\*;*x", Cad().Folder(L"Suite\\Bin;x")},
        {L"100%", L"100%"},   // "%NOSUCH%\\x" staying as written is the qmtool expand-unknown check
        {tooLong, (Cad().Folder(L"Suite\\") + CString(L'a', 1020)).Left(1023)},
    };
    for (const auto& row : texts)
        EXPECT_EQ(row.expected, QM::FixSystemDir(row.text)) << row.text.Left(60).GetString();
}

TEST(PathMacros, MacrosAreWithdrawnAfterwardsAndExtraOnesOverride)
{
    SetEnvironmentVariableW(L"INSTALLDIR", L"Q:\\Before\\");
    EXPECT_EQ(Cad().Folder(L"Suite\\"), QM::FixSystemDir(L"%INSTALLDIR%"));
    for (const wchar_t* name : {L"ACADDIR", L"ACAD14DIR", L"ACAD15DIR", L"INSTALLDIR", L"LOCALDIR", L"WORKDIR"})
        EXPECT_EQ(CString(L"<missing>"), qmtest::GetEnv(name)) << name;
    // Extra macros override, unpaired names are ignored, and they are withdrawn too.
    CStringArray items, names, values;
    for (const wchar_t* item : {L"%INSTALLDIR%a", L"%Mine%-%ORPHAN%"})
        items.Add(item);
    for (const wchar_t* name : {L"INSTALLDIR", L"MINE", L"ORPHAN"})
        names.Add(name);
    values.Add(L"X:\\");
    values.Add(L"m");
    QM::FixSystemDir(items, names, values);
    EXPECT_EQ(CString(L"X:\\a"), items[0]);
    EXPECT_EQ(CString(L"m-%ORPHAN%"), items[1]);
    EXPECT_EQ(CString(L"<missing>"), qmtest::GetEnv(L"MINE"));
    EXPECT_EQ(CString(L"<missing>"), qmtest::GetEnv(L"INSTALLDIR"));
}

}  // namespace
