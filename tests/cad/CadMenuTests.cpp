// CadMenuTests.cpp - the active profile's menus saved into the CAD-menu
// store and restored from it.
#include <QMUtil.h>
#include <gtest/gtest.h>

#include "support/CadFixture.h"
#include "support/ChildProcess.h"

using qmtest::Cad;

namespace {

const wchar_t kProfile[] = L"<<QM Test>>";

class CadMenu : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (qmtest::IsChildProcess())
            GTEST_SKIP();
        m_key = CString(qmtest::kProfileKey);
        m_guard = std::make_unique<qmtest::RegGuard>(HKEY_CURRENT_USER, m_key);
        m_previous = QM::CADMenuSetting().GetFilePath();
        m_store = m_dir.Path() + L"ACADMenu.INI";
        QM::CADMenuSetting().SetFilePath(m_store);
    }
    void TearDown() override
    {
        if (!m_previous.IsEmpty())
            QM::CADMenuSetting().SetFilePath(m_previous);
    }
    CString Menu(const wchar_t* name) { return qmtest::GetRegValue(HKEY_CURRENT_USER, m_key + L"Menus", name); }
    CString Stored(const wchar_t* key)
    {
        wchar_t text[1024] = {};
        GetPrivateProfileStringW(kProfile, key, L"<missing>", text, ARRAYSIZE(text), m_store);
        return text;
    }
    qmtest::TempDir m_dir;
    CString m_key, m_store, m_previous;
    std::unique_ptr<qmtest::RegGuard> m_guard;
};

TEST_F(CadMenu, SaveStoresMenuFileAndStringGroups)
{
    CString profile;
    ASSERT_TRUE(QM::SRCADMenu(true, profile));
    EXPECT_EQ(CString(kProfile), profile);
    EXPECT_EQ(Cad().Folder(L"AutoCAD 2005\\Support\\acad"), Stored(L"*MenuPathName"));
    EXPECT_EQ(Menu(L"Group1"), Stored(L"Group1"));
    EXPECT_EQ(Menu(L"Group2"), Stored(L"Group2"));
    EXPECT_EQ(CString(L"<missing>"), Stored(L"Count"));
}

TEST_F(CadMenu, SaveIsRefusedWhileTheSuitesMenusAreIn)
{
    ASSERT_TRUE(QM::SetIsInSoftware(true));
    EXPECT_TRUE(QM::IsInSoftware());
    CString profile;
    EXPECT_FALSE(QM::SRCADMenu(true, profile));
    EXPECT_EQ(CString(L"<missing>"), Stored(L"*MenuPathName"));
    ASSERT_TRUE(QM::SetIsInSoftware(false));
    EXPECT_FALSE(QM::IsInSoftware());
    EXPECT_EQ(CString(L"0"), Stored(L"*InQMSoftWare"));
}

TEST_F(CadMenu, RestoreWithoutSavedMenuFileEmptiesIt)
{
    CString profile;
    ASSERT_TRUE(QM::SRCADMenu(false, profile));
    EXPECT_EQ(CString(), qmtest::GetRegValue(HKEY_CURRENT_USER, m_key + L"General Configuration", L"MenuFile"));
}

TEST_F(CadMenu, RestoreDropsMarkedGroupsAndPutsSavedOnesBack)
{
    const CString group3 = Menu(L"Group3");
    WritePrivateProfileStringW(kProfile, L"*MenuPathName", L"C:\\Saved\\acad", m_store);
    WritePrivateProfileStringW(kProfile, L"Group1", L"TVMENU C:\\Saved\\tv", m_store);
    QM::CADMenuSetting().SetFilePath(m_store);
    qmtest::SetRegValue(HKEY_CURRENT_USER, m_key + L"Menus", L"Group4", L"tvMenu d:\\tv\\tv");
    CString profile;
    ASSERT_TRUE(QM::SRCADMenu(false, profile));
    EXPECT_EQ(CString(L"C:\\Saved\\acad"),
              qmtest::GetRegValue(HKEY_CURRENT_USER, m_key + L"General Configuration", L"MenuFile"));
    EXPECT_EQ(CString(L"TVMENU C:\\Saved\\tv"), Menu(L"Group1"));   // saved text wins over its marker
    EXPECT_EQ(CString(), Menu(L"Group2"));                          // "QMSuite" matches "qmsuite"
    EXPECT_EQ(group3, Menu(L"Group3"));
    EXPECT_EQ(CString(), Menu(L"Group4"));
    DWORD count = 0, size = sizeof(count);
    EXPECT_EQ(ERROR_SUCCESS,
              RegGetValueW(HKEY_CURRENT_USER, m_key + L"Menus", L"Count", RRF_RT_REG_DWORD, nullptr, &count, &size));
    EXPECT_EQ(3u, count);
}

// A fresh process whose start-up file has no menu switches.
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
    EXPECT_FALSE(QM::EnableSaveCadMenu());   // read once, kept
    qmtest::ChildReached();
}

TEST(CadMenuInFreshProcess, MissingSwitchRefusesAndChangesNothing)
{
    EXPECT_EQ(0, qmtest::RunInChild("CadMenuChild.MissingSwitchRefusesAndChangesNothing"));
}

}  // namespace
