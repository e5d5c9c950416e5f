// IniHelpers.h - whole-section reads and writes of INI files through the
// private-profile functions, and lines of ANSI text files.
//
//   CMapStringToString keys;
//   QM::ReadIni(L"Precision", keys, L"C:\\QM\\INIT.ini", true);   // ZERO -> 0.000001
//
//   CStringArray names;
//   if (QM::ReadTextFileToStringArray(listFile, names, true) != QM::FO_Success) ...
//
// Text files are in the thread's ANSI code page (936 on the suite's users'
// machines) with CR LF line ends. The functions share process-wide work
// buffers: call them from one thread only.
#pragma once
#include "platform/Collections.h"

namespace QM {

// Result of the text-file functions. The values are fixed: callers store
// and compare the numbers.
enum FO_ErrorStatus {
    FO_Success = 0,          // done
    FO_FileExists = 2,       // the target exists and overwriting was not allowed
    FO_OpenWriteFailed = 4,  // the target could not be created
    FO_ReadFailed = 8,       // the file could not be opened, or a line could not be read
};

// Writes key i = value i into `section` of the INI file `path` for every
// index of `keys`, then flushes the platform's profile cache for the file.
// Returns what the flush reported (true for 1); single writes that fail are
// not reported. `values` shorter than `keys` throws CInvalidArgException*
// (the keys before that index are written). A null or empty `path` writes
// nothing and returns false: the platform would take it for WIN.INI.
QM_API bool WriteIni(const wchar_t* section, const CStringArray& keys, const CStringArray& values,
                     const wchar_t* path);

// Clears `values`. An empty `keys` is first filled with every key of
// `section`, in file order; then the value of each key is appended to
// `values` (an empty text for a key that is missing). Each value is at most
// 40959 characters. Always returns true; a missing file or section gives
// empty texts, as does a null or empty path. A null section is passed to the
// platform as it is, which answers with the file's section names.
QM_API bool ReadIni(const wchar_t* section, CStringArray& keys, CStringArray& values, const wchar_t* path);

// Clears `map` and fills it with every key of `section` and its value. With
// `upperKeys` the keys are upper-cased, so keys that differ only in case
// become one entry holding the first one's value (the profile reader answers
// every spelling of a key with its first occurrence). True when `map` is not
// empty.
QM_API bool ReadIni(const wchar_t* section, CMapStringToString& map, const wchar_t* path, bool upperKeys);

// Reads the lines of a text file into `lines`: each converted from the ANSI
// code page and trimmed of CR, LF, tab and blank at both ends; empty lines
// dropped; with `skipComments`, lines starting with "//" or ";" dropped.
// FO_ReadFailed (8) when the file cannot be opened (`lines` untouched, and
// `errorText`, when not null, shown in an error box owned by `owner`), when
// a line holds more than 40958 bytes or when the platform fails a read
// (`lines` then emptied). FO_Success (0) otherwise.
QM_API FO_ErrorStatus ReadTextFileToStringArray(const wchar_t* path, CStringArray& lines, bool skipComments,
                                                const wchar_t* errorText = nullptr, HWND owner = nullptr);

// As ReadTextFileToStringArray, but empty lines are kept and a line of more
// than 40958 bytes is not an error: it arrives as several lines, cut between
// characters. A platform read failure still gives FO_ReadFailed with
// `lines` emptied.
QM_API FO_ErrorStatus ReadTextFileToStringArray2(const wchar_t* path, CStringArray& lines, bool skipComments,
                                                 const wchar_t* errorText = nullptr, HWND owner = nullptr);

// Writes `lines` to `path`, each with trailing white space removed and
// ended by CR LF, in the thread's ANSI code page (characters it lacks become
// '?'). An existing file gives FO_FileExists (2) and is left alone when
// `keepExisting`; otherwise it is deleted first, and CFileException* is
// thrown when it cannot be. FO_OpenWriteFailed (4) when the file cannot be
// created (a null path included); a failed write throws CFileException*.
QM_API FO_ErrorStatus WriteStringArrayToTextFile(const wchar_t* path, CStringArray& lines, bool keepExisting);

}  // namespace QM
