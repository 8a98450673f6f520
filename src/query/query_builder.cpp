#include "query/query_builder.h"

#include <algorithm>
#include <span>
#include <vector>

#include <windows.h>

#include "base/decimal_text.h"
#include "base/xml_escape.h"
#include "diag/debug_trace.h"
#include "eventlog/channels/event_node.h"

namespace tavrin::query {
namespace {

using base::AppendDecimal;

// The service refuses a Select with more than about 20 terms.
constexpr std::size_t kProvidersPerSelect = 16;

std::wstring TimeClause(const TimeRangeFilter& range) {
    std::wstring clause;
    if (!range.hasFrom && !range.hasTo) {
        return clause;
    }
    clause += L"TimeCreated[";
    if (range.hasFrom) {
        clause.append(L"@SystemTime>='").append(FormatQueryTime(range.from)).append(L"'");
    }
    if (range.hasFrom && range.hasTo) {
        clause += L" and ";
    }
    if (range.hasTo) {
        clause.append(L"@SystemTime<'").append(FormatQueryTime(range.to)).append(L"'");
    }
    return clause.append(L"]");
}

// The names as literals. The query language has no escape, so a name with both kinds of quotes is
// left out.
std::vector<std::wstring> QuotedNames(const SourceSet& names) {
    std::vector<std::wstring> quoted;
    for (const std::wstring& name : names) {
        const bool hasQuotation = name.find(L'"') != std::wstring::npos;
        if (hasQuotation && name.find(L'\'') != std::wstring::npos) {
            diag::DebugTrace(L"BuildChannelQuery: skipping provider with both quote kinds: " +
                             name);
            continue;
        }
        const std::wstring quote(1, hasQuotation ? L'\'' : L'"');
        quoted.push_back(std::wstring(quote).append(name).append(quote));
    }
    return quoted;
}

std::wstring ProviderClause(std::span<const std::wstring> quotedNames) {
    std::wstring clause = L"Provider[";
    for (const std::wstring& name : quotedNames) {
        if (&name != &quotedNames.front()) {
            clause += L" or ";
        }
        clause.append(L"@Name=").append(name);
    }
    return clause.append(L"]");
}

std::wstring Both(std::wstring_view providers, std::wstring_view timeClause) {
    return std::wstring(L"(").append(providers).append(L") and ").append(timeClause);
}

void AppendProviderSelects(std::wstring& document, std::wstring_view path,
                           std::span<const std::wstring> names, const std::wstring& timeClause) {
    while (!names.empty()) {
        const auto group = names.first(std::min(names.size(), kProvidersPerSelect));
        names = names.subspan(group.size());
        const std::wstring providers = ProviderClause(group);
        AppendSelect(document, path, timeClause.empty() ? providers : Both(providers, timeClause));
    }
}

}  // namespace

std::wstring BuildChannelQuery(const eventlog::EventNode& node) {
    return BuildQueryText(node.id, g_timeRangeFilter, g_sourceFilterTable[&node].selectedSources);
}

std::wstring BuildQueryText(std::wstring_view channelPath, const TimeRangeFilter& timeRange,
                            const SourceSet& selectedSources) {
    const std::wstring timeClause = TimeClause(timeRange);
    const std::vector<std::wstring> names = QuotedNames(selectedSources);
    if (names.empty() && timeClause.empty()) {
        return {};
    }
    const std::wstring path = base::XmlEscape(channelPath);
    std::wstring document =
        std::wstring(L"<QueryList><Query Id='0' Path='").append(path).append(L"'>");
    if (names.empty()) {
        AppendSelect(document, path, timeClause);
    } else {
        AppendProviderSelects(document, path, names, timeClause);
    }
    return document.append(L"</Query></QueryList>");
}

std::wstring FormatQueryTime(std::uint64_t fileTime) {
    const FILETIME utc{static_cast<DWORD>(fileTime), static_cast<DWORD>(fileTime >> 32)};
    SYSTEMTIME fields{};
    FileTimeToSystemTime(&utc, &fields);
    std::wstring text;
    const auto append = [&text](WORD number, int width, const wchar_t* separator) {
        AppendDecimal(text, number, width);
        text += separator;
    };
    append(fields.wYear, 4, L"-");
    append(fields.wMonth, 2, L"-");
    append(fields.wDay, 2, L"T");
    append(fields.wHour, 2, L":");
    append(fields.wMinute, 2, L":");
    append(fields.wSecond, 2, L".");
    append(fields.wMilliseconds, 3, L"Z");
    return text;
}

void AppendSelect(std::wstring& document, std::wstring_view escapedPath, std::wstring_view clause) {
    document.append(L"<Select Path='")
        .append(escapedPath)
        .append(L"'>")
        .append(base::XmlEscape(std::wstring(L"*[System[").append(clause).append(L"]]")))
        .append(L"</Select>");
}

}  // namespace tavrin::query
