// ProcessSettings.h - inside the library only: how the load sequence and the
// project folder record the settings paths that QM::SysINIFilePath(),
// QM::UserINIFilePath() and QM::GCINIFilePath() hand out.
//
//   QM::SetSysINIFilePath(QM::FixSystemDir(sys));   // once, at load
//
// Applications read the paths; only the library itself sets them.
#pragma once
#include "config/INISetting.h"

namespace QM {

void SetSysINIFilePath(const CString& path);
void SetUserINIFilePath(const CString& path);
void SetGCINIFilePath(const CString& path);

}  // namespace QM
