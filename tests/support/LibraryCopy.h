// LibraryCopy.h - a fresh copy of QMUtil.dll loaded from another folder, with
// its own process-wide state, so its load sequence runs again there.
//   qmtest::LibraryCopy copy(dir.Path());  CString sys = copy.Proc<CString()>("_ZN2QM14SysINIFilePathEv")();
#pragma once
#include <QMUtil.h>

namespace qmtest {

class LibraryCopy
{
public:
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
