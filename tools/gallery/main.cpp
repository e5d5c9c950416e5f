// main.cpp - the gallery: one dialog, as the suite's applications make
// them, showing the library's controls section by section.
//
//   gallery                      run it
//   gallery --screenshot F.png   lay it out, paint it, save a picture, exit
#include "Gallery.h"

#include "common/WindowImage.h"

#include <algorithm>
#include <cwchar>
#include <memory>
#include <string>

namespace gallery {

std::vector<Page>& PageList()
{
    static std::vector<Page> pages;
    return pages;
}

// Pages register before main() in no set order; their id hundreds order them.
bool AddPage(Page page)
{
    auto& pages = PageList();
    const auto firstId = [](const Page& p) { return p.items.empty() ? 0 : p.items.front().id; };
    auto at = pages.begin();
    while (at != pages.end() && firstId(*at) < firstId(page))
        ++at;
    pages.insert(at, std::move(page));
    return true;
}

const std::vector<Page>& Pages()
{
    return PageList();
}

void PointMouse(HWND window, int x, int y)
{
    POINT point{x, y};
    ::ClientToScreen(window, &point);
    INPUT move{};
    move.type = INPUT_MOUSE;
    move.mi.dwFlags = MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE;
    move.mi.dx = point.x * 65535 / (::GetSystemMetrics(SM_CXSCREEN) - 1);
    move.mi.dy = point.y * 65535 / (::GetSystemMetrics(SM_CYSCREEN) - 1);
    ::SendInput(1, &move, sizeof(move));
}

} // namespace gallery

namespace {

constexpr short kMargin = 7;
// The suite's users' smallest screen: the whole dialog must fit on it.
constexpr SIZE kSmallestScreen{1024, 768};

void PutText(std::vector<WORD>& out, const wchar_t* text)
{
    for (; text != nullptr && *text != L'\0'; ++text)
        out.push_back(static_cast<WORD>(*text));
    out.push_back(0);
}

void PutItem(std::vector<WORD>& out, DWORD style, short x, short y, short cx, short cy, WORD id,
             const wchar_t* className, const wchar_t* text)
{
    if (out.size() % 2 != 0)
        out.push_back(0);
    for (DWORD value : {style | WS_CHILD | WS_VISIBLE, DWORD(0)})
    {
        out.push_back(LOWORD(value));
        out.push_back(HIWORD(value));
    }
    for (short value : {x, y, cx, cy})
        out.push_back(static_cast<WORD>(value));
    out.push_back(id);
    PutText(out, className);
    PutText(out, text);
    out.push_back(0);
}

// The sections two to a row, each framed by a group box with its title.
// Item count and size are written into the header once known; each
// section's place (dialog units) goes to `sections`.
std::vector<WORD> BuildTemplate(std::vector<RECT>& sections)
{
    std::vector<WORD> out;
    for (DWORD value : {DWORD(DS_SETFONT | DS_MODALFRAME | DS_CENTER | WS_POPUP | WS_CAPTION | WS_SYSMENU), DWORD(0)})
    {
        out.push_back(LOWORD(value));
        out.push_back(HIWORD(value));
    }
    out.insert(out.end(), {0, 0, 0, 0, 0, 0, 0});  // count, x, y, cx, cy, no menu, standard class
    PutText(out, L"QMUtil 控件示例");
    out.push_back(9);
    PutText(out, L"宋体");
    const auto& pages = gallery::Pages();
    WORD count = 0;
    short x = kMargin, y = kMargin, rowHeight = 0, width = 0;
    for (size_t i = 0; i < pages.size(); ++i)
    {
        const gallery::Page& page = pages[i];
        PutItem(out, BS_GROUPBOX, x, y, page.cx, page.cy, 0xFFFF, L"BUTTON", page.title);
        sections.push_back(RECT{x, y, x + page.cx, y + page.cy});
        ++count;
        for (const gallery::Item& item : page.items)
        {
            PutItem(out, item.style, x + item.x, y + 12 + item.y, item.cx, item.cy, item.id, item.className, item.text);
            ++count;
        }
        rowHeight = std::max(rowHeight, page.cy);
        width = std::max<short>(width, x + page.cx + kMargin);
        x += page.cx + kMargin;
        if (i % 2 == 1)
        {
            x = kMargin;
            y += rowHeight + kMargin;
            rowHeight = 0;
        }
    }
    out[4] = count;
    out[7] = static_cast<WORD>(width);
    out[8] = static_cast<WORD>(y + rowHeight + kMargin);
    return out;
}

INT_PTR CALLBACK DialogProc(HWND dialog, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message)
    {
    case WM_INITDIALOG:
        for (const gallery::Page& page : gallery::Pages())
            if (page.init)
                page.init(dialog);
        return TRUE;
    case WM_COMMAND:
        if (LOWORD(wParam) == IDCANCEL)
        {
            ::EndDialog(dialog, IDCANCEL);
            return TRUE;
        }
        for (const gallery::Page& page : gallery::Pages())
            if (page.command && page.command(dialog, LOWORD(wParam), HIWORD(wParam)))
                return TRUE;
        return FALSE;
    default:
        for (const gallery::Page& page : gallery::Pages())
        {
            LRESULT result = 0;
            if (page.message && page.message(dialog, message, wParam, lParam, result))
            {
                ::SetWindowLongPtrW(dialog, DWLP_MSGRESULT, result);
                return TRUE;
            }
        }
        return FALSE;
    }
}

