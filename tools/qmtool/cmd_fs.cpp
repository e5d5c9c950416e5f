// cmd_fs.cpp - qmtool path, ls, copy and rm: path parts, listings, shell
// copies and deletes.
#include "qmtool.h"

namespace qmtool {
namespace {

const wchar_t* YesNo(bool value) { return value ? L"yes" : L"no"; }

int RunPath(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one PATH"))
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
    if (!QM::IsExist(args.Positional()[0])) {
        Err(L"qmtool copy: " + args.Positional()[0] + L" does not exist\n");
        return kFailed;
    }
    const bool ok = QM::CopyFiles(
        QM::CopyFilesStruct{args.Positional()[0], nullptr, args.Positional()[1], nullptr, overwrite, recursive});
    Out(ok ? L"copied\n" : L"copy failed\n");
    return ok ? kOk : kFailed;
}

int RunRm(const Command& self, Args& args)
{
    const bool tree = args.Flag(L"tree");
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one PATH"))
        return bad;
    const CString& path = args.Positional()[0];
    if (QM::IsDriveOrShareRoot(path)) {
        Err(L"qmtool rm: refused: " + path + L" names a whole drive or share\n");
        return kFailed;
    }
    const bool ok = tree ? QM::DelTree(path) : QM::DeleteFiles(path, false);
    Out(ok ? L"deleted\n" : L"delete failed\n");
    return ok ? kOk : kFailed;
}

const Command path{L"path", L"path PATH", L"folder, name, title and extension of PATH; whether it exists; whether its folder is writable",
                   RunPath};
const Command ls{L"ls", L"ls FOLDER [NAME] [EXT] [--dirs] [--keep-ext]",
                 L"archived files (or, with --dirs, sub-folders) matching NAME.EXT (both * unless given)", RunLs};
const Command copy{L"copy", L"copy FROM TO [--overwrite] [--recursive]",
                   L"copy the files of folder FROM (with --recursive the whole tree) into TO\\<last part of FROM>",
                   RunCopy};
const Command rm{L"rm", L"rm PATH [--tree]",
                 L"delete a file, folder or wildcard without asking; --tree: true also when PATH is absent", RunRm};

}  // namespace
}  // namespace qmtool
