// cmd_cad.cpp - qmtool env, cad, expand and scripts: the suite's folders,
// the CAD host as the library sees it, macro expansion and hostile
// start-up scripts. The settings come from the INIT.ini beside QMUtil.dll.
#include "qmtool.h"

namespace qmtool {
namespace {

CString Line(const wchar_t* label, bool found, const CString& value, const CString& from)
{
    CString line;
    line.Format(L"%-14s %s%s\n", label, found ? value.GetString() : L"(not found)", from.GetString());
    return line;
}

CString Source(const wchar_t* setting)
{
    return L"  [Software] " + CString(setting) + L"=" + QM::CInitSetting().GetSetting(setting, L"", L"Software");
}

int RunEnv(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 0, 0, L"takes no arguments"))
        return bad;
    CString dir, text;
    // Every other line depends on which start-up file the library bound.
    const CString startup = QM::CInitSetting().GetFilePath();
    text += Line(L"start-up file", QM::IsExist(startup), startup,
                 QM::IsExist(startup) ? CString() : L"  (neither Sys\\INIT.ini nor INIT.ini beside QMUtil.dll)");
    text += Line(L"registry key", true, QM::GetSoftRegItem(), L"");
    bool found = QM::GetInstallDir(dir);
    text += Line(L"install", found, dir, Source(L"InstallDir"));
    found = QM::GetLocalDir(dir);
    text += Line(L"local", found, dir, Source(L"LocalDir"));
    found = QM::GetWorkDir(dir, false);
    text += Line(L"work", found, dir, Source(L"WorkDir"));
    found = QM::GetQMCommonFilesDir(dir);
    text += Line(L"shared CAD", found, dir, L"  HKLM CommonFilesDir");
    Out(text);
    return kOk;
}

int RunCad(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 0, 0, L"takes no arguments"))
        return bad;
    CString text, key, dir, profileKey, profileName, exe, cmdLine;
    text += Line(L"release", true, QM::GetStartupAcadVer(), L"  [CADCmdLine] ACADVer");
    bool found = QM::GetCADRegPos(key);
    text += Line(L"release key", found, key, L"");
    found = QM::GetAcadPath(dir);
    text += Line(L"install", found, dir, L"");
    found = QM::GetCADCurConfigName(profileKey, profileName);
    text += Line(L"profile", found, profileName, found ? L"  HKCU\\" + profileKey : CString());
    QM::GetCADCmdLineString(exe, cmdLine);
    text += Line(L"executable", true, exe, L"");
    text += Line(L"command line", true, cmdLine, L"");
    Out(text);
    return kOk;
}

int RunExpand(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one TEXT"))
        return bad;
    Out(QM::FixSystemDir(args.Positional()[0]) + L"\n");
    return kOk;
}

int RunScripts(const Command& self, Args& args)
{
    const bool remove = args.Flag(L"delete");
    if (int bad = args.Reject(self, 0, 0, L"takes no arguments"))
        return bad;
    CStringArray candidates;
    QM::GetCadVirusCandidates(candidates);
    CString text;
    int hostile = 0;
    for (INT_PTR i = 0; i < candidates.GetSize(); ++i) {
        if (QM::IsCadVirusFile(candidates[i])) {
            text += candidates[i] + L"\n";
            ++hostile;
        }
    }
    text.AppendFormat(L"%d hostile start-up script(s) of %d checked\n", hostile, static_cast<int>(candidates.GetSize()));
    Out(text);
    if (remove && hostile > 0)
        QM::KillCadVirus();   // shows the usual message for scripts it cannot delete
    return kOk;
}

const Command env{L"env", L"env", L"the start-up file the library loaded, the suite's folders and the settings that "
                  L"locate them", RunEnv, L"qmtool env", L"one labelled line each, \"(not found)\" where a folder is unknown"};
const Command cad{L"cad", L"cad", L"configured CAD release, its key, folder, active profile and command line",
                  RunCad, L"qmtool cad", L"one labelled line each, \"(not found)\" where the host is unknown"};
const Command expand{L"expand", L"expand TEXT", L"TEXT with its path macros (%INSTALLDIR%, %ACADDIR%, ...) expanded",
                     RunExpand, L"qmtool expand '%WORKDIR%Temp'", L"the expanded text; an unknown macro stays as written"};
const Command scripts{L"scripts", L"scripts [--delete]",
                      L"hostile acad.lsp/acadapp.lsp in the host's folders; deleted only with --delete", RunScripts,
                      L"qmtool scripts", L"each hostile script's path, then the counts"};

}  // namespace
}  // namespace qmtool