void Pump(DWORD milliseconds)
{
    const DWORD start = ::GetTickCount();
    while (::GetTickCount() - start < milliseconds)
    {
        MSG msg;
        while (::PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE))
        {
            ::TranslateMessage(&msg);
            ::DispatchMessageW(&msg);
        }
        ::Sleep(10);
    }
}

// Puts one page in its pictured state: the mouse on the control whose tool
// tip it shows, and its pose.
void Pose(HWND dialog, const gallery::Page& page)
{
    if (page.hoverId != 0)
    {
        const HWND control = ::GetDlgItem(dialog, page.hoverId);
        ::SetFocus(control);
        gallery::PointMouse(control, 12, 6);
    }
    if (page.pose)
        page.pose(dialog);
}

// Copies a section of one picture of the dialog into another; `section` is
// in dialog units, the pictures hold the whole window.
void CopySection(HWND dialog, RECT section, HBITMAP from, HBITMAP to)
{
    RECT window{};
    ::GetWindowRect(dialog, &window);
    ::MapDialogRect(dialog, &section);
    ::MapWindowPoints(dialog, nullptr, reinterpret_cast<POINT*>(&section), 2);
    ::OffsetRect(&section, -window.left, -window.top);
    const HDC source = ::CreateCompatibleDC(nullptr), target = ::CreateCompatibleDC(nullptr);
    const HGDIOBJ oldSource = ::SelectObject(source, from), oldTarget = ::SelectObject(target, to);
    ::BitBlt(target, section.left, section.top, section.right - section.left, section.bottom - section.top, source,
             section.left, section.top, SRCCOPY);
    ::SelectObject(source, oldSource);
    ::SelectObject(target, oldTarget);
    ::DeleteDC(source);
    ::DeleteDC(target);
}

// Pages are posed one at a time and each section is taken as its pose left
// it: a pop-up holding the mouse or the focus would otherwise close another
// page's editor or hide its tool tip.
int Screenshot(const std::vector<WORD>& dialogTemplate, const std::vector<RECT>& sections, const wchar_t* path)
{
    HWND dialog = ::CreateDialogIndirectParamW(::GetModuleHandleW(nullptr),
                                               reinterpret_cast<LPCDLGTEMPLATEW>(dialogTemplate.data()), nullptr,
                                               &DialogProc, 0);
    if (dialog == nullptr)
        return 1;
    ::ShowWindow(dialog, SW_SHOW);
    ::SetForegroundWindow(dialog);
    Pump(300);
    RECT frame{};
    ::GetWindowRect(dialog, &frame);
    const LONG screenWidth = ::GetSystemMetrics(SM_CXSCREEN), screenHeight = ::GetSystemMetrics(SM_CYSCREEN);
    if (frame.right - frame.left > kSmallestScreen.cx || frame.bottom - frame.top > kSmallestScreen.cy ||
        frame.left < 0 || frame.top < 0 || frame.right > screenWidth || frame.bottom > screenHeight)
    {
        fwprintf(stderr, L"gallery: the dialog (%ld x %ld at %ld,%ld) does not fit a %ld x %ld screen\n",
                 frame.right - frame.left, frame.bottom - frame.top, frame.left, frame.top,
                 std::min(screenWidth, kSmallestScreen.cx), std::min(screenHeight, kSmallestScreen.cy));
        ::DestroyWindow(dialog);
        return 1;
    }
    // The last page's picture holds every page at rest or as posed last;
    // the sections posed before it are copied in from their own pictures.
    const auto& pages = gallery::Pages();
    std::vector<HBITMAP> taken(pages.size(), nullptr);
    for (size_t i = 0; i < pages.size(); ++i)
    {
        if (pages[i].hoverId == 0 && !pages[i].pose && i + 1 < pages.size())
            continue;
        Pose(dialog, pages[i]);
        Pump(1500);
        ::RedrawWindow(dialog, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
        Pump(200);
        taken[i] = qmimage::CaptureWindow(dialog);
    }
    HBITMAP picture = taken.empty() ? nullptr : taken.back();
    for (size_t i = 0; picture != nullptr && i + 1 < pages.size(); ++i)
        if (taken[i] != nullptr)
            CopySection(dialog, sections[i], taken[i], picture);
    const HRESULT hr = picture == nullptr ? E_FAIL : qmimage::SavePng(picture, path);
    for (HBITMAP bitmap : taken)
        if (bitmap != nullptr)
            ::DeleteObject(bitmap);
    ::DestroyWindow(dialog);
    if (FAILED(hr))
        fwprintf(stderr, L"gallery: cannot write %ls (0x%08lX)\n", path, static_cast<unsigned long>(hr));
    return FAILED(hr) ? 1 : 0;
}

} // namespace

int wmain(int argc, wchar_t** argv)
{
    const bool screenshot = argc == 3 && std::wstring(argv[1]) == L"--screenshot";
    if (argc != 1 && !screenshot)
    {
        fwprintf(stderr, L"usage: gallery [--screenshot FILE.png]\n");
        return 2;
    }
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const INITCOMMONCONTROLSEX classes{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES | ICC_DATE_CLASSES};
    ::InitCommonControlsEx(&classes);
    std::vector<RECT> sections;
    const std::vector<WORD> dialogTemplate = BuildTemplate(sections);
    const int result = screenshot ? Screenshot(dialogTemplate, sections, argv[2])
                                  : (::DialogBoxIndirectParamW(::GetModuleHandleW(nullptr),
                                                               reinterpret_cast<LPCDLGTEMPLATEW>(dialogTemplate.data()),
                                                               nullptr, &DialogProc, 0) == -1);
    ::CoUninitialize();
    return result;
}
