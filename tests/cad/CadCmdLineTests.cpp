// CadCmdLineTests.cpp - the host's "/s" list merged from the suite's
// folders and the active profile's support path.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;
using qmtest::SettingOverride;

namespace {

class CadCmdLine : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
        m_general = CString(qmtest::kProfileKey) + L"General";
        m_guard = std::make_unique<qmtest::RegGuard>(HKEY_CURRENT_USER, m_general);
    }
    CString Run(const wchar_t* profileList)
    {
        qmtest::SetRegValue(HKEY_CURRENT_USER, m_general, L"ACAD", profileList);
        CString exe, cmdLine;
        EXPECT_TRUE(QM::GetCADCmdLineString(exe, cmdLine));
        return cmdLine;
    }
    CString m_general;
    std::unique_ptr<qmtest::RegGuard> m_guard;
};

TEST_F(CadCmdLine, ProfileListWithFinalSemicolonIsMergedWhole)
{
    EXPECT_EQ(CString(L"/s \"C:\\A;C:\\B\" /nologo"), Run(L"C:\\A;C:\\B;"));
}

TEST_F(CadCmdLine, TextAfterTheLastSemicolonIsIgnored)
{
    EXPECT_EQ(CString(L"/s \"C:\\A\" /nologo"), Run(L"C:\\A;C:\\B"));
    EXPECT_EQ(CString(L"/s \"\" /nologo"), Run(L"C:\\A"));
}

TEST_F(CadCmdLine, SuiteFoldersComeFirstAndContainedPiecesCountAsPresent)
{
    SettingOverride suite(L"/s", L";D:\\Suite\\Support;", L"CADCmdLine");
    EXPECT_EQ(CString(L"/s \"D:\\Suite\\Support;E:\\X\" /nologo"), Run(L" d:\\suite\\support ;E:\\X;;D:\\Suite;"));
}

TEST_F(CadCmdLine, SuiteFoldersAreExpanded)
{
    SettingOverride suite(L"/s", L"%INSTALLDIR%Support", L"CADCmdLine");
    EXPECT_EQ(L"/s \"" + Cad().Folder(L"Suite\\Support;E:\\X") + L"\" /nologo", Run(L"E:\\X;"));
}

TEST_F(CadCmdLine, NoLogoZeroLeavesTheSwitchOut)
{
    SettingOverride logo(L"NoLogo", L"0", L"CADCmdLine");
    EXPECT_EQ(CString(L"/s \"C:\\A\""), Run(L"C:\\A;"));
}

TEST_F(CadCmdLine, EmptyProfileListUsesTheDefaultList)
{
    SettingOverride list(L"DefaultCADSearchPath", L"%ACAD15Dir%Support;%ACAD15Dir%Fonts;x", L"CADCmdLine");
    EXPECT_EQ(L"/s \"" + Cad().Folder(L"AutoCAD 2002\\Support;") + Cad().Folder(L"AutoCAD 2002\\Fonts") +
                  L"\" /nologo",
              Run(L""));
}

TEST_F(CadCmdLine, ExecutableIsExpanded)
{
    CString exe, cmdLine;
    ASSERT_TRUE(QM::GetCADCmdLineString(exe, cmdLine));
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\acad.exe"), exe);
}

}  // namespace
