// CadVirus.h - finding and deleting hostile start-up scripts (acad.lsp,
// acadapp.lsp) in every folder the CAD host loads them from.
//
//   QM::KillCadVirus();                    // before starting the host
//
//   CStringArray candidates;               // look without deleting
//   QM::GetCadVirusCandidates(candidates);
//   for (INT_PTR i = 0; i < candidates.GetSize(); ++i)
//       if (QM::IsCadVirusFile(candidates[i])) ...
#pragma once
#include "platform/Collections.h"

namespace QM {

// The folders the host searches, each ending in a backslash, duplicates
// kept: the CAD install folder, the active profile's support path (empty
// pieces skipped), the work folder, the install folder and its direct
// sub-folders. The three lookups share one text and are added whether they
// succeed or not, so a failed one repeats the folder before it (the first
// one, an empty text: the drive root "\"); the sub-folders listed are those
// of whatever that text holds.
QM_API void GetCadVirusFolders(CStringArray& folders);
// The existing acad.lsp and acadapp.lsp of those folders, in folder order.
QM_API void GetCadVirusCandidates(CStringArray& candidates);
// True for an acad.lsp / acadapp.lsp (any case) whose lines, upper-cased,
// contain STARTUP, EXPLODE, UNDEFINE and ACADPATH between them. An
// unreadable file is harmless.
QM_API bool IsCadVirusFile(const wchar_t* path);
// Deletes every hostile candidate (read-only cleared first) and shows one
// message listing those that could not be deleted. A file whose attributes
// cannot be changed is passed over silently.
QM_API void KillCadVirus();

}  // namespace QM
