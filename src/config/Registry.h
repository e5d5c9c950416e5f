// Registry.h - one open registry key (CKey) and one-call string reads and
// writes.
//
//   CString folder;
//   if (QM::GetRegStr(HKEY_CURRENT_USER, L"Software\\QM\\Suite", L"WorkDir", folder)) ...
//   QM::SetRegStr(HKEY_CURRENT_USER, L"Software\\QM\\Suite", L"WorkDir", L"D:\\QM\\");
//
//   CKey key;
//   if (key.Open(HKEY_LOCAL_MACHINE, L"Software\\Autodesk\\AutoCAD")) {
//       CString release;
//       for (int i = 0; key.EnumKey(i, release); ++i) ...
//   }
//
// Results are 1/0 or true/false; the platform's status code is not passed
// on, nothing is shown and nothing is thrown.
#pragma once
#include "platform/CString.h"

class QM_API CKey
{
public:
    CKey() = default;
    // Closes the key if it is open.
    ~CKey();
    // Copies the handle value only: both objects then refer to one open key,
    // and the first to close it leaves the other holding a dead handle. Used
    // to hand a key on; never let two live objects both close it.
    CKey& operator=(const CKey& other);
    // Copy construction would make a second owner without anyone asking.
    CKey(const CKey&) = delete;

    // Closes an open key; the handle is null afterwards.
    void Close();

    // Creates or opens `subKey` under `parent` (non-volatile). On success the
    // handle is replaced without closing the one held before, which a copy
    // may still be using; on failure it is left as it was. Read and write
    // access unless asked otherwise, as a key one creates is meant for
    // writing.
    int Create(HKEY parent, const wchar_t* subKey, unsigned long access = KEY_READ | KEY_WRITE);
    // Opens an existing `subKey`, with the handle rules of Create. Read
    // access unless asked otherwise, so that a user without write rights can
    // still read machine-wide keys.
    int Open(HKEY parent, const wchar_t* subKey, unsigned long access = KEY_READ);

    // Note the order: value, then name (null or empty: the default value).
    // Writes a REG_SZ including its terminating NUL; 0 for a null value.
    int SetStringValue(const wchar_t* value, const wchar_t* name);
    // Empties `value`, then reads the value `name` whatever its type, cut at
    // its first NUL. 0 when the value is missing or unreadable.
    int GetStringValue(CString& value, const wchar_t* name);
    // Name of sub-key `index` (from 0); 0 past the last one or for a name
    // longer than 1023 characters (`name` then untouched).
    int EnumKey(int index, CString& name);
    // Number of direct sub-keys; 0 on failure (`count` then untouched).
    int GetSubKeyCount(unsigned long& count);

    HKEY m_hKey = nullptr;
};

namespace QM {

// Reads the value `name` of `root`\`subKey` into `value`, whatever its type,
// cut at its first NUL. Values of more than 2047 characters are refused
// (the read is limited to 4096 bytes). False when the key cannot be opened
// for querying or the value is missing or too long; `value` then keeps its
// earlier text.
QM_API bool GetRegStr(HKEY root, const wchar_t* subKey, const wchar_t* name, CString& value);

// Writes `value` as a REG_SZ named `name` under `root`\`subKey`, creating
// the key and its missing parents. False when the key cannot be created or
// the value cannot be written; a null value writes nothing and gives false,
// the key having been created all the same.
QM_API bool SetRegStr(HKEY root, const wchar_t* subKey, const wchar_t* name, const wchar_t* value);

}  // namespace QM
