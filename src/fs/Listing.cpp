// Listing.cpp - folder listings on CFileFind.
#include "fs/Listing.h"
#include "platform/FileFind.h"

namespace {

enum class Kind { Files, Dirs };

// The pattern "folder\name.ext" after the leading dots of `ext` and the
// trailing backslashes of `folder` are gone; `suffix` receives "." + ext.
CString Pattern(const wchar_t* folder, const wchar_t* name, const wchar_t* ext, CString& suffix)
{
    CString bareExt(ext);
    bareExt.TrimLeft(L'.');
    CString bareFolder(folder);
    bareFolder.TrimRight(L'\\');
    CString pattern;
    pattern.Format(L"%s\\%s.%s", bareFolder.GetString(), CString(name).GetString(), bareExt.GetString());
    suffix = L"." + bareExt;
    return pattern;
}

bool Wanted(const CFileFind& finder, Kind kind)
{
    if (kind == Kind::Files)
        return finder.MatchesMask(FILE_ATTRIBUTE_ARCHIVE) != FALSE;
    return finder.IsDirectory() && !finder.IsDots();
}

CString ShownName(const CString& name, const CString& suffix, Kind kind)
{
    CString shown(name);
    if (kind == Kind::Files) {
        // Character-set trim, not suffix removal: callers store titles made
        // this way, so "drawing.dwg" must keep turning into "drawin".
        shown.TrimRight(suffix);
    } else if (shown.GetLength() >= suffix.GetLength() && shown.Right(suffix.GetLength()).CompareNoCase(suffix) == 0) {
        shown = shown.Left(shown.GetLength() - suffix.GetLength());
    }
    return shown;
}

int List(const wchar_t* folder, CStringArray& out, const wchar_t* name, const wchar_t* ext, bool keepExt, Kind kind)
{
    CString suffix;
    const CString pattern = Pattern(folder, name, ext, suffix);
    out.RemoveAll();
    CFileFind finder;
    BOOL more = finder.FindFile(pattern);
    while (more) {
        more = finder.FindNextFile();
        if (Wanted(finder, kind))
            out.Add(keepExt ? finder.GetFileName() : ShownName(finder.GetFileName(), suffix, kind));
    }
    return static_cast<int>(out.GetSize());
}

}  // namespace

namespace QM {

int GetPathFiles(const wchar_t* folder, CStringArray& out, const wchar_t* name, const wchar_t* ext, bool keepExt)
{
    return List(folder, out, name, ext, keepExt, Kind::Files);
}

int GetPathDirs(const wchar_t* folder, CStringArray& out, const wchar_t* name, const wchar_t* ext, bool keepExt)
{
    return List(folder, out, name, ext, keepExt, Kind::Dirs);
}

}  // namespace QM
