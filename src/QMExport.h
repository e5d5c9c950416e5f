// QMExport.h - the export macro every public declaration of QMUtil carries.
//
//   class QM_API CKey { ... };
//   namespace QM { QM_API bool IsExist(const wchar_t* path); }
//
// While the DLL itself is built QMUTIL_BUILDING_DLL is defined and the
// declarations are exported; applications see them as imports.
#pragma once

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
// The common dialogs' header renames GetFileTitle to GetFileTitleW; every
// part of the library and of its callers sees it, so that QM::GetFileTitle
// means the same function whatever else a file includes.
#include <commdlg.h>

#if defined(QMUTIL_BUILDING_DLL)
#define QM_API __declspec(dllexport)
#else
#define QM_API __declspec(dllimport)
#endif
