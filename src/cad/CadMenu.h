// CadMenu.h - saving the host's menu configuration of the active profile
// before the suite installs its menus, and restoring it afterwards.
//
//   CString profile;
//   QM::SRCADMenu(true, profile);    // save into QM::CADMenuSetting()
//   QM::SetIsInSoftware(true);
//   ...
//   QM::SRCADMenu(false, profile);   // restore, drop the suite's menu groups
//   QM::SetIsInSoftware(false);
//
// The store holds one section per profile: "*MenuPathName" (the profile's
// "MenuFile"), one key per menu group, and "*InQMSoftWare". Section
// "CADMenu" of the start-up settings holds the switches "EnableSaveCADMenu"
// and "EnableRestoreCADMenu" (read once per process) and "OurMenuFlag", the
// comma list of texts that mark the suite's own menu groups.
#pragma once
#include "platform/CString.h"

namespace QM {

// Saves (true) or restores (false); `profileName` receives the active
// profile. False when the switch is off, when saving while the suite's menus
// are installed, or when no CAD installation is found. True, having done
// nothing, when the profile or its Menus key cannot be found: there is then
// nothing to protect.
QM_API bool SRCADMenu(bool save, CString& profileName);
// The two switches, read on first use and kept.
QM_API bool EnableSaveCadMenu();
QM_API bool EnableRestoreCadMenu();
// Writes / reads "*InQMSoftWare" of the active profile's section; false when
// there is no active profile.
QM_API bool SetIsInSoftware(bool in);
QM_API bool IsInSoftware();

}  // namespace QM
