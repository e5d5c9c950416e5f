// ProjectDir.cpp - the process-wide project folder.
#include "env/ProjectDir.h"
#include "config/INISetting.h"
#include "config/ProcessSettings.h"
#include "fs/PathParts.h"

namespace {

CString& ProjectFolder()
{
    static CString folder;
    return folder;
}

}  // namespace

namespace QM {

bool SetSoftwareProjectDir(const wchar_t* dir)
{
    if (!IsExist(dir))
        return false;
    CString folder(dir);
    folder.TrimRight(L'\\');
    folder += L'\\';
    ProjectFolder() = folder;

    const CString path = folder + CInitSetting().GetSetting(L"ProjectINIFileName", L"Project.INI", L"Software");
    SetGCINIFilePath(path);
    CGCSetting().SetFilePath(path);
    // False on success too: the suite's callers never relied on the answer.
    return false;
}

bool GetSoftwareProjectDir(CString& dir)
{
    if (ProjectFolder().IsEmpty())
        return false;
    dir = ProjectFolder();
    return true;
}

bool GetSoftwareProjectName(CString& name)
{
    if (ProjectFolder().IsEmpty())
        return false;
    CString folder = ProjectFolder();
    folder.TrimRight(L'\\');
    name = GetFileName(folder);
    return !name.IsEmpty();
}

}  // namespace QM
