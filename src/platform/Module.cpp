// Module.cpp - module state: resource handle and the extension-module chain.
#include "platform/Module.h"

namespace {

struct ModuleState
{
    HINSTANCE resource = GetModuleHandleW(nullptr);
    CDynLinkLibrary* chain = nullptr;
};

ModuleState& State()
{
    static ModuleState state;
    return state;
}

bool HasString(HINSTANCE module, UINT id)
{
    const wchar_t* text = nullptr;
    return module != nullptr &&
           LoadStringW(module, id, reinterpret_cast<LPWSTR>(&text), 0) > 0;
}

void Unchain(HMODULE module)
{
    for (CDynLinkLibrary** link = &State().chain; *link != nullptr;) {
        CDynLinkLibrary* dll = *link;
        if (dll->m_hModule == module) {
            *link = dll->m_pNextDLL;
            dll->m_pNextDLL = nullptr;
            delete dll;
        } else {
            link = &dll->m_pNextDLL;
        }
    }
}

}  // namespace

BOOL AfxInitExtensionModule(AFX_EXTENSION_MODULE& state, HMODULE module)
{
    wchar_t name[MAX_PATH];
    if (module == nullptr || GetModuleFileNameW(module, name, MAX_PATH) == 0)
        return FALSE;
    state.hModule = module;
    state.hResource = module;
    state.bInitialized = TRUE;
    return TRUE;
}

void AfxTermExtensionModule(AFX_EXTENSION_MODULE& state, BOOL /*all*/)
{
    if (!state.bInitialized)
        return;
    Unchain(state.hModule);
    state = AFX_EXTENSION_MODULE{};
}

HINSTANCE AfxGetResourceHandle()
{
    return State().resource;
}

void AfxSetResourceHandle(HINSTANCE resource)
{
    State().resource = resource;
}

HINSTANCE AfxFindStringResourceHandle(UINT id)
{
    if (HasString(State().resource, id))
        return State().resource;
    for (CDynLinkLibrary* dll = State().chain; dll != nullptr; dll = dll->m_pNextDLL)
        if (!dll->m_bSystem && HasString(dll->m_hResource, id))
            return dll->m_hResource;
    return State().resource;
}

CDynLinkLibrary::CDynLinkLibrary(AFX_EXTENSION_MODULE& state, BOOL system)
    : m_hModule(state.hModule), m_hResource(state.hResource), m_bSystem(system)
{
    m_pNextDLL = State().chain;
    State().chain = this;
}

CDynLinkLibrary::~CDynLinkLibrary() = default;

CResourceSwitch::CResourceSwitch(HINSTANCE resource) : m_previous(AfxGetResourceHandle())
{
    AfxSetResourceHandle(resource);
}

CResourceSwitch::~CResourceSwitch()
{
    AfxSetResourceHandle(m_previous);
}
