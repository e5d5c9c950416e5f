// INISetting.h - the cached view of one INI file, and the library's three
// process-wide settings objects.
//
//   INISetting ini(L"C:\\QM\\INIT.ini");                   // reads the whole file
//   CString zero = ini.GetSetting(L"zero", L"0.000001", L"precision");
//   ini.SetSetting(L"DoubleEQ", L"0.0001", L"Precision");  // cache and file
//
//   double tol = _wtof(QM::CInitSetting().GetSetting(L"ZERO", L"0.000001", L"Precision"));
//
// Binding reads every section into memory, so a look-up is a hash look-up
// and never touches the disk: a value another program writes into the file
// is seen only after the next SetFilePath. Section and key names match
// without regard to case (they are kept upper-cased); values are kept
// exactly as the profile functions return them.
#pragma once
#include "platform/Collections.h"

class QM_API INISetting
{
public:
    INISetting();
    // Binds at once, as SetFilePath does.
    explicit INISetting(const wchar_t* path);
    INISetting(const INISetting&) = delete;
    INISetting& operator=(const INISetting&) = delete;
    ~INISetting();

    // Stores `path` and reads the file into memory. False when the file is
    // missing or holds no section with a key: after a good file, a missing
    // one deliberately leaves the old values in place (the new path is kept
    // all the same).
    bool SetFilePath(const wchar_t* path);
    // The bound path; empty until SetFilePath.
    CString GetFilePath();

    // The cached value of `key` in `section`, or `defaultValue` (empty for
    // null) when either is absent. A key present with an empty value gives
    // the empty text. Note the order: key, default, section.
    CString GetSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section);

    // Sets the cached value and writes it to the file with the caller's
    // spelling of key and section. When the section is cached without this
    // key, the cache keeps only the new key for that section until the next
    // SetFilePath (the file keeps the others). Returns what the write's final
    // flush reported. A null or empty key or section changes nothing and
    // returns false; so does an object that was never bound, after updating
    // its cache.
    bool SetSetting(const wchar_t* key, const wchar_t* value, const wchar_t* section);

    // Clears both arrays and fills them with the keys (upper case) and values
    // of `section`, in the cache's order rather than the file's. Returns the
    // number of keys: 0 for an unknown section.
    int GetAllKeysAndValues(const wchar_t* section, CStringArray& keys, CStringArray& values);

private:
    bool ReadFile();
    void ClearMap();

    CString m_strFilePath;
    CMapStringToPtr m_mapSections;   // upper-cased section name -> owned section record
    wchar_t* m_pSectionNames;        // scratch for the section name list, re-allocated per read
};

namespace QM {

// The start-up settings ("Sys\INIT.ini" or "INIT.ini" beside the library),
// bound when the library loads; empty (every look-up gives its default)
// when neither file exists.
QM_API INISetting& CInitSetting();
// The project settings, bound when the project folder is set.
QM_API INISetting& CGCSetting();
// The CAD-menu settings in the working folder, bound when the library loads.
QM_API INISetting& CADMenuSetting();

// The system and user INI paths named in section "IniFilePath" of the
// start-up settings, macros expanded, as they were when the library loaded;
// empty before that.
QM_API CString SysINIFilePath();
QM_API CString UserINIFilePath();
// The project settings file; empty until a project folder is set.
QM_API CString GCINIFilePath();

}  // namespace QM
