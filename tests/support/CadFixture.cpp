// CadFixture.cpp - a CAD host and a suite installation for the tests.
#include "support/CadFixture.h"

#include "support/ChildProcess.h"

namespace qmtest {

const wchar_t kSoftKey[] = L"SOFTWARE\\Tarvel\\QMTestSuite\\9.1";
const wchar_t kR161[] = L"Software\\Autodesk\\AutoCAD\\R16.1";
const wchar_t kProfileName[] = L"<<QM Test>>";
const wchar_t kProfileKey[] = L"Software\\Autodesk\\AutoCAD\\R16.1\\\\Profiles\\<<QM Test>>\\";

namespace {

CadInstallation* g_installation = nullptr;

void Touch(const TempDir& dir, const wchar_t* name)
{
    dir.WriteFile(name, "MZ");
}

}  // namespace

CadInstallation::CadInstallation()
{
    LayOutFolders();
    WriteRegistry();
    WriteIni();
    m_previousIni = QM::CInitSetting().GetFilePath();
    QM::CInitSetting().SetFilePath(IniPath());
}

CadInstallation::~CadInstallation()
{
    // A process that had no start-up file keeps the fixture's values cached;
    // the file itself goes with the folder.
    QM::CInitSetting().SetFilePath(m_previousIni);
    m_guards.clear();
}

void CadInstallation::LayOutFolders()
{
    for (const wchar_t* exe : {L"AutoCAD 2005\\Acad.exe", L"AutoCAD 2002\\Acad.exe", L"R14\\Acad.exe"})
        Touch(m_dir, exe);
    for (const wchar_t* folder :
         {L"AutoCAD 2005\\Support", L"AutoCAD 2005\\Fonts", L"AutoCAD 2005\\express", L"AutoCAD 2005 EN",
          L"AutoCAD 2005 EN\\Support", L"AutoCAD 2002\\Support", L"Suite", L"Suite\\Bin", L"Suite\\Support",
          L"Suite\\Sys", L"Local", L"Local\\Data"})
        CreateDirectoryW(Folder(folder), nullptr);
    m_dir.WriteFile(L"AutoCAD 2005\\Support\\acad.mnu", "***MENUGROUP=ACAD\r\n");
}

void CadInstallation::WriteRegistry()
{
    const HKEY lm = HKEY_LOCAL_MACHINE, cu = HKEY_CURRENT_USER;
    for (auto guard : {std::make_pair(lm, L"SOFTWARE\\Tarvel\\QMTestSuite"),
                       std::make_pair(cu, L"SOFTWARE\\Tarvel\\QMTestSuite"), std::make_pair(lm, kR161),
                       std::make_pair(cu, kR161), std::make_pair(lm, L"Software\\Autodesk\\AutoCAD\\R15.0"),
                       std::make_pair(lm, L"Software\\Autodesk\\AutoCAD\\R14.0")})
        m_guards.push_back(std::make_unique<RegGuard>(guard.first, guard.second));
    for (auto guard : {std::make_pair(lm, kR161), std::make_pair(cu, kR161),
                       std::make_pair(lm, L"Software\\Autodesk\\AutoCAD\\R15.0"),
                       std::make_pair(lm, L"Software\\Autodesk\\AutoCAD\\R14.0")})
        RegDeleteTreeW(guard.first, guard.second);   // a clean release, whatever was there (restored later)

    // The suite's installer: the install folder with the blanks and doubled
    // backslash that a hand-edited setup script leaves.
    SetRegValue(lm, kSoftKey, L"InstallDir", L"  " + Folder(L"Suite\\\\") + L"  ");
    SetRegValue(cu, kSoftKey, L"LocalDir", Folder(L"Local\\"));
    SetRegValue(cu, kSoftKey, L"WorkDir", Folder(L"Work\\W\\X\\"));

    // The host's installer: two products of release 16.1, the user's current
    // one without its executable (an uninstalled language pack).
    const CString r161 = kR161;
    SetRegValue(lm, r161, L"CurVer", L"ACAD-301:804");
    SetRegValue(lm, r161 + L"\\ACAD-301:804", L"AcadLocation", Folder(L"AutoCAD 2005\\\\"));
    SetRegValue(lm, r161 + L"\\ACAD-301:409", L"AcadLocation", Folder(L"AutoCAD 2005 EN"));
    SetRegValue(cu, r161, L"CurVer", L"ACAD-301:409");
    SetRegValue(lm, L"Software\\Autodesk\\AutoCAD\\R15.0", L"CurVer", L"ACAD-1:804");
    SetRegValue(lm, L"Software\\Autodesk\\AutoCAD\\R15.0\\ACAD-1:804", L"AcadLocation",
                Folder(L"AutoCAD 2002\\\\\\"));
    SetRegValue(lm, L"Software\\Autodesk\\AutoCAD\\R14.0\\ACAD-1:409", L"AcadLocation", Folder(L"R14"));

    // The active profile, where the library reads it.
    const CString profiles = r161 + L"\\Profiles";
    SetRegValue(cu, profiles, L"", kProfileName);
    const CString profile = profiles + L"\\" + kProfileName;
    SetRegValue(cu, profile + L"\\General Configuration", L"MenuFile", Folder(L"AutoCAD 2005\\Support\\acad"));
    SetRegValue(cu, profile + L"\\General", L"ACAD",
                Folder(L"AutoCAD 2005\\Support;") + Folder(L"AutoCAD 2005\\Fonts;"));
    SetRegValue(cu, profile + L"\\Menus", L"Group1", L"ACAD " + Folder(L"AutoCAD 2005\\Support\\acad"));
    SetRegValue(cu, profile + L"\\Menus", L"Group2", L"QMSuite " + Folder(L"Suite\\Support\\QMSuite"));
    SetRegValue(cu, profile + L"\\Menus", L"Group3", L"EXPRESS " + Folder(L"AutoCAD 2005\\express\\acetmain"));
    SetRegDword(cu, profile + L"\\Menus", L"Count", 3);
}

// The suite's start-up file is the one beside the library, as installed: the
// library read it at load, before any test ran, and cached what it keeps for
// the process. The tests work on a copy so overrides never touch the build.
void CadInstallation::WriteIni()
{
    wchar_t exe[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, exe, MAX_PATH);
    CopyFileW(QM::GetFilePath(exe) + L"INIT.ini", IniPath(), FALSE);
}

CadInstallation& Cad()
{
    return *g_installation;
}

void CadEnvironment::SetUp()
{
    // A child process sets up its own start; see ChildProcess.h.
    if (!IsChildProcess())
        g_installation = new CadInstallation;
}

void CadEnvironment::TearDown()
{
    delete g_installation;
    g_installation = nullptr;
}

SettingOverride::SettingOverride(const wchar_t* key, const wchar_t* value, const wchar_t* section)
    : m_key(key), m_section(section)
{
    const CString path = QM::CInitSetting().GetFilePath();
    wchar_t old[2048] = {};
    m_existed = GetPrivateProfileStringW(section, key, L"\x01", old, ARRAYSIZE(old), path) != 1 || old[0] != 1;
    m_old = old;
    WritePrivateProfileStringW(section, key, value, path);
    // Re-read: a new key written through the cache would make it forget the
    // section's other keys until the next bind.
    QM::CInitSetting().SetFilePath(path);
}

SettingOverride::~SettingOverride()
{
    const CString path = QM::CInitSetting().GetFilePath();
    WritePrivateProfileStringW(m_section, m_key, m_existed ? m_old.GetString() : nullptr, path);
    QM::CInitSetting().SetFilePath(path);
}

}  // namespace qmtest
