// Listing.h - the files or sub-folders of one folder, by name and extension.
//
//   CStringArray names;
//   QM::GetPathFiles(L"C:\\QM\\Sld\\", names, L"*", L".sld", false);  // "door", ...
//   QM::GetPathDirs(L"C:\\QM\\Prj", names, L"*", L"*", true);         // "P1", ...
//
// A null folder, name or extension counts as an empty text. Names come in
// the order the platform's search returns them; `out` is emptied first, even
// when nothing is found (a missing folder or an over-long pattern gives 0).
#pragma once
#include "platform/Collections.h"

namespace QM {

// Lists the entries of `folder` matching `name`.`ext` that carry the archive
// attribute (0x20); an entry without it is not listed, on purpose: a file the
// backup never touched (and a folder) stays out. Without `keepExt` every
// trailing character that occurs in "." + ext is trimmed from each name (a
// character-set trim: "drawing.dwg" with "dwg" gives "drawin"). Returns the
// number of names in `out`.
QM_API int GetPathFiles(const wchar_t* folder, CStringArray& out, const wchar_t* name, const wchar_t* ext,
                        bool keepExt);

// Lists the sub-folders of `folder` matching `name`.`ext`, without "." and
// "..". Without `keepExt` a name that ends in "." + ext (case ignored) loses
// exactly that suffix ("x.DWG" with "dwg" gives "x"); other names stay whole.
// Returns the number of names in `out`.
QM_API int GetPathDirs(const wchar_t* folder, CStringArray& out, const wchar_t* name, const wchar_t* ext,
                       bool keepExt);

}  // namespace QM
