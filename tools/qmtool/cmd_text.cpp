// cmd_text.cpp - qmtool split and nth: the string splitting functions.
#include "qmtool.h"

namespace qmtool {
namespace {

int RunSplit(const Command& self, Args& args)
{
    const bool quotes = args.Flag(L"quotes");
    bool hasDelim = false;
    CString delim = args.Option(L"delim", &hasDelim);
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one TEXT"))
        return bad;
    if (hasDelim && delim.GetLength() != 1)
        return Usage(self, L"--delim takes exactly one character");

    CStringArray fields;
    const wchar_t separator = hasDelim ? delim[0] : L',';
    QM::SeparateString(args.Positional()[0], separator, fields, quotes);
    CString text;
    text.Format(L"%d field(s)\n", static_cast<int>(fields.GetSize()));
    for (INT_PTR i = 0; i < fields.GetSize(); ++i)
        text.AppendFormat(L"[%d] %s\n", static_cast<int>(i), fields[i].GetString());
    Out(text);
    return kOk;
}

// An element reads as "" both inside the list (an empty one) and past its
// end; the count is one past the last index that reads as something. A list
// has no more elements than characters.
int ElementCount(const CString& list)
{
    for (int i = list.GetLength(); i >= 0; --i)
        if (!QM::Nth(list, i, false).IsEmpty())
            return i + 1;
    return 0;
}

int RunNth(const Command& self, Args& args)
{
    const bool strip = args.Flag(L"strip-quotes");
    if (int bad = args.Reject(self))
        return bad;
    int n = 0;
    CString why;
    if (args.Positional().size() != 2)
        return Usage(self, L"needs LIST and N");
    if (!ParseInt(args.Positional()[1], n, &why) || n < 0)
        return Usage(self, n < 0 ? CString(L"N counts from 0") : L"N: " + why);
    const CString& list = args.Positional()[0];
    const CString element = QM::Nth(list, n, strip);
    if (element.IsEmpty() && n >= ElementCount(list)) {
        CString text;
        text.Format(L"qmtool nth: element %d is past the end of the list (%d element(s))\n", n, ElementCount(list));
        Err(text);
        return kFailed;
    }
    Out(element + L"\n");
    return kOk;
}

const Command split{L"split", L"split TEXT [--delim C] [--quotes]",
                    L"the fields of TEXT (delimiter ',' unless given; --quotes honours \"...\")", RunSplit,
                    L"qmtool split '\"a,b\",c' --quotes", L"the field count, then one line \"[i] field\" each"};
const Command nth{L"nth", L"nth LIST N [--strip-quotes]", L"element N (from 0) of a CAD list such as (1 \"a\" (2 3))",
                  RunNth, L"qmtool nth '(1 \"a b\" (2 3))' 2",
                  L"the element on one line (an empty element as an empty line); past the end: exit 1"};

}  // namespace
}  // namespace qmtool
