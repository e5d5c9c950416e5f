// LibraryCopy.h - loads a fresh copy of QMUtil.dll from another folder, so
// that its load sequence runs once more against prepared start-up files.
//
//   qmtest::TempDir dir;
//   dir.WriteFile(L"INIT.ini", "[IniFilePath]\r\nSYS=a.ini\r\n");
//   qmtest::LibraryCopy copy(dir.Path());
//   auto sysPath = copy.Proc<CString()>("_ZN2QM14SysINIFilePathEv");
//   sysPath();   // "a.ini"
//
// The copy has its own process-wide state; the test's own QMUtil.dll is not
// touched. Exports are looked up by their mangled names.
#pragma once
#include <QMUtil.h>

namespace qmtest {

class LibraryCopy
{
public:
    // Copies the QMUtil.dll this test uses into `folder` and loads it there.
    explicit LibraryCopy(const CString& folder);
    ~LibraryCopy();
    LibraryCopy(const LibraryCopy&) = delete;
    LibraryCopy& operator=(const LibraryCopy&) = delete;

    HMODULE Module() const { return m_module; }

    // The export `name` as a function of type F, or null.
    template <class F>
    F* Proc(const char* name) const
    {
        return reinterpret_cast<F*>(reinterpret_cast<void*>(GetProcAddress(m_module, name)));
    }

private:
    HMODULE m_module = nullptr;
};

}  // namespace qmtest
