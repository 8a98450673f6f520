#pragma once

#include <cstdint>
#include <string>

#include "eventlog/event_node.h"

namespace tavrin::eventlog {

// How the window thread steers a node's loader. Window thread only.

// Makes the node as new for a load with this query, and gives back the records that it
// held. No loader of the node may run.
EventRecordList ResetForLoad(EventNode& node, std::wstring query);

// Lets the loader go on to the next 10,000 records beyond those it has read. Never
// lowers the limit.
void ExtendLoad(EventNode& node);

// Lets the loader read the channel to its end.
void UnlimitLoad(EventNode& node);

// Asks the loader to end; it does after the step that it is in.
void StopLoad(EventNode& node);

// Whether a list that is about to show the rows up to lastRow nears the end of its rows.
bool NearsEnd(std::int32_t lastRow, std::int32_t rowCount);

}  // namespace tavrin::eventlog
