// QMUtil.h - the one header an application of the suite includes.
//
//   #include <QMUtil.h>
//   CStringArray fields;
//   QM::SeparateString(L"a,b", L',', fields, false);
//
// Link the import library (libQMUtil.dll.a) and ship QMUtil.dll beside the
// application.
#pragma once

#include "QMExport.h"

// Foundation
#include "platform/CString.h"
#include "platform/Collections.h"
#include "platform/Exceptions.h"
#include "platform/File.h"
#include "platform/FileFind.h"
#include "platform/Module.h"

// Library frame: messages, tracing, version
#include "frame/DebugTrace.h"
#include "frame/Messages.h"
#include "frame/Version.h"

// Text: numbers and splitting
#include "text/Numbers.h"
#include "text/StringSplit.h"

// Configuration: INI files, cached settings, registry
#include "config/INISetting.h"
#include "config/IniHelpers.h"
#include "config/Registry.h"

// Software environment
#include "env/ProjectDir.h"

// File system
#include "fs/BrowseForFolder.h"
#include "fs/FileOps.h"
#include "fs/Listing.h"
#include "fs/PathParts.h"
#include "env/Folders.h"
#include "env/PathMacros.h"
#include "cad/CadDiscovery.h"
#include "cad/CadCmdLine.h"
#include "cad/CadMenu.h"
#include "cad/CadVirus.h"
