// CadFixture.h - a CAD host and suite installed in a temporary folder and the
// prefix's registry, for a whole test executable (the library caches answers):
//   static auto* env = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);
// Layout: "AutoCAD 2005" (16.1, ACAD-301:804, machine CurVer), "AutoCAD 2005 EN"
// (ACAD-301:409, user CurVer, no Acad.exe), "AutoCAD 2002" (15.0), "R14" (no
// CurVer), Suite\ (Bin, Support, Sys), Local\Data\, Work\W\X (absent).
#pragma once
#include <QMUtil.h>
#include <gtest/gtest.h>

#include <list>

#include "support/RegGuard.h"
#include "support/TempDir.h"

namespace qmtest {

inline const wchar_t kSoftKey[] = L"SOFTWARE\\Tarvel\\QMTestSuite\\9.1";
inline const wchar_t kR161[] = L"Software\\Autodesk\\AutoCAD\\R16.1";
inline const wchar_t kProfileName[] = L"<<QM Test>>";
// The active profile's key as the library builds it.
inline const wchar_t kProfileKey[] = L"Software\\Autodesk\\AutoCAD\\R16.1\\\\Profiles\\<<QM Test>>\\";

class CadInstallation
{
public:
    CadInstallation();
    ~CadInstallation();
    CString Folder(const wchar_t* relative) const { return m_dir.Path() + relative; }
    const TempDir& Dir() const { return m_dir; }

private:
    TempDir m_dir;
    std::list<RegGuard> m_guards;
    CString m_previousIni;
};

// The installation of this test executable (set up by CadEnvironment).
CadInstallation& Cad();

class CadEnvironment : public ::testing::Environment
{
    void SetUp() override;
    void TearDown() override;
};

// One start-up setting of the bound file for a scope (null removes it).
class SettingOverride
{
public:
    SettingOverride(const wchar_t* key, const wchar_t* value, const wchar_t* section);
    ~SettingOverride();

private:
    CString m_key, m_section, m_old;
    bool m_existed = false;
};

// One environment variable of this process for a scope (null removes it).
class EnvOverride
{
public:
    EnvOverride(const wchar_t* name, const wchar_t* value);
    ~EnvOverride();

private:
    CString m_name, m_old;
};

// An environment variable's value, or "<missing>".
CString GetEnv(const wchar_t* name);

}  // namespace qmtest
