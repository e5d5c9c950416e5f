// main.cpp - qmtool: the library's non-window functions from the command line.
#include "qmtool.h"

#include <cerrno>
#include <climits>
#include <cwchar>

namespace qmtool {

namespace {

std::vector<const Command*>& Registry()
{
    static std::vector<const Command*> commands;
    return commands;
}

void Write(DWORD which, const CString& text)
{
    HANDLE stream = GetStdHandle(which);
    DWORD mode = 0, written = 0;
    if (GetConsoleMode(stream, &mode)) {
        WriteConsoleW(stream, text.GetString(), static_cast<DWORD>(text.GetLength()), &written, nullptr);
        return;
    }
    int bytes = WideCharToMultiByte(CP_UTF8, 0, text, text.GetLength(), nullptr, 0, nullptr, nullptr);
    if (bytes <= 0)
        return;
    std::vector<char> utf8(static_cast<size_t>(bytes));
    WideCharToMultiByte(CP_UTF8, 0, text, text.GetLength(), utf8.data(), bytes, nullptr, nullptr);
    WriteFile(stream, utf8.data(), static_cast<DWORD>(bytes), &written, nullptr);
}

int Help()
{
    CString text = L"qmtool - the QMUtil library from the command line\n\nusage: qmtool COMMAND [ARGS] [--help]\n\ncommands:\n";
    for (const Command* c : Registry())
        text.AppendFormat(L"  %-44s %s\n", c->usage, c->summary);
    Out(text);
    return kOk;
}

}  // namespace

Command::Command(const wchar_t* name_, const wchar_t* usage_, const wchar_t* summary_, int (*run_)(const Command&, Args&))
    : name(name_), usage(usage_), summary(summary_), run(run_)
{
    Registry().push_back(this);
}

const std::vector<const Command*>& Commands()
{
    return Registry();
}

bool Args::Flag(const wchar_t* name)
{
    for (auto it = m_words.begin(); it != m_words.end(); ++it)
        if (*it == CString(L"--") + name) {
            m_words.erase(it);
            return true;
        }
    return false;
}

CString Args::Option(const wchar_t* name, bool* present)
{
    if (present != nullptr)
        *present = false;
    for (auto it = m_words.begin(); it != m_words.end(); ++it) {
        if (*it != CString(L"--") + name)
            continue;
        if (it + 1 == m_words.end()) {
            m_error.Format(L"--%s needs a value", name);
            m_words.erase(it);
            return CString();
        }
        CString value = *(it + 1);
        m_words.erase(it, it + 2);
        if (present != nullptr)
            *present = true;
        return value;
    }
    return CString();
}

CString Args::UnknownFlag() const
{
    for (const CString& word : m_words)
        if (word.Left(2) == L"--")
            return word;
    return CString();
}

int Args::Reject(const Command& self, size_t min, size_t max, const wchar_t* why) const
{
    if (!m_error.IsEmpty())
        return Usage(self, m_error);
    if (!UnknownFlag().IsEmpty())
        return Usage(self, L"unknown option " + UnknownFlag());
    if (m_words.size() < min || m_words.size() > max)
        return Usage(self, why);
    return kOk;
}

void Out(const CString& text) { Write(STD_OUTPUT_HANDLE, text); }
void Err(const CString& text) { Write(STD_ERROR_HANDLE, text); }

int Usage(const Command& command, const wchar_t* why)
{
    CString text;
    text.Format(L"qmtool %s: %s\nusage: qmtool %s\n", command.name, why, command.usage);
    Err(text);
    return kUsage;
}

bool ParseInt(const CString& text, int& value)
{
    if (text.IsEmpty())
        return false;
    wchar_t* end = nullptr;
    errno = 0;
    long parsed = std::wcstol(text, &end, 10);
    if (end == nullptr || *end != L'\0' || errno != 0 || parsed < INT_MIN || parsed > INT_MAX)
        return false;
    value = static_cast<int>(parsed);
    return true;
}

bool ReadAll(const wchar_t* path, std::vector<unsigned char>& bytes)
{
    HANDLE file = CreateFileW(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    LARGE_INTEGER size{};
    bool ok = GetFileSizeEx(file, &size) && size.QuadPart < (1LL << 30);
    DWORD got = 0;
    if (ok) {
        bytes.resize(static_cast<size_t>(size.QuadPart));
        ok = bytes.empty() || (ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &got, nullptr) &&
                               got == bytes.size());
    }
    CloseHandle(file);
    return ok;
}

namespace {

HHOOK& EchoHook()
{
    static HHOOK hook = nullptr;
    return hook;
}

// A box of this thread is about to show: print its text, press its default button.
LRESULT CALLBACK EchoBox(int code, WPARAM wParam, LPARAM lParam)
{
    const HWND window = reinterpret_cast<HWND>(wParam);
    wchar_t className[16] = {};
    if (code == HCBT_ACTIVATE && GetClassNameW(window, className, 16) && CString(className) == L"#32770") {
        wchar_t text[2048] = {};
        GetDlgItemTextW(window, 0xFFFF, text, 2048);
        Err(CString(text) + L"\n");
        const LRESULT id = SendMessageW(window, DM_GETDEFID, 0, 0);
        PostMessageW(window, WM_COMMAND, HIWORD(id) == DC_HASDEFID ? LOWORD(id) : IDOK, 0);
    }
    return CallNextHookEx(EchoHook(), code, wParam, lParam);
}

}  // namespace

EchoMessageBoxes::EchoMessageBoxes()
{
    EchoHook() = SetWindowsHookExW(WH_CBT, EchoBox, nullptr, GetCurrentThreadId());
}

EchoMessageBoxes::~EchoMessageBoxes()
{
    if (EchoHook() != nullptr)
        UnhookWindowsHookEx(EchoHook());
    EchoHook() = nullptr;
}

}  // namespace qmtool

int wmain(int argc, wchar_t** argv)
{
    using namespace qmtool;
    if (argc < 2 || CString(argv[1]) == L"--help" || CString(argv[1]) == L"help")
        return argc < 2 ? (Help(), kUsage) : Help();

    for (const Command* command : Commands()) {
        if (CString(argv[1]) != command->name)
            continue;
        std::vector<CString> words(argv + 2, argv + argc);
        Args args(words);
        if (args.Flag(L"help")) {
            CString text;
            text.Format(L"usage: qmtool %s\n  %s\n", command->usage, command->summary);
            Out(text);
            return kOk;
        }
        return command->run(*command, args);
    }
    CString text;
    text.Format(L"qmtool: unknown command '%s' (try qmtool --help)\n", argv[1]);
    Err(text);
    return kUsage;
}
