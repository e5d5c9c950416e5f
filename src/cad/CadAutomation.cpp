// CadAutomation.cpp - the host's folder through its automation server, for
// machines whose registry entries were lost or never written (network and
// "portable" installations). The lookup runs on a worker thread so that a
// slow server start does not freeze the caller's windows.
#include "cad/CadDiscovery.h"

#include "config/INISetting.h"
#include "fs/PathParts.h"
#include "platform/ole/OleDispatchDriver.h"

#include <algorithm>
#include <memory>

namespace QM {
namespace {

// The worker's one failure code; any other exit code means the folder is set.
const DWORD kWorkerFailed = 1;

struct AutomationJob
{
    CString progId;              // "AutoCAD.Application.<release>" or "{clsid}"
    wchar_t folder[261] = {};    // the host's folder, filled by the worker
};

void SaveDrawing(const COleDispatchDriver& drawing)
{
    wchar_t temp[MAX_PATH + 1] = {};
    GetTempPathW(MAX_PATH, temp);
    CString file;
    file.Format(L"%sQmSaved.dwg", temp);
    static const BYTE parms[] = VTS_BSTR;
    drawing.InvokeHelper(drawing.GetIDOfName(L"SaveAs"), DISPATCH_METHOD, VT_EMPTY, nullptr, parms, file.GetString());
}

// Saving makes the host finish whatever it was loading before its folder is
// asked. A drawing that cannot be saved (read-only, a full disk, a host
// without SaveAs) says nothing about the folder, so the result is not used.
void SaveActiveDrawing(const COleDispatchDriver& app)
{
    try {
        LPDISPATCH doc = nullptr;
        app.GetProperty(app.GetIDOfName(L"ActiveDocument"), VT_DISPATCH, &doc);
        if (doc != nullptr)
            SaveDrawing(COleDispatchDriver(doc));
    } catch (CException* e) {
        e->Delete();
    }
}

bool ReadHostFolder(const COleDispatchDriver& app, AutomationJob& job)
{
    COleVariant path;
    app.GetProperty(app.GetIDOfName(L"Path"), VT_VARIANT, static_cast<VARIANT*>(&path));
    const bool fits = path.vt == VT_BSTR && path.bstrVal != nullptr && SysStringLen(path.bstrVal) > 0 &&
                      SysStringLen(path.bstrVal) < ARRAYSIZE(job.folder);
    if (fits)
        lstrcpynW(job.folder, path.bstrVal, ARRAYSIZE(job.folder));
    return fits;
}

// A failed call of the host's server fails the look-up.
bool QueryHost(AutomationJob& job)
{
    COleDispatchDriver app;
    if (!app.CreateDispatch(job.progId))
        return false;
    try {
        SaveActiveDrawing(app);
        return ReadHostFolder(app, job);
    } catch (CException* e) {
        e->Delete();
        return false;
    }
}

// The worker holds its own reference to the job, so the folder it writes
// stays valid even when the caller stops waiting first.
DWORD WINAPI AutomationWorker(void* param)
{
    std::unique_ptr<std::shared_ptr<AutomationJob>> job(static_cast<std::shared_ptr<AutomationJob>*>(param));
    if (FAILED(AfxOleInitThread()))
        return kWorkerFailed;
    const bool ok = QueryHost(**job);
    AfxOleTermThread();
    return ok ? 0 : kWorkerFailed;
}

// Waits for the worker while dispatching this thread's messages, so the
// caller's windows keep painting. A WM_QUIT seen meanwhile is posted again
// for the caller's own loop. True once the worker has ended; false when the
// wait itself failed (the worker may still be running).
//
// MWMO_INPUTAVAILABLE: the caller is usually a command handler whose loop
// has already looked at the queue, and a plain wait wakes only for input
// that arrived after that look; what was queued beside the command would
// sit undispatched until something new came in.
bool WaitPumping(HANDLE thread)
{
    bool quit = false;
    WPARAM quitCode = 0;
    DWORD woken;
    while ((woken = MsgWaitForMultipleObjectsEx(1, &thread, INFINITE, QS_ALLINPUT, MWMO_INPUTAVAILABLE)) ==
           WAIT_OBJECT_0 + 1) {
        MSG msg;
        while (PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE)) {
            if (msg.message == WM_QUIT) {
                quit = true;
                quitCode = msg.wParam;
                continue;
            }
            TranslateMessage(&msg);
            DispatchMessageW(&msg);
        }
    }
    if (quit)
        PostQuitMessage(static_cast<int>(quitCode));
    return woken == WAIT_OBJECT_0;
}

// Runs the lookup; true with the worker's folder in `folder`.
bool FolderFromAutomation(const CString& version, CString& folder)
{
    auto job = std::make_shared<AutomationJob>();
    job->progId = version.Left(1) == L"{" ? version : L"AutoCAD.Application." + version;
    auto* workerReference = new std::shared_ptr<AutomationJob>(job);
    HANDLE thread = CreateThread(nullptr, 0, AutomationWorker, workerReference, 0, nullptr);
    if (thread == nullptr) {
        delete workerReference;
        return false;
    }
    const bool ended = WaitPumping(thread);
    DWORD code = kWorkerFailed;
    const bool read = ended && GetExitCodeThread(thread, &code) != FALSE;
    CloseHandle(thread);
    if (!read || code == kWorkerFailed)
        return false;
    folder = job->folder;
    return true;
}

}  // namespace

bool GetCADPath_I(CString& dir, CString& exePath)
{
    CString exeName = CInitSetting().GetSetting(L"ACADExePath", L"Acad.exe", L"CADCmdLine");
    // The setting may be a full path with macros ("%ACADDIR%acad.exe"); only
    // the name after the last separator or macro counts here.
    const int cut = std::max(exeName.ReverseFind(L'\\'), exeName.ReverseFind(L'%'));
    exeName = exeName.Mid(cut + 1);

    CString folder = CInitSetting().GetSetting(L"CADPathNameCOM", L"", L"CADCmdLine");
    CString exe;
    exe.Format(L"%s\\%s", folder.GetString(), exeName.GetString());
    if (!IsExist(exe)) {
        const CString version = GetStartupAcadVer();
        if (version.IsEmpty() || !FolderFromAutomation(version, folder))
            return false;
        // On a first store the key is new to the cached section, and the
        // cache then forgets the section's other keys until the file is
        // bound again: the settings engine's rule, kept here as everywhere.
        CInitSetting().SetSetting(L"CADPathNameCOM", folder, L"CADCmdLine");
        exe.Format(L"%s\\%s", folder.GetString(), exeName.GetString());
    }
    exePath = exe;
    folder.TrimRight(L'\\');
    dir = folder + L'\\';
    return true;
}

}  // namespace QM
