// Version.cpp - the revision text, built from version-control keywords.
#include "frame/Version.h"
#include "platform/CString.h"

namespace {

const wchar_t kRevision[] = L"$Revision: 1.42 $";
const wchar_t kDate[] = L"$Date: 2012/09/18 02:56:06 $";
const wchar_t kAuthor[] = L"$Author: qmbuild $";

// The keyword's value: what follows its "$Name:" head, trailing '$' removed.
// The blanks around the value stay; readers of the text expect them.
CString KeywordValue(const wchar_t* keyword, int headLength)
{
    CString text(keyword);
    return text.Right(text.GetLength() - headLength).TrimRight(L'$');
}

}  // namespace

namespace QM {

const wchar_t* GetLibVersionNumber()
{
    static CString version;
    version.Format(L"[%s]-[%s]-[%s]", KeywordValue(kRevision, 10).GetString(), KeywordValue(kDate, 6).GetString(),
                   KeywordValue(kAuthor, 8).GetString());
    return version;
}

}  // namespace QM
