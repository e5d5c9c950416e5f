// cmd_config.cpp - qmtool ini, reg and num: settings files through the
// settings cache, registry strings, and the numeric-text tests.
#include "qmtool.h"

namespace qmtool {
namespace {

// True when `section` holds `key` in the cache (a key with an empty value
// included), which GetSetting alone cannot tell from a default.
bool HasKey(INISetting& ini, const wchar_t* section, const wchar_t* key)
{
    CStringArray keys, values;
    ini.GetAllKeysAndValues(section, keys, values);
    CString upper(key);
    upper.MakeUpper();
    for (INT_PTR i = 0; i < keys.GetSize(); ++i)
        if (keys[i] == upper)
            return true;
    return false;
}

// The characters of `text` that the ANSI code page cannot hold, each once:
// the settings files are ANSI, and such a character would be written as "?".
CString NotInAnsi(const CString& text)
{
    CString bad;
    for (int i = 0; i < text.GetLength(); ++i) {
        const int length = IS_HIGH_SURROGATE(text[i]) && i + 1 < text.GetLength() ? 2 : 1;
        const CString ch = text.Mid(i, length);
        BOOL lost = FALSE;
        char bytes[8];
        WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, ch, length, bytes, sizeof bytes, nullptr, &lost);
        if (lost && bad.Find(ch) < 0)
            bad += ch;
        i += length - 1;
    }
    return bad;
}

int IniGet(const Command& self, const std::vector<CString>& words, bool hasDefault, const CString& fallback)
{
    if (words.size() != 4)
        return Usage(self, L"get needs FILE SECTION KEY");
    INISetting ini;
    if (!ini.SetFilePath(FullPath(words[1]))) {
        // A reader of the setting would get the default: so does this one.
        Err(L"qmtool ini: " + words[1] + L" is missing or holds no keys\n");
        if (!hasDefault)
            return kFailed;
        Out(fallback + L"\n");
        return kOk;
    }
    if (!HasKey(ini, words[2], words[3]) && !hasDefault) {
        Err(L"qmtool ini: " + words[3] + L" is not set in [" + words[2] + L"]\n");
        return kFailed;
    }
    Out(ini.GetSetting(words[3], fallback, words[2]) + L"\n");
    return kOk;
}

int IniSet(const Command& self, const std::vector<CString>& words)
{
    if (words.size() != 5)
        return Usage(self, L"set needs FILE SECTION KEY VALUE");
    const CString lost = NotInAnsi(words[2] + words[3] + words[4]);
    if (!lost.IsEmpty()) {
        Err(L"qmtool ini: the settings file's code page cannot hold " + lost + L"; nothing was written\n");
        return kFailed;
    }
    const CString path = FullPath(words[1]);
    INISetting ini;
    ini.SetFilePath(path);   // a new file is fine: the write creates it
    ini.SetSetting(words[3], words[4], words[2]);
    // What the write's final flush reports differs between platforms; the
    // file read back is what counts.
    INISetting check;
    if (!check.SetFilePath(path) || !HasKey(check, words[2], words[3]) ||
        check.GetSetting(words[3], L"", words[2]) != words[4]) {
        Err(L"qmtool ini: could not write " + words[1] + L"\n");
        return kFailed;
    }
    Out(L"[" + words[2] + L"] " + words[3] + L"=" + words[4] + L"\n");
    return kOk;
}

// Sections in file order (the platform's list), keys in the cache's order.
int IniDump(const Command& self, const std::vector<CString>& words)
{
    if (words.size() != 2 && words.size() != 3)
        return Usage(self, L"dump needs FILE [SECTION]");
    const CString path = FullPath(words[1]);
    INISetting ini;
    if (!ini.SetFilePath(path)) {
        Err(L"qmtool ini: " + words[1] + L" is missing or holds no keys\n");
        return kFailed;
    }
    CStringArray sections;
    if (words.size() == 3) {
        sections.Add(words[2]);
    } else {
        std::vector<wchar_t> names(65536, L'\0');
        GetPrivateProfileSectionNamesW(names.data(), static_cast<DWORD>(names.size()), path);
        QM::Get00Strings(names.data(), sections);
    }
    CString text;
    for (INT_PTR s = 0; s < sections.GetSize(); ++s) {
        CStringArray keys, values;
        if (ini.GetAllKeysAndValues(sections[s], keys, values) == 0)
            continue;
        text += L"[" + sections[s] + L"]\n";
        for (INT_PTR i = 0; i < keys.GetSize(); ++i)
            text += keys[i] + L"=" + values[i] + L"\n";
    }
    Out(text);
    return kOk;
}

int RunIni(const Command& self, Args& args)
{
    bool hasDefault = false;
    const CString fallback = args.Option(L"default", &hasDefault);
    if (int bad = args.Reject(self))
        return bad;
    const std::vector<CString>& words = args.Positional();
    if (words.empty())
        return Usage(self, L"needs get, set or dump");
    if (int bad = args.RejectEmptyPath(self, 1))
        return bad;
    if (hasDefault && words[0] != L"get")
        return Usage(self, L"--default goes with get only");
    if (words[0] == L"get")
        return IniGet(self, words, hasDefault, fallback);
    if (words[0] == L"set")
        return IniSet(self, words);
    if (words[0] == L"dump")
        return IniDump(self, words);
    return Usage(self, L"unknown action " + words[0] + L" (get, set or dump)");
}

bool ParseRoot(CString name, HKEY& root)
{
    name.MakeUpper();
    const struct { const wchar_t* shortName; const wchar_t* longName; HKEY key; } roots[] = {
        {L"HKCU", L"HKEY_CURRENT_USER", HKEY_CURRENT_USER},
        {L"HKLM", L"HKEY_LOCAL_MACHINE", HKEY_LOCAL_MACHINE},
        {L"HKCR", L"HKEY_CLASSES_ROOT", HKEY_CLASSES_ROOT},
        {L"HKU", L"HKEY_USERS", HKEY_USERS},
        {L"HKCC", L"HKEY_CURRENT_CONFIG", HKEY_CURRENT_CONFIG},
    };
    for (const auto& r : roots)
        if (name == r.shortName || name == r.longName) {
            root = r.key;
            return true;
        }
    return false;
}

int RunReg(const Command& self, Args& args)
{
    if (int bad = args.Reject(self))
        return bad;
    const std::vector<CString>& words = args.Positional();
    if (words.empty() || (words[0] != L"get" && words[0] != L"set"))
        return Usage(self, L"needs get or set");
    const bool set = words[0] == L"set";
    if (words.size() != (set ? 5u : 4u))
        return Usage(self, set ? L"set needs ROOT KEY NAME VALUE" : L"get needs ROOT KEY NAME");
    HKEY root = nullptr;
    if (!ParseRoot(words[1], root))
        return Usage(self, L"unknown ROOT " + words[1] + L" (HKCU, HKLM, HKCR, HKU, HKCC or their long names)");
    if (set) {
        if (!QM::SetRegStr(root, words[2], words[3], words[4])) {
            Err(L"qmtool reg: could not write " + words[2] + L"\\" + words[3] + L"\n");
            return kFailed;
        }
        Out(words[2] + L"\\" + words[3] + L"=" + words[4] + L"\n");
        return kOk;
    }
    CString value;
    if (!QM::GetRegStr(root, words[2], words[3], value)) {
        Err(L"qmtool reg: no readable value " + words[3] + L" under " + words[2] + L" (missing, or over 2047 "
            L"characters)\n");
        return kFailed;
    }
    Out(value + L"\n");
    return kOk;
}

int RunNum(const Command& self, Args& args)
{
    if (int bad = args.Reject(self, 1, 1, L"needs exactly one TEXT"))
        return bad;
    const CString& text = args.Positional()[0];
    const struct { const wchar_t* name; bool (*test)(CString); } tests[] = {
        {L"IsNum", QM::IsNum}, {L"IsZero", QM::IsZero}, {L"IsPlusNum", QM::IsPlusNum},
        {L"IsInt", QM::IsInt}, {L"IsPlusInt", QM::IsPlusInt},
    };
    CString out;
    for (const auto& t : tests)
        out.AppendFormat(L"%-10s %s\n", t.name, t.test(text) ? L"yes" : L"no");
    Out(out);
    return kOk;
}

const Command ini{L"ini", L"ini get FILE SECTION KEY [--default TEXT] | ini set FILE SECTION KEY VALUE | ini dump FILE [SECTION]",
                  L"read (get; --default TEXT answers for an absent key or file), write (set) or list (dump) "
                  L"settings through the settings cache",
                  RunIni, L"qmtool ini get k.ini Precision ZERO --default 0.000001",
                  L"get: the value; set: \"[SECTION] KEY=VALUE\"; dump: the sections with their keys"};
const Command reg{L"reg", L"reg get|set ROOT KEY NAME [VALUE]",
                  L"read or write a registry string (ROOT: HKCU, HKLM, ... or HKEY_CURRENT_USER, ...)", RunReg,
                  L"qmtool reg get HKCU 'Software\\Tarvel' Path", L"get: the value; set: \"KEY\\NAME=VALUE\""};
const Command num{L"num", L"num TEXT", L"which numeric-text tests TEXT passes", RunNum, L"qmtool num ' -0 '",
                  L"one line a test: IsNum, IsZero, IsPlusNum, IsInt, IsPlusInt with yes or no"};

}  // namespace
}  // namespace qmtool
