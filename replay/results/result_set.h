#pragma once

#include "replay/results/reader.h"
#include "replay/results/seek.h"

#include <cstddef>
#include <utility>
#include <vector>

#include <windows.h>

namespace replay::results {

// The object behind a query handle. Reads fail with 15011 after a log was cleared.
class ResultSet final : public Reader {
public:
    explicit ResultSet(ResultCursor cursor) : Reader(std::move(cursor)) {}

    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
               calls::Operation& operation) override;

    // Moves to the target. Returns 1168 as Seek does, or 1223 if the operation is cancelled. A
    // cancelled seek does not move the cursor.
    DWORD SeekTo(const SeekTarget& target, calls::Operation& operation);
};

}  // namespace replay::results
