// StandIn.cpp - the class objects and the registration of the stand-in
// servers (regsvr32 qmstandins.dll).
#include "StandIn.h"

namespace standin {
namespace {

struct ServedClass
{
    const wchar_t* progId;
    CLSID clsid;
};
const ServedClass kClasses[] = {
    {L"ADODB.Connection", {0x79fdff56, 0xc9a0, 0x4574, {0x99, 0x83, 0x35, 0x64, 0xd8, 0x86, 0x55, 0xb6}}},
    {L"ADODB.Recordset", {0x79fdff56, 0xc9a0, 0x4574, {0x99, 0x83, 0x35, 0x64, 0xd8, 0x86, 0x55, 0xb7}}},
    {L"Excel.Application", {0xd9f383e8, 0xbb06, 0x4129, {0xad, 0x2b, 0xd5, 0x37, 0xb5, 0xae, 0x28, 0x30}}},
};

HMODULE g_module = nullptr;

LSTATUS SetKey(const std::wstring& path, const wchar_t* name, const std::wstring& value)
{
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, path.c_str(), name, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

}  // namespace
}  // namespace standin

using namespace standin;

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*)
{
    if (reason == DLL_PROCESS_ATTACH)
        g_module = module;
    return TRUE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    static Factory factories[] = {Factory(MakeConnection), Factory(MakeRecordset), Factory(MakeExcel)};   // as kClasses
    for (size_t i = 0; i < ARRAYSIZE(kClasses); ++i)
        if (IsEqualCLSID(clsid, kClasses[i].clsid))
            return factories[i].QueryInterface(iid, object);
    return *object = nullptr, CLASS_E_CLASSNOTAVAILABLE;
}

// The recorded calls stay readable after the last object is gone.
extern "C" __declspec(dllexport) HRESULT WINAPI DllCanUnloadNow()
{
    return S_FALSE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer()
{
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(g_module, path, MAX_PATH);
    for (const ServedClass& c : kClasses) {
        wchar_t clsid[40] = {};
        StringFromGUID2(c.clsid, clsid, ARRAYSIZE(clsid));
        const std::wstring key = std::wstring(L"CLSID\\") + clsid;
        if (SetKey(key + L"\\InprocServer32", nullptr, path) != ERROR_SUCCESS ||
            SetKey(key + L"\\InprocServer32", L"ThreadingModel", L"Both") != ERROR_SUCCESS ||
            SetKey(std::wstring(c.progId) + L"\\CLSID", nullptr, clsid) != ERROR_SUCCESS)
            return E_FAIL;
    }
    return S_OK;
}
