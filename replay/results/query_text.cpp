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

// Adds a term. Returns false if its XPath is invalid.
bool AddTerm(QueryText& query, std::wstring channel, std::string_view xpath, bool suppress) {
    auto compiled = xpath::Expression::Compile(xpath, query.reason);
    if (compiled == nullptr) {
        query.error = ERROR_EVT_INVALID_QUERY;
        return false;
    }
    query.terms.push_back({std::move(channel), std::move(compiled), suppress});
    return true;
}

// Parses a structured query. The path of a term comes from its own element, from the enclosing
// Query element or from the call.
class StructuredQueryReader {
public:
    StructuredQueryReader(std::string_view document, const wchar_t* channel) : reader_(document) {
        if (channel != nullptr) {
            calledPath_ = channel;
        }
        path_ = calledPath_;
    }

    QueryText Read() {
        for (;;) {
            switch (reader_.Next()) {
                case text::XmlToken::kDone:
                    return query_.terms.empty()
                               ? Failed(ERROR_EVT_INVALID_QUERY, "nothing is selected")
                               : std::move(query_);
                case text::XmlToken::kDamaged:
                    return Failed(ERROR_EVT_MALFORMED_XML_TEXT, reader_.Damage().reason);
                case text::XmlToken::kStart:
                    if (!ReadElement()) {
                        return std::move(query_);
                    }
                    break;
                case text::XmlToken::kEnd:
                case text::XmlToken::kText: break;
            }
        }
    }

private:
    std::optional<std::wstring> Path() const {
        const auto raw = reader_.Attribute("Path");
        if (!raw) {
            return std::nullopt;
        }
        return text::ToWide(text::DecodeXml(*raw));
    }

    // Reads the rest of an element after its start tag. On failure stores the error in query_ and
    // returns false.
    bool ReadElement() {
        const std::string_view name = reader_.Name();
        if (name == "Select" || name == "Suppress") {
            return ReadTerm(name == "Suppress");
        }
        if (name == "Query") {
            const auto own = Path();
            path_ = own ? own : calledPath_;
        } else if (name != "QueryList") {
            query_ = Failed(ERROR_EVT_INVALID_QUERY, "unknown element " + std::string(name));
            return false;
        }
        return true;
    }

    bool ReadTerm(bool suppress) {
        const auto own = Path();
        const std::optional<std::wstring>& channel = own ? own : path_;
        if (!channel) {
            query_ = Failed(ERROR_EVT_INVALID_QUERY, "a term without a path");
            return false;
        }
        const auto xpath = reader_.ReadText();
        if (!xpath) {
            query_ = Failed(ERROR_EVT_MALFORMED_XML_TEXT, reader_.Damage().reason);
            return false;
        }
        return AddTerm(query_, *channel, *xpath, suppress);
    }

    text::XmlReader reader_;
    std::optional<std::wstring> calledPath_;
    std::optional<std::wstring> path_;
    QueryText query_;
};

}  // namespace

QueryText ReadQuery(const wchar_t* channel, const wchar_t* query) {
    const std::string text = query == nullptr ? "*" : text::ToUtf8(query);
    if (text::Trim(text).starts_with('<')) {
        return StructuredQueryReader(text, channel).Read();
    }
    if (channel == nullptr) {
        return Failed(ERROR_INVALID_PARAMETER, "no channel is named");
    }
    QueryText read;
    AddTerm(read, channel, text::Trim(text).empty() ? "*" : text, false);
    return read;
}

}  // namespace replay::results
