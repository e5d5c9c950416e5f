// PathMacrosTests.cpp - folder kinds and macro expansion against the test
// installation.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;

namespace {

class PathMacros : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
    }
    static bool Defined(const wchar_t* name) { return GetEnvironmentVariableW(name, nullptr, 0) > 0; }
};

TEST_F(PathMacros, FolderKindJoinsTheSubPath)
{
    EXPECT_EQ(Cad().Folder(L"Local\\Data\\Plots\\"), QM::FixSystemDir(QM::FSD_LOCALDIR, L"\\Plots\\"));
    EXPECT_EQ(Cad().Folder(L"Work\\W\\X\\Temp\\"), QM::FixSystemDir(QM::FSD_WORKDIR, L"Temp"));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\Fonts\\"), QM::FixSystemDir(QM::FSD_ACADR15DIR, L"Fonts"));
    EXPECT_EQ(Cad().Folder(L"R14\\"), QM::FixSystemDir(QM::FSD_ACADR14DIR, L""));
}

TEST_F(PathMacros, EmptyOrBackslashSubGivesTheFolderItself)
{
    EXPECT_EQ(Cad().Folder(L"Suite\\"), QM::FixSystemDir(QM::FSD_INSTALLDIR, L""));
    EXPECT_EQ(Cad().Folder(L"Suite\\"), QM::FixSystemDir(QM::FSD_INSTALLDIR, L"\\\\"));
}

TEST_F(PathMacros, CombinedOrUnknownKindsGiveNothing)
{
    EXPECT_EQ(CString(), QM::FixSystemDir(static_cast<QM::FSD_DirType>(3), L"x"));
    EXPECT_EQ(CString(), QM::FixSystemDir(static_cast<QM::FSD_DirType>(64), L"x"));
    EXPECT_EQ(CString(), QM::FixSystemDir(static_cast<QM::FSD_DirType>(0), L"x"));
}

TEST_F(PathMacros, CadKindGivesTheInstallFolder)
{
    EXPECT_EQ(QM::FixSystemDir(QM::FSD_INSTALLDIR, L"Bin"), QM::FixSystemDir(QM::FSD_ACADDIR, L"Bin"));
}

TEST_F(PathMacros, StarsAreRemovedAfterJoining)
{
    EXPECT_EQ(Cad().Folder(L"Suite\\Bin\\x\\"), QM::FixSystemDir(QM::FSD_INSTALLDIR, L"Bin\\*\\x*"));
}

TEST_F(PathMacros, MacrosExpandWhateverTheirCase)
{
    EXPECT_EQ(Cad().Folder(L"Work\\W\\X\\Temp"), QM::FixSystemDir(L"%workdir%Temp"));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\acad.exe"), QM::FixSystemDir(L"%AcadDir%acad.exe"));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2002\\Support;") + Cad().Folder(L"R14\\Fonts;") + Cad().Folder(L"Suite\\") +
                  Cad().Folder(L"Local\\Data\\"),
              QM::FixSystemDir(L"%ACAD15DIR%Support;%acad14dir%Fonts;%INSTALLDIR%%LocalDir%"));
}

TEST_F(PathMacros, UnknownReferencesStayAsWritten)
{
    EXPECT_EQ(CString(L"%NOSUCH%\\x"), QM::FixSystemDir(L"%NOSUCH%\\x"));
    EXPECT_EQ(CString(L"100%"), QM::FixSystemDir(L"100%"));
}

TEST_F(PathMacros, StarsAreRemovedAfterExpansion)
{
    EXPECT_EQ(Cad().Folder(L"Suite\\Bin;x"), QM::FixSystemDir(L"%INSTALLDIR%Bin\\*;*x"));
}

TEST_F(PathMacros, OtherEnvironmentVariablesExpandToo)
{
    SetEnvironmentVariableW(L"QMTEST_USERVAR", L"E:\\Mine");
    EXPECT_EQ(CString(L"E:\\Mine\\a"), QM::FixSystemDir(L"%qmtest_uservar%\\a"));
    SetEnvironmentVariableW(L"QMTEST_USERVAR", nullptr);
}

TEST_F(PathMacros, MacrosAreWithdrawnAfterwardsEvenIfTheyExistedBefore)
{
    SetEnvironmentVariableW(L"INSTALLDIR", L"Q:\\Before\\");
    EXPECT_EQ(Cad().Folder(L"Suite\\"), QM::FixSystemDir(L"%INSTALLDIR%"));
    for (const wchar_t* name : {L"ACADDIR", L"ACAD14DIR", L"ACAD15DIR", L"INSTALLDIR", L"LOCALDIR", L"WORKDIR"})
        EXPECT_FALSE(Defined(name));
}

TEST_F(PathMacros, ExtraMacrosOverrideAndUnpairedNamesAreIgnored)
{
    CStringArray items, names, values;
    items.Add(L"%INSTALLDIR%a");
    items.Add(L"%Mine%-%ORPHAN%");
    names.Add(L"INSTALLDIR");
    names.Add(L"MINE");
    names.Add(L"ORPHAN");
    values.Add(L"X:\\");
    values.Add(L"m");
    QM::FixSystemDir(items, names, values);
    EXPECT_EQ(CString(L"X:\\a"), items[0]);
    EXPECT_EQ(CString(L"m-%ORPHAN%"), items[1]);
    EXPECT_FALSE(Defined(L"MINE"));
    EXPECT_FALSE(Defined(L"INSTALLDIR"));
}

TEST_F(PathMacros, TooLongAnExpansionKeepsTheText)
{
    CString text(L"%INSTALLDIR%");
    text += CString(L'a', 1020);
    EXPECT_EQ(text, QM::FixSystemDir(text));
}

}  // namespace
