// main.cpp - qmtool: the library's non-window functions from the command line.
#include "qmtool.h"

#include <algorithm>
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

Command::Command(const wchar_t* name_, const wchar_t* usage_, const wchar_t* summary_, int (*run_)(const Command&, Args&),
                 const wchar_t* example_, const wchar_t* prints_)
    : name(name_), usage(usage_), summary(summary_), run(run_), example(example_), prints(prints_)
{
    Registry().push_back(this);
}

const std::vector<const Command*>& Commands()
{
    return Registry();
}

Args::Args(std::vector<CString> words) : m_optionsEnd(words.size()), m_words(std::move(words))
{
    for (size_t i = 0; i < m_words.size(); ++i)
        if (m_words[i] == L"--") {
            m_words.erase(m_words.begin() + static_cast<std::ptrdiff_t>(i));
            m_optionsEnd = i;
            break;
        }
}

std::vector<CString>::iterator Args::Find(const CString& word)
{
    const auto end = m_words.begin() + static_cast<std::ptrdiff_t>(m_optionsEnd);
    const auto it = std::find(m_words.begin(), end, word);
    return it == end ? m_words.end() : it;
}

bool Args::Flag(const wchar_t* name)
{
    const CString flag = CString(L"--") + name;
    auto it = Find(flag);
    if (it == m_words.end())
        return false;
    m_words.erase(it);
    --m_optionsEnd;
    if (Find(flag) != m_words.end() && m_error.IsEmpty())
        m_error = flag + L" is given twice";
    return true;
}

CString Args::Option(const wchar_t* name, bool* present)
{
    if (present != nullptr)
        *present = false;
    const CString flag = CString(L"--") + name;
    auto it = Find(flag);
    if (it == m_words.end())
        return CString();
    if (static_cast<size_t>(it - m_words.begin()) + 1 >= m_optionsEnd) {
        m_error = flag + L" needs a value";
        m_words.erase(it);
        --m_optionsEnd;
        return CString();
    }
    CString value = *(it + 1);
    m_words.erase(it, it + 2);
    m_optionsEnd -= 2;
    if (Find(flag) != m_words.end() && m_error.IsEmpty())
        m_error = flag + L" is given twice";
    if (present != nullptr)
        *present = true;
    return value;
}

CString Args::UnknownFlag() const
{
    for (size_t i = 0; i < m_optionsEnd; ++i)
        if (m_words[i].Left(2) == L"--")
            return m_words[i];
    return CString();
}

int Args::RejectEmptyPath(const Command& self, size_t index) const
{
    return index < m_words.size() && m_words[index].IsEmpty() ? Usage(self, L"an empty path names nothing") : kOk;
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

bool ParseInt(const CString& text, int& value, CString* why)
{
    wchar_t* end = nullptr;
    errno = 0;
    const long long parsed = text.IsEmpty() ? 0 : std::wcstoll(text, &end, 10);
    const bool number = !text.IsEmpty() && end != nullptr && *end == L'\0';
    const bool fits = number && errno == 0 && parsed >= INT_MIN && parsed <= INT_MAX;
    if (why != nullptr)
        *why = L"'" + text + (number ? L"' is too large" : L"' is not an integer");
    if (!fits)
        return false;
    value = static_cast<int>(parsed);
    return true;
}

CString FullPath(const CString& path)
{
    wchar_t full[MAX_PATH];
    const DWORD length = GetFullPathNameW(path, MAX_PATH, full, nullptr);
    return length == 0 || length >= MAX_PATH ? path : CString(full);
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

// A box of this thread has just been set up (its text is in place once its
// WM_INITDIALOG returns, whatever its style): print the text, press its
// default button.
LRESULT CALLBACK EchoBox(int code, WPARAM wParam, LPARAM lParam)
{
    const auto* call = reinterpret_cast<const CWPRETSTRUCT*>(lParam);
    wchar_t className[16] = {};
    if (code == HC_ACTION && call->message == WM_INITDIALOG && GetClassNameW(call->hwnd, className, 16) &&
        CString(className) == L"#32770") {
        wchar_t text[2048] = {};
        GetDlgItemTextW(call->hwnd, 0xFFFF, text, 2048);
        Err(CString(text) + L"\n");
        const LRESULT id = SendMessageW(call->hwnd, DM_GETDEFID, 0, 0);
        PostMessageW(call->hwnd, WM_COMMAND, HIWORD(id) == DC_HASDEFID ? LOWORD(id) : IDOK, 0);
    }
    return CallNextHookEx(EchoHook(), code, wParam, lParam);
}

}  // namespace

EchoMessageBoxes::EchoMessageBoxes()
{
    EchoHook() = SetWindowsHookExW(WH_CALLWNDPROCRET, EchoBox, nullptr, GetCurrentThreadId());
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
            text.Format(L"usage: qmtool %s\n  %s\n\nexample: %s\nprints:  %s\nexit:    0 done, 1 failed (the reason on "
                        L"standard error), 2 usage error\n",
                        command->usage, command->summary, command->example, command->prints);
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
