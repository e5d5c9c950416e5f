// TestText.h - byte texts the configuration tests put into or expect in files.
#pragma once
#include "support/TempDir.h"

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

}  // namespace qmtest
