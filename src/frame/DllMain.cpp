// DllMain.cpp - the library's entry point and its load sequence.
#include "config/INISetting.h"
#include "config/ProcessSettings.h"
#include "env/Folders.h"
#include "env/PathMacros.h"
#include "frame/DebugTrace.h"
#include "frame/Library.h"
#include "fs/PathParts.h"

namespace {

HINSTANCE& ModuleHandle()
{
    static HINSTANCE handle = nullptr;
    return handle;
}

const wchar_t kNotConfigured[] = L"INIT.INI文件中没有设置";

// Binds the start-up settings beside the library: "Sys\INIT.ini" wins over
// "INIT.ini". The library's folder is the folder part of its own file name.
void BindStartupSettings(HINSTANCE instance)
{
    wchar_t file[259] = L"";
    GetModuleFileNameW(instance, file, 259);
    const CString folder = QM::GetFilePath(file);
    CString ini;
    ini.Format(L"%sSys\\INIT.ini", folder.GetString());
    if (!QM::IsExist(ini))
        ini.Format(L"%sINIT.ini", folder.GetString());
    QM::CInitSetting().SetFilePath(ini);
}

void BindConfiguredSettings()
{
    INISetting& init = QM::CInitSetting();
    QM::SetSysINIFilePath(QM::FixSystemDir(init.GetSetting(L"SYS", kNotConfigured, L"IniFilePath")));
    QM::SetUserINIFilePath(QM::FixSystemDir(init.GetSetting(L"User", kNotConfigured, L"IniFilePath")));
    CString work;
    if (QM::GetWorkDir(work, true))
        QM::CADMenuSetting().SetFilePath(work + init.GetSetting(L"SaveFileName", L"ACADMenu.INI", L"CADMenu"));
}

// Every switch is read first, which fixes it for the process, and then
// stored again. The CAD dialog switch takes the EXE dialog switch's value at
// every load, as the suite expects.
void FixDebugSwitches()
{
    const bool commandLineToExe = GetDSCommandLineToEXE();
    const bool commandLineToCad = GetDSCommandLineToCAD();
    const bool dialogToExe = GetDSDialogToEXE();
    GetDSDialogToCAD();
    const bool macroToExe = GetDSMacroToEXE();
    const bool macroToCad = GetDSMacroToCAD();
    const bool formatLspList = GetDSFormatLspList();

    SetDSCommandLineToEXE(commandLineToExe);
    SetDSCommandLineToCAD(commandLineToCad);
    SetDSDialogToEXE(dialogToExe);
    SetDSDialogToCAD(dialogToExe);
    SetDSMacroToEXE(macroToExe);
    SetDSMacroToCAD(macroToCad);
    SetDSFormatLspList(formatLspList);
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
        BindStartupSettings(instance);
        BindConfiguredSettings();
        FixDebugSwitches();
    } else if (reason == DLL_PROCESS_DETACH) {
        AfxTermExtensionModule(QM::LibraryModule());
    }
    return TRUE;
}
