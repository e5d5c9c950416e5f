// Library.h - what the entry point records about the library's own module.
//
//   CResourceSwitch use(QM::LibraryHandle());
//
// Internal to the DLL: applications reach the library's resources through
// the exported functions, never through its module handle.
#pragma once
#include "platform/Module.h"

namespace QM {

// The module handle the entry point received at process attach.
HINSTANCE LibraryHandle();
// The extension-module record filled at process attach.
AFX_EXTENSION_MODULE& LibraryModule();

}  // namespace QM
