#pragma once

#include "replay/results/reader.h"
#include "replay/results/seek.h"

#include <cstddef>
#include <utility>
#include <vector>

#include <windows.h>

namespace replay::results {

// What a query handle stands for. Fails with 15011 once a log was cleared.
class ResultSet final : public Reader {
public:
    explicit ResultSet(ResultCursor cursor) : Reader(std::move(cursor)) {}

    DWORD Take(std::size_t most, std::vector<events::EventPlace>& events,
               calls::Operation& operation) override;

    // Moves to the target; 1168 as Seek says, 1223 when the operation is cancelled. A cancelled
    // seek moves nothing.
    DWORD SeekTo(const SeekTarget& target, calls::Operation& operation);
};

}  // namespace replay::results
