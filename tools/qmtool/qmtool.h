// qmtool.h - the command-line front end's shared pieces.
//
//   static int RunNth(const Command& self, Args& args) { ... }
//   static Command nth{L"nth", L"nth LIST N", L"element N of a CAD list", RunNth,
//                      L"qmtool nth '(1 2 3)' 1", L"the element, one line"};
//
// Every command file registers its commands with a static Command object;
// main() finds them by name. Exit codes: 0 success, 1 the operation failed,
// 2 a usage error.
#pragma once
#include <QMUtil.h>

#include <cstdint>
#include <vector>

namespace qmtool {

enum ExitCode { kOk = 0, kFailed = 1, kUsage = 2 };

struct Command;

// The words after the command name, with flags taken out as they are asked
// for. A word "--" ends the options: every word after it is positional, so a
// text that starts with "--" can be passed.
class Args
{
public:
    explicit Args(std::vector<CString> words);

    // Removes `--name` and reports whether it was there; given twice sets `m_error`.
    bool Flag(const wchar_t* name);
    // Removes `--name VALUE` and returns VALUE; `present` tells whether it
    // was given. A flag without its value, or given twice, sets `m_error`.
    CString Option(const wchar_t* name, bool* present = nullptr);
    // The positional words left once every flag was taken.
    const std::vector<CString>& Positional() const { return m_words; }
    // A word still starting with "--" that no command asked for, or empty.
    CString UnknownFlag() const;
    // Once the flags are taken: 0 when the words are fine, else the usage
    // error (a flag's missing value, an unknown flag, or a count of
    // positional words outside [min, max], explained by `why`).
    int Reject(const Command& self, size_t min = 0, size_t max = SIZE_MAX, const wchar_t* why = L"") const;
    // A usage error when positional word `index` is present but empty: an
    // empty path would otherwise mean the current drive or folder.
    int RejectEmptyPath(const Command& self, size_t index) const;

    CString m_error;

private:
    // Index of the first word after "--" (or the end): flags are looked for before it only.
    size_t m_optionsEnd;
    std::vector<CString> m_words;

    std::vector<CString>::iterator Find(const CString& word);
};

struct Command
{
    Command(const wchar_t* name, const wchar_t* usage, const wchar_t* summary, int (*run)(const Command&, Args&),
            const wchar_t* example, const wchar_t* prints);

    const wchar_t* name;
    const wchar_t* usage;
    const wchar_t* summary;
    int (*run)(const Command&, Args&);
    const wchar_t* example;   // one command line, shown by --help
    const wchar_t* prints;    // what a success prints
};

const std::vector<const Command*>& Commands();

// Writes to standard output / standard error: the console in UTF-16 when it
// is one, UTF-8 bytes when the stream is redirected.
void Out(const CString& text);
void Err(const CString& text);
// Prints "usage: qmtool USAGE" plus `why` to standard error; returns kUsage.
int Usage(const Command& command, const wchar_t* why);
// Parses a decimal integer; false on anything else, with the reason in
// `why` ("... is not an integer" or "... is too large").
bool ParseInt(const CString& text, int& value, CString* why = nullptr);
// PATH made absolute against the current folder (as it stands when that
// fails): the profile functions take a name without a folder to mean the
// Windows folder, and on the command line it means the current folder.
CString FullPath(const CString& path);
// The whole content of a file (at most 1 GB); false when it cannot be read.
bool ReadAll(const wchar_t* path, std::vector<unsigned char>& bytes);

// While it lives, the message boxes the library shows on this thread are
// answered with their default button at once and their text goes to
// standard error: a command never waits for a user who is not there.
class EchoMessageBoxes
{
public:
    EchoMessageBoxes();
    ~EchoMessageBoxes();
    EchoMessageBoxes(const EchoMessageBoxes&) = delete;
    EchoMessageBoxes& operator=(const EchoMessageBoxes&) = delete;
};

}  // namespace qmtool
