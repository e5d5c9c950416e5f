// Module.h - the extension-module record and the resource-handle switch.
//
//   static AFX_EXTENSION_MODULE s_module;
//   AfxInitExtensionModule(s_module, hInstance);   // in DllMain
//   new CDynLinkLibrary(s_module);                  // join the resource chain
//
//   CResourceSwitch use(s_module.hResource);        // for one scope, strings
//   text.LoadString(1);                             // load from the library
//
// The module state's resource handle starts as the executable's own handle,
// as in an MFC application; CString::LoadString searches it first and then
// every module that joined the chain through a CDynLinkLibrary.
#pragma once
#include "QMExport.h"

struct AFX_EXTENSION_MODULE
{
    BOOL bInitialized = FALSE;
    HMODULE hModule = nullptr;
    HMODULE hResource = nullptr;
};

// Fills the record for `module`; FALSE when `module` is not a loaded module.
QM_API BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module);
// Leaves the resource chain and clears the record.
QM_API void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL all = FALSE);

QM_API HINSTANCE AfxGetResourceHandle();
QM_API void AfxSetResourceHandle(HINSTANCE resource);
// The first module (resource handle, then the chain) holding string `id`.
QM_API HINSTANCE AfxFindStringResourceHandle(UINT id);

// Puts an extension module on the chain that resource look-ups search.
class QM_API CDynLinkLibrary
{
public:
    explicit CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system = FALSE);
    CDynLinkLibrary(const CDynLinkLibrary&) = delete;
    CDynLinkLibrary& operator=(const CDynLinkLibrary&) = delete;
    virtual ~CDynLinkLibrary();

    HMODULE m_hModule;
    HMODULE m_hResource;
    BOOL m_bSystem;
    CDynLinkLibrary* m_pNextDLL = nullptr;
};

// Switches the resource handle for one scope and restores it afterwards.
class QM_API CResourceSwitch
{
public:
    explicit CResourceSwitch(HINSTANCE resource);
    CResourceSwitch(const CResourceSwitch&) = delete;
    CResourceSwitch& operator=(const CResourceSwitch&) = delete;
    ~CResourceSwitch();

private:
    HINSTANCE m_previous;
};
