// page_numedit.cpp - the numeric edit boxes, with their tool tips.
#include "Gallery.h"

namespace {

enum : WORD { IDC_WIDTH = 1101, IDC_ANGLE, IDC_COUNT };

CNumEditEx& Box(int index)
{
    static CNumEditEx boxes[3];
    return boxes[index];
}

const bool registered = gallery::AddPage({
    L"数值编辑框",
    170,
    78,
    {{L"STATIC", L"宽度 (10～100):", SS_LEFT, 0xFFFF, 8, 4, 70, 10},
     {L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_WIDTH, 80, 2, 80, 13},
     {L"STATIC", L"角度 (-360～360):", SS_LEFT, 0xFFFF, 8, 22, 70, 10},
     {L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_ANGLE, 80, 20, 80, 13},
     {L"STATIC", L"数量 (仅整数):", SS_LEFT, 0xFFFF, 8, 40, 70, 10},
     {L"EDIT", L"", ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP, IDC_COUNT, 80, 38, 80, 13}},
    [](HWND dialog) {
        CWnd* parent = CWnd::FromHandle(dialog);
        const struct
        {
            WORD id;
            const wchar_t *def, *min, *max;
            int integerOnly;
        } boxes[] = {{IDC_WIDTH, L"50", L"10", L"100", 0}, {IDC_ANGLE, L"0", L"-360", L"360", 0},
                     {IDC_COUNT, L"3", L"1", L"99", 1}};
        for (int i = 0; i < 3; ++i)
        {
            Box(i).SubclassDlgItem(boxes[i].id, parent);
            Box(i).m_bIntegerOnly = boxes[i].integerOnly;
            Box(i).SetAllValue(boxes[i].def, boxes[i].min, boxes[i].max);
        }
    },
    nullptr,
    IDC_WIDTH});

} // namespace
