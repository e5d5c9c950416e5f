// cmd_fs.cpp - qmtool path, ls, copy and rm: path parts, listings, shell
// copies and deletes.
#include "qmtool.h"

namespace qmtool {
namespace {

const wchar_t* YesNo(bool value) { return value ? L"yes" : L"no"; }

// True when PATH (a wildcard included) names at least one file or folder.
bool Matches(const CString& path)
{
    WIN32_FIND_DATAW found;
    const HANDLE find = FindFirstFileW(path, &found);
    if (find == INVALID_HANDLE_VALUE)
        return false;
    FindClose(find);
    return true;
}

int RunPath(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one PATH"))
        return bad;
    if (int bad = args.RejectEmptyPath(self, 0))
        return bad;
    const CString& path = args.Positional()[0];
    const CString folder = QM::GetFilePath(path);
    CString text;
    text.Format(L"folder:   %s\nname:     %s\ntitle:    %s\next:      %s\nexists:   %s\nwritable: %s\n",
                folder.GetString(), QM::GetFileName(path).GetString(), QM::GetFileTitle(path).GetString(),
                QM::GetFileExt(path).GetString(), YesNo(QM::IsExist(path)),
                YesNo(!folder.IsEmpty() && !QM::IsDirReadOnly(folder)));
    Out(text);
    return kOk;
}

int RunLs(const Command& self, Args& args)
{
    const bool dirs = args.Flag(L"dirs");
    const bool keepExt = args.Flag(L"keep-ext");
    if (int bad = args.Reject(self))
        return bad;
    const std::vector<CString>& words = args.Positional();
    if (words.empty() || words.size() > 3)
        return Usage(self, L"needs FOLDER, optionally NAME and EXT");
    if (int bad = args.RejectEmptyPath(self, 0))
        return bad;
    const DWORD attributes = GetFileAttributesW(words[0]);
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        Err(L"qmtool ls: no folder " + words[0] + L"\n");
        return kFailed;
    }
    const CString name = words.size() > 1 ? words[1] : CString(L"*");
    const CString ext = words.size() > 2 ? words[2] : CString(L"*");
    CStringArray names;
    const int count = dirs ? QM::GetPathDirs(words[0], names, name, ext, keepExt)
                           : QM::GetPathFiles(words[0], names, name, ext, keepExt);
    CString text;
    for (INT_PTR i = 0; i < names.GetSize(); ++i)
        text += names[i] + L"\n";
    text.AppendFormat(L"%d %s\n", count, dirs ? L"folder(s)" : L"file(s)");
    Out(text);
    return kOk;
}

int RunCopy(const Command& self, Args& args)
{
    const bool overwrite = args.Flag(L"overwrite");
    const bool recursive = args.Flag(L"recursive");
    if (int bad = args.Reject(self, 2, 2, L"needs FROM and TO"))
        return bad;
    for (size_t i : {0u, 1u})
        if (int bad = args.RejectEmptyPath(self, i))
            return bad;
    const CString& from = args.Positional()[0];
    const CString& to = args.Positional()[1];
    if (!QM::IsExist(from)) {
        Err(L"qmtool copy: " + from + L" does not exist\n");
        return kFailed;
    }
    if (!QM::CopyFiles(QM::CopyFilesStruct{from, nullptr, to, nullptr, overwrite, recursive})) {
        Err(L"qmtool copy: copying " + from + L" into " + to + L" failed\n");
        return kFailed;
    }
    Out(L"copied " + from + L" into " + to + L"\n");
    return kOk;
}

int RunRm(const Command& self, Args& args)
{
    const bool tree = args.Flag(L"tree");
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one PATH"))
        return bad;
    if (int bad = args.RejectEmptyPath(self, 0))
        return bad;
    const CString& path = args.Positional()[0];
    if (QM::IsDriveOrShareRoot(path)) {
        Err(L"qmtool rm: refused: " + path + L" names a whole drive or share\n");
        return kFailed;
    }
    // A tree that is already gone is what the caller asked for; a file is not.
    if (!Matches(path)) {
        (tree ? Out : Err)(L"nothing to delete: " + path + L" is absent\n");
        return tree ? kOk : kFailed;
    }
    if (!(tree ? QM::DelTree(path) : QM::DeleteFiles(path, false))) {
        Err(L"qmtool rm: deleting " + path + L" failed\n");
        return kFailed;
    }
    Out(L"deleted " + path + L"\n");
    return kOk;
}

const Command path{L"path", L"path PATH", L"folder, name, title and extension of PATH; whether it exists; whether its folder is writable",
                   RunPath, L"qmtool path 'C:\\x\\a.dwg'", L"one labelled line each: folder, name, title, ext, exists, writable"};
const Command ls{L"ls", L"ls FOLDER [NAME] [EXT] [--dirs] [--keep-ext]",
                 L"archived files (or, with --dirs, sub-folders) matching NAME.EXT (both * unless given)", RunLs,
                 L"qmtool ls 'C:\\work' '*' dwg", L"one name a line, then the count; a missing folder: exit 1"};
const Command copy{L"copy", L"copy FROM TO [--overwrite] [--recursive]",
                   L"copy the files of folder FROM (with --recursive the whole tree) into TO\\<last part of FROM>",
                   RunCopy, L"qmtool copy 'C:\\src\\sym' 'D:\\backup' --recursive", L"\"copied FROM into TO\""};
const Command rm{L"rm", L"rm PATH [--tree]",
                 L"delete a file, folder or wildcard without asking; with --tree an absent PATH is no failure", RunRm,
                 L"qmtool rm 'C:\\work\\old' --tree", L"\"deleted PATH\", or \"nothing to delete: PATH is absent\""};

}  // namespace
}  // namespace qmtool
