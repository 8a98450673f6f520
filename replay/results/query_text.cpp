#include "replay/results/query_text.h"

#include "replay/text/blanks.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_reader.h"
#include "replay/text/xml_text.h"

#include <utility>

#include <winevt.h>

namespace replay::results {
namespace {

QueryText Failed(DWORD error, std::string reason) {
    return {{}, error, std::move(reason)};
}

// Adds a term; false when its XPath is wrong.
bool AddTerm(QueryText& query, std::wstring channel, std::string_view xpath, bool suppress) {
    auto compiled = xpath::Expression::Compile(xpath, query.reason);
    if (compiled == nullptr) {
        query.error = ERROR_EVT_INVALID_QUERY;
        return false;
    }
    query.terms.push_back({std::move(channel), std::move(compiled), suppress});
    return true;
}

std::optional<std::wstring> Path(const text::XmlReader& reader) {
    const auto raw = reader.Attribute("Path");
    if (!raw) {
        return std::nullopt;
    }
    return text::ToWide(text::DecodeXml(*raw));
}

// Reads the term whose start the reader just read. Its path stands on it, on the Query around it
// or in the call.
bool ReadTerm(text::XmlReader& reader, const std::optional<std::wstring>& outer, QueryText& query) {
    const bool suppress = reader.Name() == "Suppress";
    const std::optional<std::wstring> own = Path(reader);
    const std::optional<std::wstring>& channel = own ? own : outer;
    if (!channel) {
        query = Failed(ERROR_EVT_INVALID_QUERY, "a term without a path");
        return false;
    }
    const auto xpath = reader.ReadText();
    if (!xpath) {
        query = Failed(ERROR_EVT_MALFORMED_XML_TEXT, reader.Damage().reason);
        return false;
    }
    return AddTerm(query, *channel, *xpath, suppress);
}

QueryText ReadStructuredQuery(const std::string& document, const wchar_t* channel) {
    QueryText query;
    std::optional<std::wstring> called;
    if (channel != nullptr) {
        called = channel;
    }
    std::optional<std::wstring> path = called;
    text::XmlReader reader(document);
    for (text::XmlToken token = reader.Next(); token != text::XmlToken::kDone;
         token = reader.Next()) {
        if (token == text::XmlToken::kDamaged) {
            return Failed(ERROR_EVT_MALFORMED_XML_TEXT, reader.Damage().reason);
        }
        if (token != text::XmlToken::kStart) {
            continue;
        }
        if (reader.Name() == "Query") {
            path = Path(reader);
            if (!path) {
                path = called;
            }
        } else if (reader.Name() == "Select" || reader.Name() == "Suppress") {
            if (!ReadTerm(reader, path, query)) {
                return query;
            }
        } else if (reader.Name() != "QueryList") {
            return Failed(ERROR_EVT_INVALID_QUERY, "unknown element " + std::string(reader.Name()));
        }
    }
    if (query.terms.empty()) {
        return Failed(ERROR_EVT_INVALID_QUERY, "nothing is selected");
    }
    return query;
}

}  // namespace

QueryText ReadQuery(const wchar_t* channel, const wchar_t* query) {
    const std::string text = query == nullptr ? "*" : text::ToUtf8(query);
    if (text::Trim(text).starts_with('<')) {
        return ReadStructuredQuery(text, channel);
    }
    if (channel == nullptr) {
        return Failed(ERROR_INVALID_PARAMETER, "no channel is named");
    }
    QueryText read;
    AddTerm(read, channel, text::Trim(text).empty() ? "*" : text, false);
    return read;
}

}  // namespace replay::results
