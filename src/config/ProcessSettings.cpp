// ProcessSettings.cpp - the library's three settings objects and the paths
// recorded beside them. Each is a function-local static: built on first use
// (the load sequence is the first user) and destroyed after the library's
// detach.
#include "config/ProcessSettings.h"

namespace {

CString& SysPath()
{
    static CString path;
    return path;
}

CString& UserPath()
{
    static CString path;
    return path;
}

CString& ProjectPath()
{
    static CString path;
    return path;
}

}  // namespace

namespace QM {

INISetting& CInitSetting()
{
    static INISetting settings;
    return settings;
}

INISetting& CGCSetting()
{
    static INISetting settings;
    return settings;
}

INISetting& CADMenuSetting()
{
    static INISetting settings;
    return settings;
}

CString SysINIFilePath() { return SysPath(); }
CString UserINIFilePath() { return UserPath(); }
CString GCINIFilePath() { return ProjectPath(); }

void SetSysINIFilePath(const CString& path) { SysPath() = path; }
void SetUserINIFilePath(const CString& path) { UserPath() = path; }
void SetGCINIFilePath(const CString& path) { ProjectPath() = path; }

}  // namespace QM
