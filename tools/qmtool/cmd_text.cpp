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

int RunNth(const Command& self, Args& args)
{
    const bool strip = args.Flag(L"strip-quotes");
    if (int bad = args.Reject(self))
        return bad;
    int n = 0;
    if (args.Positional().size() != 2)
        return Usage(self, L"needs LIST and N");
    if (!ParseInt(args.Positional()[1], n))
        return Usage(self, L"N must be an integer");
    Out(QM::Nth(args.Positional()[0], n, strip) + L"\n");
    return kOk;
}

const Command split{L"split", L"split TEXT [--delim C] [--quotes]",
                    L"the fields of TEXT (delimiter ',' unless given; --quotes honours \"...\")", RunSplit};
const Command nth{L"nth", L"nth LIST N [--strip-quotes]", L"element N (from 0) of a CAD list such as (1 \"a\" (2 3))",
                  RunNth};

}  // namespace
}  // namespace qmtool
