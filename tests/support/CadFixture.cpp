// CadFixture.cpp - a CAD host and a suite installation for the tests.
#include "support/CadFixture.h"

#include "support/ChildProcess.h"

#include <memory>
#include <tuple>

namespace qmtest {

CadInstallation::CadInstallation()
{
    for (const wchar_t* exe : {L"AutoCAD 2005\\Acad.exe", L"AutoCAD 2002\\Acad.exe", L"R14\\Acad.exe"})
        m_dir.WriteFile(exe, "MZ");
    for (const wchar_t* folder : {L"AutoCAD 2005\\Fonts", L"AutoCAD 2005\\express", L"AutoCAD 2005 EN\\Support",
                                  L"AutoCAD 2002\\Support", L"Suite\\Bin", L"Suite\\Support", L"Suite\\Sys",
                                  L"Local\\Data"})
        QM::MkMDir(Folder(folder));
    m_dir.WriteFile(L"AutoCAD 2005\\Support\\acad.mnu", "***MENUGROUP=ACAD\r\n");

    // A clean start whatever the prefix held; the guards put it back.
    const HKEY lm = HKEY_LOCAL_MACHINE, cu = HKEY_CURRENT_USER;
    const CString suite = L"SOFTWARE\\Tarvel\\QMTestSuite", r161 = kR161, r150 = L"Software\\Autodesk\\AutoCAD\\R15.0",
                  r140 = L"Software\\Autodesk\\AutoCAD\\R14.0", profile = r161 + L"\\Profiles\\" + kProfileName;
    const std::pair<HKEY, CString> keys[] = {{lm, suite}, {cu, suite}, {lm, r161}, {cu, r161}, {lm, r150}, {lm, r140}};
    for (const auto& [root, key] : keys) {
        m_guards.emplace_back(root, key);
        RegDeleteTreeW(root, key);
    }
    // Blanks and doubled backslashes as hand-edited setups leave them.
    const std::tuple<HKEY, CString, const wchar_t*, CString> values[] = {
        {lm, kSoftKey, L"InstallDir", L"  " + Folder(L"Suite\\\\") + L"  "},
        {cu, kSoftKey, L"LocalDir", Folder(L"Local\\")},
        {cu, kSoftKey, L"WorkDir", Folder(L"Work\\W\\X\\")},
        {lm, r161, L"CurVer", L"ACAD-301:804"},
        {lm, r161 + L"\\ACAD-301:804", L"AcadLocation", Folder(L"AutoCAD 2005\\\\")},
        {lm, r161 + L"\\ACAD-301:409", L"AcadLocation", Folder(L"AutoCAD 2005 EN")},
        {cu, r161, L"CurVer", L"ACAD-301:409"},
        {lm, r150, L"CurVer", L"ACAD-1:804"},
        {lm, r150 + L"\\ACAD-1:804", L"AcadLocation", Folder(L"AutoCAD 2002\\\\\\")},
        {lm, r140 + L"\\ACAD-1:409", L"AcadLocation", Folder(L"R14")},
        {cu, r161 + L"\\Profiles", L"", kProfileName},
        {cu, profile + L"\\General Configuration", L"MenuFile", Folder(L"AutoCAD 2005\\Support\\acad")},
        {cu, profile + L"\\General", L"ACAD", Folder(L"AutoCAD 2005\\Support;") + Folder(L"AutoCAD 2005\\Fonts;")},
        {cu, profile + L"\\Menus", L"Group1", L"ACAD " + Folder(L"AutoCAD 2005\\Support\\acad")},
        {cu, profile + L"\\Menus", L"Group2", L"QMSuite " + Folder(L"Suite\\Support\\QMSuite")},
        {cu, profile + L"\\Menus", L"Group3", L"EXPRESS " + Folder(L"AutoCAD 2005\\express\\acetmain")},
    };
    for (const auto& [root, key, name, value] : values)
        SetRegValue(root, key, name, value);
    const DWORD count = 3;
    RegSetKeyValueW(cu, profile + L"\\Menus", L"Count", REG_DWORD, &count, sizeof(count));

    // The tests work on a copy of the start-up file beside the library.
    wchar_t exe[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    CopyFileW(QM::GetFilePath(exe) + L"INIT.ini", Folder(L"INIT.ini"), FALSE);
    m_previousIni = QM::CInitSetting().GetFilePath();
    QM::CInitSetting().SetFilePath(Folder(L"INIT.ini"));
}

CadInstallation::~CadInstallation() { QM::CInitSetting().SetFilePath(m_previousIni); }

namespace {
std::unique_ptr<CadInstallation> g_installation;
}

CadInstallation& Cad() { return *g_installation; }

void CadEnvironment::SetUp()
{
    if (!IsChildProcess())
        g_installation = std::make_unique<CadInstallation>();
}

void CadEnvironment::TearDown() { g_installation.reset(); }

SettingOverride::SettingOverride(const wchar_t* key, const wchar_t* value, const wchar_t* section)
    : m_key(key), m_section(section)
{
    const CString path = QM::CInitSetting().GetFilePath();
    m_old = Profile(section, key, path);
    m_existed = m_old != L"<absent>";
    WritePrivateProfileStringW(section, key, value, path);
    // Re-read: a new key written through the cache would make it forget the section's others.
    QM::CInitSetting().SetFilePath(path);
}

SettingOverride::~SettingOverride()
{
    const CString path = QM::CInitSetting().GetFilePath();
    WritePrivateProfileStringW(m_section, m_key, m_existed ? m_old.GetString() : nullptr, path);
    QM::CInitSetting().SetFilePath(path);
}

EnvOverride::EnvOverride(const wchar_t* name, const wchar_t* value) : m_name(name), m_old(GetEnv(name))
{
    SetEnvironmentVariableW(name, value);
}

EnvOverride::~EnvOverride() { SetEnvironmentVariableW(m_name, m_old == L"<missing>" ? nullptr : m_old.GetString()); }

CString GetEnv(const wchar_t* name)
{
    static wchar_t value[32768];
    return GetEnvironmentVariableW(name, value, ARRAYSIZE(value)) > 0 ? CString(value) : CString(L"<missing>");
}

}  // namespace qmtest
