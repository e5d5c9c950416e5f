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
#include "platform/Gdi.h"
#include "platform/Geometry.h"
#include "platform/Module.h"
#include "platform/RuntimeClass.h"

// Automation: dispatch driver, variants, dates
#include "platform/ole/OleDateTime.h"
#include "platform/ole/OleDispatchDriver.h"
#include "platform/ole/OleVariant.h"

// Windows: CWnd, message tables, the control wrappers, device contexts
#include "platform/win/ColorDialog.h"
#include "platform/win/Controls.h"
#include "platform/win/DeviceContexts.h"
#include "platform/win/MessageMap.h"
#include "platform/win/Wnd.h"

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

// Software environment: folders, path macros, project folder
#include "env/Folders.h"
#include "env/PathMacros.h"
#include "env/ProjectDir.h"

// CAD host: discovery, command line, menus, start-up scripts, colour index
#include "cad/CadCmdLine.h"
#include "cad/CadColor.h"
#include "cad/CadDiscovery.h"
#include "cad/CadMenu.h"
#include "cad/CadVirus.h"

// Slides
#include "slide/SlideDeCode.h"
#include "slide/SlideDecoder.h"

// File system
#include "fs/BrowseForFolder.h"
#include "fs/FileOps.h"
#include "fs/Listing.h"
#include "fs/PathParts.h"

// Data exchange: database access, spreadsheet export
#include "data/AdoForVc.h"
#include "data/ExcelExport.h"

// Dialog controls
#include "controls/ColorButtonEx.h"
#include "controls/ColorPickerEx.h"
#include "controls/FlatHeaderCtrl.h"
#include "controls/InPlaceComboBox.h"
#include "controls/InPlaceCtrl.h"
#include "controls/InPlaceDateTimeCtrl.h"
#include "controls/InPlaceEdit.h"
#include "controls/ItemHelpers.h"
#include "controls/ListCtrlEx.h"
#include "controls/NumEditEx.h"
