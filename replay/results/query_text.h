#pragma once

#include "replay/xpath/xpath.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

namespace replay::results {

// One Select or Suppress of a query.
struct QueryTerm {
    std::wstring channel;
    std::shared_ptr<const xpath::Expression> xpath;
    bool suppress = false;
};

// A parsed query, or its error.
struct QueryText {
    std::vector<QueryTerm> terms;
    DWORD error = ERROR_SUCCESS;
    std::string reason;  // describes the error
};

// Parses the arguments of EvtQuery: an XPath expression over `channel` (null or "*" selects every
// event), or a structured query, which names its channels.
QueryText ReadQuery(const wchar_t* channel, const wchar_t* query);

}  // namespace replay::results
