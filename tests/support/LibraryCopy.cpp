// LibraryCopy.cpp - a second, independently loaded QMUtil.dll.
#include "support/LibraryCopy.h"

namespace qmtest {

LibraryCopy::LibraryCopy(const CString& folder)
{
    wchar_t original[MAX_PATH] = L"";
    GetModuleFileNameW(GetModuleHandleW(L"QMUtil.dll"), original, MAX_PATH);
    const CString copy = folder + L"QMUtil.dll";
    if (CopyFileW(original, copy, FALSE))
        m_module = LoadLibraryW(copy);
}

LibraryCopy::~LibraryCopy()
{
    if (m_module != nullptr)
        FreeLibrary(m_module);
}

}  // namespace qmtest
