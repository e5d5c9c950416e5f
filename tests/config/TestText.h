// TestText.h - byte texts for the configuration tests: what the code under
// test should find in, or put into, a file.
#pragma once
#include <QMUtil.h>

#include <string>

namespace qmtest {

// `text` in the thread's ANSI code page (936 in the test prefix).
inline std::string Ansi(const wchar_t* text)
{
    const int bytes = WideCharToMultiByte(CP_THREAD_ACP, 0, text, -1, nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<size_t>(bytes), '\0');   // the NUL included
    WideCharToMultiByte(CP_THREAD_ACP, 0, text, -1, &out[0], bytes, nullptr, nullptr);
    out.resize(out.size() - 1);
    return out;
}

// A value as the platform's own profile reader sees it.
inline CString Profile(const wchar_t* section, const wchar_t* key, const wchar_t* path)
{
    wchar_t buffer[4096];
    GetPrivateProfileStringW(section, key, L"<absent>", buffer, 4096, path);
    return CString(buffer);
}

}  // namespace qmtest
