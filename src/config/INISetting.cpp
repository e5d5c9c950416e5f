// INISetting.cpp - the settings cache: one hash map of sections, each a hash
// map of keys, filled from the private-profile functions at every bind.
#include "config/INISetting.h"
#include "config/IniHelpers.h"
#include "frame/Messages.h"
#include "fs/PathParts.h"
#include "platform/File.h"
#include "text/StringSplit.h"

#include <algorithm>
#include <climits>
#include <new>

namespace {

// The length the section-name list is fetched with. The buffer is never
// allocated shorter than this, so a small file cannot be overrun by it.
const DWORD kSectionNamesChars = 40957;

struct SectionRecord
{
    CMapStringToString keys;   // upper-cased key name -> value text
    CString name;              // upper-cased section name
};

bool IsPrime(UINT n)
{
    for (UINT d = 2; d * d <= n; ++d)
        if (n % d == 0)
            return false;
    return true;
}

// A prime bucket count a third above `count`: chains stay about one entry
// long, which is what makes a look-up cost one hash and one compare.
UINT HashSizeFor(INT_PTR count)
{
    UINT size = std::max<UINT>(17, static_cast<UINT>(count + count / 3 + 1));
    while (!IsPrime(size))
        ++size;
    return size;
}

CString Upper(const wchar_t* name)
{
    CString upper(name);
    upper.MakeUpper();
    return upper;
}

int SaturatedInt(double value)
{
    return value >= static_cast<double>(INT_MAX) ? INT_MAX : static_cast<int>(value);
}

}  // namespace

INISetting::INISetting() : m_pSectionNames(nullptr)
{
}

INISetting::INISetting(const wchar_t* path) : m_pSectionNames(nullptr)
{
    SetFilePath(path);
}

INISetting::~INISetting()
{
    ClearMap();
    delete[] m_pSectionNames;
}

bool INISetting::SetFilePath(const wchar_t* path)
{
    m_strFilePath = path;
    return ReadFile();
}

CString INISetting::GetFilePath()
{
    return m_strFilePath;
}

CString INISetting::GetSetting(const wchar_t* key, const wchar_t* defaultValue, const wchar_t* section)
{
    void* found = nullptr;
    if (m_mapSections.Lookup(Upper(section), found)) {
        CString value;
        if (static_cast<SectionRecord*>(found)->keys.Lookup(Upper(key), value))
            return value;
    }
    return CString(defaultValue);
}

bool INISetting::SetSetting(const wchar_t* key, const wchar_t* value, const wchar_t* section)
{
    if (QM::IsNULL(key) || QM::IsNULL(section))
        return false;
    const CString upperSection = Upper(section), upperKey = Upper(key);
    void* found = nullptr;
    auto* record = m_mapSections.Lookup(upperSection, found) ? static_cast<SectionRecord*>(found) : nullptr;
    CString old;
    if (record != nullptr && record->keys.Lookup(upperKey, old)) {
        record->keys[upperKey] = value;
    } else {
        // The cached section is replaced, not extended: callers have always
        // seen the other keys of the section fall back to their defaults
        // until the file is bound again.
        auto* fresh = new SectionRecord;
        fresh->keys[upperKey] = value;
        fresh->name = upperSection;
        delete record;
        m_mapSections[upperSection] = fresh;
    }
    if (m_strFilePath.IsEmpty())
        return false;
    CStringArray keys, values;
    keys.Add(key);
    values.Add(value);
    return QM::WriteIni(section, keys, values, m_strFilePath);
}

int INISetting::GetAllKeysAndValues(const wchar_t* section, CStringArray& keys, CStringArray& values)
{
    keys.RemoveAll();
    values.RemoveAll();
    void* found = nullptr;
    if (!m_mapSections.Lookup(Upper(section), found))
        return 0;
    const CMapStringToString& map = static_cast<SectionRecord*>(found)->keys;
    for (POSITION pos = map.GetStartPosition(); pos != nullptr;) {
        CString key, value;
        map.GetNextAssoc(pos, key, value);
        keys.Add(key);
        values.Add(value);
    }
    return static_cast<int>(keys.GetSize());
}

bool INISetting::ReadFile()
{
    // A missing file keeps what the previous bind read.
    CFileStatus status;
    if (!CFile::GetStatus(m_strFilePath, status))
        return false;

    delete[] m_pSectionNames;
    m_pSectionNames = nullptr;
    const double wanted = static_cast<double>(status.m_size) * 1.5;
    if (wanted < static_cast<double>(INT_MAX))
        m_pSectionNames = new (std::nothrow) wchar_t[std::max<DWORD>(static_cast<DWORD>(wanted), kSectionNamesChars)];
    if (m_pSectionNames == nullptr) {
        CString message;
        message.Format(L"ini文件分配内存错！\n[%d]字节", SaturatedInt(static_cast<double>(status.m_size) * 1.2));
        QM::ShowMessage(nullptr, message, L"X");
        return !m_mapSections.IsEmpty();
    }

    CStringArray names;
    if (GetPrivateProfileSectionNamesW(m_pSectionNames, kSectionNamesChars, m_strFilePath) == 0 ||
        QM::Get00Strings(m_pSectionNames, names) == 0)
        return !m_mapSections.IsEmpty();

    ClearMap();
    m_mapSections.InitHashTable(HashSizeFor(names.GetSize()));
    for (INT_PTR i = 0; i < names.GetSize(); ++i) {
        auto* record = new SectionRecord;
        if (!QM::ReadIni(names[i], record->keys, m_strFilePath, true)) {
            delete record;   // a section without keys is never stored
            continue;
        }
        record->keys.InitHashTable(HashSizeFor(record->keys.GetCount()));
        record->name = Upper(names[i]);
        void* earlier = nullptr;
        if (m_mapSections.Lookup(record->name, earlier))
            delete static_cast<SectionRecord*>(earlier);
        m_mapSections[record->name] = record;
    }
    return !m_mapSections.IsEmpty();
}

void INISetting::ClearMap()
{
    for (POSITION pos = m_mapSections.GetStartPosition(); pos != nullptr;) {
        CString name;
        void* record = nullptr;
        m_mapSections.GetNextAssoc(pos, name, record);
        delete static_cast<SectionRecord*>(record);
    }
    m_mapSections.RemoveAll();
}
