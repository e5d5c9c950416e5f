// CadMenuTests.cpp - the active profile's menus saved into the CAD-menu store and restored.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;
using qmtest::kProfileName;

namespace {

class CadMenu : public ::testing::Test
{
protected:
    CadMenu() { QM::CADMenuSetting().SetFilePath(m_store); }
    ~CadMenu() override { QM::CADMenuSetting().SetFilePath(m_previous); }
    CString Reg(const wchar_t* key, const wchar_t* name) { return qmtest::GetRegValue(HKEY_CURRENT_USER, m_key + key, name); }
    CString Stored(const wchar_t* key) { return qmtest::Profile(kProfileName, key, m_store); }

    const CString m_key = qmtest::kProfileKey, m_previous = QM::CADMenuSetting().GetFilePath();
    qmtest::RegGuard m_guard{HKEY_CURRENT_USER, m_key};
    qmtest::TempDir m_dir;
    const CString m_store = m_dir.Path() + L"ACADMenu.INI";
};

// Saving while the profile holds the suite's menus would keep them for good; only string values
// are groups, so the DWORD count stays out of the store.
TEST_F(CadMenu, SaveStoresTheMenuFileAndTheStringGroupsUnlessTheSuitesMenusAreIn)
{
    ASSERT_TRUE(QM::SetIsInSoftware(true));
    CString profile;
    EXPECT_FALSE(QM::SRCADMenu(true, profile));
    EXPECT_EQ(CString(L"<absent>"), Stored(L"*MenuPathName"));
    ASSERT_TRUE(QM::SetIsInSoftware(false));
    EXPECT_EQ(CString(L"0"), Stored(L"*InQMSoftWare"));
    ASSERT_TRUE(QM::SRCADMenu(true, profile));
    EXPECT_EQ(CString(kProfileName), profile);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\Support\\acad"), Stored(L"*MenuPathName"));
    EXPECT_EQ(Reg(L"Menus", L"Group1"), Stored(L"Group1"));
    EXPECT_EQ(Reg(L"Menus", L"Group2"), Stored(L"Group2"));
    EXPECT_EQ(CString(L"<absent>"), Stored(L"Count"));
}

// Without a saved menu file the menu file is emptied; saved text wins over a marker, and
// unsaved groups with a marker (in any case) are emptied.
TEST_F(CadMenu, RestorePutsSavedGroupsBackAndEmptiesMarkedOnes)
{
    CString profile;
    ASSERT_TRUE(QM::SRCADMenu(false, profile));
    EXPECT_EQ(CString(), Reg(L"General Configuration", L"MenuFile"));
    const CString group3 = Reg(L"Menus", L"Group3");
    WritePrivateProfileStringW(kProfileName, L"*MenuPathName", L"C:\\Saved\\acad", m_store);
    WritePrivateProfileStringW(kProfileName, L"Group1", L"TVMENU C:\\Saved\\tv", m_store);
    QM::CADMenuSetting().SetFilePath(m_store);
    qmtest::SetRegValue(HKEY_CURRENT_USER, m_key + L"Menus", L"Group4", L"tvMenu d:\\tv\\tv");
    ASSERT_TRUE(QM::SRCADMenu(false, profile));
    EXPECT_EQ(CString(L"C:\\Saved\\acad"), Reg(L"General Configuration", L"MenuFile"));
    EXPECT_EQ(CString(L"TVMENU C:\\Saved\\tv"), Reg(L"Menus", L"Group1"));
    EXPECT_EQ(CString(), Reg(L"Menus", L"Group2"));   // "QMSuite" matches "qmsuite"
    EXPECT_EQ(group3, Reg(L"Menus", L"Group3"));
    EXPECT_EQ(CString(), Reg(L"Menus", L"Group4"));
}

// In a fresh process with no menu switch set: the switch is read once and kept.
TEST(CadMenuChild, MissingSwitchRefusesAndChangesNothing)
{
    QMTEST_CHILD_ONLY();
    qmtest::CadInstallation installation;
    {
        qmtest::SettingOverride off(L"EnableSaveCADMenu", L"", L"CADMenu");
        qmtest::TempDir store;
        QM::CADMenuSetting().SetFilePath(store.Path() + L"ACADMenu.INI");
        CString profile(L"kept");
        EXPECT_FALSE(QM::SRCADMenu(true, profile));
        EXPECT_EQ(CString(L"kept"), profile);
        EXPECT_FALSE(QM::IsExist(store.Path() + L"ACADMenu.INI"));
    }
    qmtest::SettingOverride on(L"EnableSaveCADMenu", L"1", L"CADMenu");
    EXPECT_FALSE(QM::EnableSaveCadMenu());
    qmtest::ChildReached();
}

TEST(CadMenuInFreshProcess, MissingSwitchRefusesAndChangesNothing)
{
    EXPECT_EQ(0, qmtest::RunInChild("CadMenuChild.MissingSwitchRefusesAndChangesNothing"));
}

}  // namespace
