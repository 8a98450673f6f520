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

// A query as read, or why it cannot be.
struct QueryText {
    std::vector<QueryTerm> terms;
    DWORD error = ERROR_SUCCESS;
    std::string reason;  // of an error
};

// Reads the arguments of a query: one XPath expression over the channel (null or "*": all of it),
// or a structured query, which names its channels itself.
QueryText ReadQuery(const wchar_t* channel, const wchar_t* query);

}  // namespace replay::results
