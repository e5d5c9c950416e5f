// cmd_colour.cpp - qmtool colour: the CAD colour index and RGB colours.
#include "qmtool.h"

namespace qmtool {
namespace {

// Both spellings of the colour: "#RRGGBB" as --bg and the rest of the world
// write it, and the platform's COLORREF, whose lowest byte is red.
CString Describe(int index)
{
    const unsigned long c = QM::CADColorIndexToRGB(index);
    const unsigned long r = c & 0xFF, g = (c >> 8) & 0xFF, b = (c >> 16) & 0xFF;
    CString text;
    text.Format(L"index %d = #%02lX%02lX%02lX (R %lu G %lu B %lu), COLORREF 0x%06lX\n", index, r, g, b, r, g, b, c);
    return text;
}

int RunColour(const Command& self, Args& args)
{
    if (int bad = args.Reject(self))
        return bad;
    const std::vector<CString>& words = args.Positional();
    int n[3] = {0, 0, 0};
    CString why;
    if (words.size() == 2 && words[0] == L"index") {
        if (!ParseInt(words[1], n[0], &why))
            return Usage(self, L"N: " + why);
        if (QM::CADColorIndexToRGB(n[0]) == 0xFFFFFFFFul) {
            Err(L"qmtool colour: the index runs from 0 to 255\n");
            return kFailed;
        }
        Out(Describe(n[0]));
        return kOk;
    }
    if (words.size() == 4 && words[0] == L"nearest") {
        for (int i = 0; i < 3; ++i) {
            if (!ParseInt(words[i + 1], n[i], &why))
                return Usage(self, L"R G B: " + why);
            if (n[i] < 0 || n[i] > 255)
                return Usage(self, L"R G B each run from 0 to 255");
        }
        const int index = QM::GetCADColorIndexNearest(n[0], n[1], n[2]);
        const int exact = QM::IsStandardCADColor(RGB(n[0], n[1], n[2]));
        Out(Describe(index) + (exact == index ? L"exact match\n" : L"nearest, not exact\n"));
        return kOk;
    }
    return Usage(self, L"needs index N or nearest R G B");
}

const Command colour{L"colour", L"colour index N | colour nearest R G B",
                     L"a CAD colour index as RGB, or the nearest index of an RGB colour (components 0 to 255)",
                     RunColour, L"qmtool colour index 1",
                     L"\"index N = #RRGGBB (R G B), COLORREF 0xBBGGRR\"; nearest adds whether the match is exact"};

}  // namespace
}  // namespace qmtool
