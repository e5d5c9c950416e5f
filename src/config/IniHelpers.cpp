// IniHelpers.cpp - section reads and writes on the private-profile
// functions; text lines through CStdioFile.
#include "config/IniHelpers.h"
#include "frame/Messages.h"
#include "fs/PathParts.h"
#include "platform/File.h"
#include "text/StringSplit.h"

namespace {

const DWORD kProfileChars = 40960;
const UINT kLineBytes = 40959;

// One buffer serves every profile read: a section's key list or a value can
// take the whole of it, and it is too large for the stack of a caller that
// is itself deep in a dialog.
wchar_t* ProfileBuffer()
{
    static wchar_t buffer[kProfileChars];
    return buffer;
}

char* StrictLineBuffer()
{
    static char buffer[kLineBytes];
    return buffer;
}

char* LenientLineBuffer()
{
    static char buffer[kLineBytes];
    return buffer;
}

bool IsComment(const CString& line)
{
    return line.Left(2) == L"//" || line.Left(1) == L";";
}

// How the two readers differ: the strict one fails on an over-long line and
// drops empty lines; the lenient one takes the pieces and keeps empty lines.
struct LineRules
{
    char* buffer;
    bool strict;
};

QM::FO_ErrorStatus ReadLines(CStdioFile& file, CStringArray& lines, bool skipComments, const LineRules& rules)
{
    lines.RemoveAll();
    for (;;) {
        const CStdioFile::LineResult result = file.ReadLine(rules.buffer, kLineBytes);
        if (result == CStdioFile::endOfFile)
            return QM::FO_Success;
        if (result == CStdioFile::lineTooLong && rules.strict) {
            lines.RemoveAll();
            return QM::FO_ReadFailed;
        }
        CString line(rules.buffer);
        line.Trim(L"\r\n\t ");
        if (skipComments && IsComment(line))
            continue;
        if (!line.IsEmpty() || !rules.strict)
            lines.Add(line);
    }
}

QM::FO_ErrorStatus ReadTextFile(const wchar_t* path, CStringArray& lines, bool skipComments,
                                const wchar_t* errorText, HWND owner, const LineRules& rules)
{
    CStdioFile file;
    if (!file.Open(path, CFile::modeRead | CFile::shareDenyNone | CFile::typeBinary)) {
        if (errorText != nullptr)
            QM::ShowMessage(owner, errorText, L"X");
        return QM::FO_ReadFailed;
    }
    try {
        return ReadLines(file, lines, skipComments, rules);
    } catch (CFileException* e) {
        e->Delete();
        lines.RemoveAll();
        return QM::FO_ReadFailed;
    }
}

}  // namespace

namespace QM {

bool WriteIni(const wchar_t* section, const CStringArray& keys, const CStringArray& values, const wchar_t* path)
{
    if (IsNULL(path))
        return false;
    for (INT_PTR i = 0; i < keys.GetSize(); ++i)
        WritePrivateProfileStringW(section, keys[i], values.GetAt(i), path);
    return WritePrivateProfileStringW(nullptr, nullptr, nullptr, path) == 1;
}

bool ReadIni(const wchar_t* section, CStringArray& keys, CStringArray& values, const wchar_t* path)
{
    values.RemoveAll();
    // A null section goes to the platform as it is, which then answers with
    // the file's section names.
    const bool readable = !IsNULL(path);
    wchar_t* buffer = ProfileBuffer();
    if (keys.IsEmpty() && readable) {
        GetPrivateProfileStringW(section, nullptr, L"", buffer, kProfileChars, path);
        Get00Strings(buffer, keys);
    }
    for (INT_PTR i = 0; i < keys.GetSize(); ++i) {
        buffer[0] = L'\0';
        if (readable)
            GetPrivateProfileStringW(section, keys[i], L"", buffer, kProfileChars, path);
        values.Add(buffer);
    }
    return true;
}

bool ReadIni(const wchar_t* section, CMapStringToString& map, const wchar_t* path, bool upperKeys)
{
    map.RemoveAll();
    CStringArray keys, values;
    ReadIni(section, keys, values, path);
    for (INT_PTR i = 0; i < keys.GetSize(); ++i) {
        CString key = keys[i];
        if (upperKeys)
            key.MakeUpper();
        map[key] = values[i];
    }
    return !map.IsEmpty();
}

FO_ErrorStatus ReadTextFileToStringArray(const wchar_t* path, CStringArray& lines, bool skipComments,
                                         const wchar_t* errorText, HWND owner)
{
    return ReadTextFile(path, lines, skipComments, errorText, owner, LineRules{StrictLineBuffer(), true});
}

FO_ErrorStatus ReadTextFileToStringArray2(const wchar_t* path, CStringArray& lines, bool skipComments,
                                          const wchar_t* errorText, HWND owner)
{
    return ReadTextFile(path, lines, skipComments, errorText, owner, LineRules{LenientLineBuffer(), false});
}

FO_ErrorStatus WriteStringArrayToTextFile(const wchar_t* path, CStringArray& lines, bool keepExisting)
{
    if (!IsNULL(path) && IsExist(path)) {
        if (keepExisting)
            return FO_FileExists;
        CFile::Remove(path);
    }
    CStdioFile file;
    if (!file.Open(path, CFile::modeCreate | CFile::modeWrite | CFile::typeText))
        return FO_OpenWriteFailed;
    for (INT_PTR i = 0; i < lines.GetSize(); ++i) {
        CString line = lines[i];
        line.TrimRight();
        line += L'\n';
        file.WriteString(line);
    }
    file.Close();
    return FO_Success;
}

}  // namespace QM
