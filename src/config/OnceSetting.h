// OnceSetting.h - a start-up setting read at its first use and kept for the
// life of the process; later re-binds of the start-up file are not seen.
//
//   static OnceSetting name(L"SoftName", L"", L"System");
//   return name.Get();
//
// Internal to the library: the few settings that callers have always seen
// fixed for the process use it, each from its one accessor.
#pragma once
#include "config/INISetting.h"

class OnceSetting
{
public:
    OnceSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section)
        : m_key(key), m_default(defaultValue), m_section(section)
    {
    }

    const CString& Get()
    {
        if (!m_read) {
            m_value = QM::CInitSetting().GetSetting(m_key, m_default, m_section);
            m_read = true;
        }
        return m_value;
    }

private:
    const wchar_t* m_key;
    const wchar_t* m_default;
    const wchar_t* m_section;
    bool m_read = false;
    CString m_value;
};
