// ListingTest.cpp - file and folder listings with their suffix rules.
#include <gtest/gtest.h>

#include "support/TempDir.h"

#include <set>

namespace {

TEST(ListingTest, SuffixRulesForFilesAndFolders)
{
    qmtest::TempDir dir;
    for (const wchar_t* file : {L"drawing.dwg", L"plan.DWG", L"xgd.dwg", L"notes.txt", L"locked.dwg"})
        dir.WriteFile(file, "x");
    SetFileAttributesW(dir.Path() + L"locked.dwg", FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
    for (const wchar_t* sub : {L"x.DWG", L"proj", L"y.dwg.old", L"pdwg"})
        CreateDirectoryW(dir.Path() + sub, nullptr);
    const CString folder = dir.Path(), trailing = folder + L"\\\\", missing = folder + L"missing";
    using Names = std::set<std::wstring>;
    const struct { const char* row; decltype(&QM::GetPathFiles) list; const wchar_t *folder, *name, *ext; bool keepExt;
                   Names expected; } rows[] = {
        // A character-set trim: "xgd.dwg" loses ".dwg" and "gd"; "plan.DWG" keeps its suffix (exact compare).
        {"files trimmed", QM::GetPathFiles, folder, L"*", L"dwg", false, {L"drawin", L"plan.DWG", L"x", L"locke"}},
        {"files kept", QM::GetPathFiles, folder, L"*", L"dwg", true,
         {L"drawing.dwg", L"plan.DWG", L"xgd.dwg", L"locked.dwg"}},
        {"dots and backslashes", QM::GetPathFiles, trailing, L"d*", L"..dwg", true, {L"drawing.dwg"}},
        // Folders carry no archive attribute in Wine: the "*.*" search finds them and drops them.
        {"no folders as files", QM::GetPathFiles, folder, L"*", L"*", true,
         {L"drawing.dwg", L"plan.DWG", L"xgd.dwg", L"notes.txt", L"locked.dwg"}},
        // Folders lose exactly the suffix, ignoring case.
        {"folders trimmed", QM::GetPathDirs, folder, L"*", L"dwg", false, {L"x"}},
        {"folders but dots", QM::GetPathDirs, folder, L"*", L"*", false, {L"x.DWG", L"proj", L"y.dwg.old", L"pdwg"}},
        {"last suffix only", QM::GetPathDirs, folder, L"*", L"old", false, {L"y.dwg"}},
        {"missing folder", QM::GetPathFiles, missing, L"*", L"*", true, {}},
        {"null folder", QM::GetPathDirs, nullptr, nullptr, nullptr, true, {}},
    };
    for (const auto& row : rows) {
        CStringArray out;
        out.Add(L"left over from an earlier call");
        EXPECT_EQ(row.list(row.folder, out, row.name, row.ext, row.keepExt), static_cast<int>(row.expected.size()))
            << row.row;
        Names names;
        for (INT_PTR i = 0; i < out.GetSize(); ++i)
            names.insert(out[i].GetString());
        EXPECT_EQ(names, row.expected) << row.row;
    }
}

}  // namespace
