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

#include "platform/CString.h"
#include "platform/Collections.h"
#include "platform/Exceptions.h"
#include "platform/File.h"
#include "platform/Module.h"
#include "platform/Geometry.h"
#include "platform/Gdi.h"

#include "frame/Messages.h"
#include "text/StringSplit.h"
#include "text/Numbers.h"
#include "config/IniHelpers.h"
#include "config/INISetting.h"
#include "config/Registry.h"
#include "fs/PathParts.h"
#include "frame/Version.h"
#include "frame/DebugTrace.h"
#include "env/ProjectDir.h"
#include "cad/CadColor.h"
#include "slide/SlideDecoder.h"
#include "slide/SlideDeCode.h"
