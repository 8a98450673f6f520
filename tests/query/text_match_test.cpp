#include "query/text_match.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "eventlog/records/event_record.h"

namespace tavrin::query {
namespace {

using eventlog::EventRecord;

TEST(ContainsFolded, FoldsOnlyTheLettersAToZ) {
    const struct {
        const wchar_t* text;
        const wchar_t* needle;
        bool contains;
    } cases[] = {
        {L"Application Error", L"error", true},
        {L"Application Error", L"ERROR", true},
        {L"MSIINSTALLER", L"msi", true},
        {L"MsiInstaller", L"Installer", true},
        {L"abc", L"abcd", false},
        {L"abc", L"abc", true},
        {L"ababac", L"abac", true},
        {L"abc", L"", true},
        {L"", L"", true},
        {L"", L"a", false},
        {L"Az", L"aZ", true},
        {L"@[`{", L"`{", true},
        {L"@", L"`", false},  // neighbours of the letters are not folded
        {L"[", L"{", false},
        {L"\x00c4", L"\x00e4", false},  // accented letters match only themselves
        {L"\x00e4", L"\x00e4", true},
        {L"\x0130", L"i", false},
        {L"\x212a", L"k", false},  // the kelvin sign does not match k
    };
    for (const auto& [text, needle, contains] : cases) {
        EXPECT_EQ(ContainsFolded(text, needle), contains)
            << testing::PrintToString(std::wstring(text)) << " and "
            << testing::PrintToString(std::wstring(needle));
    }
}

// Each field contains text that no other field contains.
const EventRecord kRecord(987654321, 24680, 1357, 2, {2024, 3, 5, 7, 9, 3}, L"Acme-Print Spooler",
                          L"OnlyTheShortName", 0x8020000000000000);

TEST(MatchesTextFilter, LooksIntoProviderLevelTimeAndProcess) {
    const struct {
        const wchar_t* text;
        bool matches;
    } cases[] = {
        {L"", true},
        {L"print", true},
        {L"acme-print spooler", true},
        {L"eRRoR", true},
        {L"05/03/2024", true},
        {L"07:09:03", true},
        {L"1357", true},
        {L"35", true},
        {L"24680", false},             // not the event ID
        {L"987654321", false},         // nor the record ID
        {L"OnlyTheShortName", false},  // nor the short source name
        {L"Information", false},
        {L"Error05", false},  // no match spans two fields
        {L"Acme-Print Spooler and more", false},
    };
    for (const auto& [text, matches] : cases) {
        EXPECT_EQ(MatchesTextFilter(kRecord, text), matches)
            << testing::PrintToString(std::wstring(text));
    }
}

TEST(MatchesTextFilter, LooksIntoTheLevelsName) {
    const EventRecord audit(1, 1, 1, 7, {}, L"P", L"P", 0);

    EXPECT_TRUE(MatchesTextFilter(audit, L"audit fail"));
}

}  // namespace
}  // namespace tavrin::query
