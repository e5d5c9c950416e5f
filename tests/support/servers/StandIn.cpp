// StandIn.cpp - the class objects and the registration of the stand-in
// servers (regsvr32 qmstandins.dll). The test process holds the DLL loaded,
// so the recorded calls outlive the objects.
#include "StandIn.h"

namespace {

struct ServedClass
{
    const wchar_t* progId;
    CLSID clsid;
    standin::Factory factory;
};
ServedClass g_classes[] = {
    {L"ADODB.Connection", {0x79fdff56, 0xc9a0, 0x4574, {0x99, 0x83, 0x35, 0x64, 0xd8, 0x86, 0x55, 0xb6}},
     standin::Factory(standin::MakeConnection)},
    {L"ADODB.Recordset", {0x79fdff56, 0xc9a0, 0x4574, {0x99, 0x83, 0x35, 0x64, 0xd8, 0x86, 0x55, 0xb7}},
     standin::Factory(standin::MakeRecordset)},
    {L"Excel.Application", {0xd9f383e8, 0xbb06, 0x4129, {0xad, 0x2b, 0xd5, 0x37, 0xb5, 0xae, 0x28, 0x30}},
     standin::Factory(standin::MakeExcel)},
};
HMODULE g_module = nullptr;

bool SetKey(const std::wstring& path, const wchar_t* name, const std::wstring& value)
{
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, path.c_str(), name, REG_SZ, value.c_str(),
                           static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, void*)
{
    if (reason == DLL_PROCESS_ATTACH)
        g_module = module;
    return TRUE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object)
{
    for (ServedClass& c : g_classes)
        if (IsEqualCLSID(clsid, c.clsid))
            return c.factory.QueryInterface(iid, object);
    return *object = nullptr, CLASS_E_CLASSNOTAVAILABLE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer()
{
    wchar_t path[MAX_PATH] = {}, clsid[40] = {};
    GetModuleFileNameW(g_module, path, MAX_PATH);
    for (const ServedClass& c : g_classes) {
        StringFromGUID2(c.clsid, clsid, ARRAYSIZE(clsid));
        const std::wstring key = std::wstring(L"CLSID\\") + clsid + L"\\InprocServer32";
        if (!SetKey(key, nullptr, path) || !SetKey(key, L"ThreadingModel", L"Both") ||
            !SetKey(std::wstring(c.progId) + L"\\CLSID", nullptr, clsid))
            return E_FAIL;
    }
    return S_OK;
}
