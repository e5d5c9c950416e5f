// CadFixture.h - what an installed CAD host and an installed suite leave
// behind, laid out in a temporary folder and the test prefix's registry,
// and the start-up settings bound to an INIT.ini that points at them.
//
//   static auto* env = ::testing::AddGlobalTestEnvironment(new qmtest::CadEnvironment);
//   CString dir;
//   QM::GetAcadPath(dir);   // == qmtest::Cad().Folder(L"AutoCAD 2005\\")
//
// One installation serves a whole test executable: the library keeps some
// answers for the life of the process (install and local folders, the
// application name, the menu switches), so the registry and the settings
// must be in place before the first call and stay so. Tests that need a
// different start run in a child process (ChildProcess.h).
//
// Layout below Root():
//   AutoCAD 2005\      release 16.1, product ACAD-301:804 (machine's CurVer): Acad.exe, Support, Fonts, express
//   AutoCAD 2005 EN\   release 16.1, product ACAD-301:409 (user's CurVer): no Acad.exe
//   AutoCAD 2002\      release 15.0, product ACAD-1:804 (CurVer), location with trailing backslashes
//   R14\               release 14.0, product ACAD-1:409, no CurVer
//   Suite\             install folder (Bin, Support, Sys); Local\Data\ local folder; Work\W\X work folder (absent)
#pragma once
#include <QMUtil.h>
#include <config/INISetting.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "support/RegGuard.h"
#include "support/TempDir.h"

#include <ostream>

// Failure messages show the text rather than its address.
inline void PrintTo(const CString& text, std::ostream* out)
{
    char buffer[4096] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, buffer, sizeof(buffer) - 1, nullptr, nullptr);
    *out << '"' << buffer << '"';
}

namespace qmtest {

extern const wchar_t kSoftKey[];      // SOFTWARE\Tarvel\QMTestSuite\9.1
extern const wchar_t kR161[];         // Software\Autodesk\AutoCAD\R16.1
extern const wchar_t kProfileName[];  // <<QM Test>>
extern const wchar_t kProfileKey[];   // the active profile's key as the library builds it

class CadInstallation
{
public:
    CadInstallation();
    ~CadInstallation();
    // The temporary root, ending with a backslash.
    const CString& Root() const { return m_dir.Path(); }
    // Root() + `relative`.
    CString Folder(const wchar_t* relative) const { return Root() + relative; }
    CString IniPath() const { return Root() + L"INIT.ini"; }
    const TempDir& Dir() const { return m_dir; }

private:
    void LayOutFolders();
    void WriteRegistry();
    void WriteIni();

    TempDir m_dir;
    std::vector<std::unique_ptr<RegGuard>> m_guards;
    CString m_previousIni;
};

// The installation of this test executable (set up by CadEnvironment).
CadInstallation& Cad();

class CadEnvironment : public ::testing::Environment
{
public:
    void SetUp() override;
    void TearDown() override;
};

// Changes one start-up setting in the bound file for a scope, re-reads the
// file, and puts the old text back (or removes the key it added).
class SettingOverride
{
public:
    SettingOverride(const wchar_t* key, const wchar_t* value, const wchar_t* section);
    ~SettingOverride();

private:
    CString m_key, m_section, m_old;
    bool m_existed = false;
};

}  // namespace qmtest
