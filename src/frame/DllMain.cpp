// DllMain.cpp - the library's entry point.
#include "frame/Library.h"

namespace {

HINSTANCE& ModuleHandle()
{
    static HINSTANCE handle = nullptr;
    return handle;
}

}  // namespace

namespace QM {

HINSTANCE LibraryHandle()
{
    return ModuleHandle();
}

AFX_EXTENSION_MODULE& LibraryModule()
{
    static AFX_EXTENSION_MODULE module;
    return module;
}

}  // namespace QM

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, LPVOID /*reserved*/)
{
    // Thread notifications are never wanted, whatever the reason this time.
    DisableThreadLibraryCalls(instance);

    if (reason == DLL_PROCESS_ATTACH) {
        ModuleHandle() = instance;
        if (!AfxInitExtensionModule(QM::LibraryModule(), instance))
            return FALSE;
        // The chain owns the object and frees it at AfxTermExtensionModule.
        new CDynLinkLibrary(QM::LibraryModule());
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(QM::LibraryModule());
    }
    return TRUE;
}
