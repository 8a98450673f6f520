#pragma once

#include <cstdint>
#include <string>

#include "eventlog/channels/event_node.h"

namespace tavrin::eventlog {

// The protocol between the window and a channel's loader, over the loading fields of an
// EventNode. Only these functions lock the node's mutexes and store to its atomics; any
// thread may read an atomic.
//
//   window                                    loader
//   ResetForLoad, to read the log anew
//   BeginLoad; if true, starts a loader       AwaitRoom
//   TakeRecords, every 50 ms while it         AppendPage, MarkDone or
//     says that more follows                    StoreLoadResult, by what the step read
//   ExtendLoad, UnlimitLoad                   AwaitRoom, for the next step
//   StopLoad, AwaitReadEnd                    PendingRead, around each read
//   AcknowledgeFailure                        EndFailedLoad
//
// `loading` is set by BeginLoad, so that a load is started once. A load that succeeded
// keeps it: showing the channel again takes the same records without reading the log. A
// failed load clears it, so that showing the channel reads the log again: the loader clears
// it if it handed nothing over (EndFailedLoad), otherwise the window does once it has taken
// the records (AcknowledgeFailure). ResetForLoad clears it in any case.

// ---- The window thread ----

// Resets the node for a load with this query. Returns the records it held. No loader of the node
// may run.
LoadedRecords ResetForLoad(EventNode& node, std::wstring query);

// Claims the node for a load. Returns true if the caller must start the loader, false if the
// channel is being loaded or was loaded.
bool BeginLoad(EventNode& node);

// True if a failed load left records. Another load would append them once more, so reset the node
// before BeginLoad.
bool HasLeftovers(const EventNode& node);

// Makes TakeRecords begin at the first record again.
void RewindRecords(EventNode& node);

// Adds to `taken` what the loader added since the last call. `taken` must be empty after a rewind,
// and otherwise be what was taken before. Returns whether more may follow: the load is neither
// done nor failed. On std::bad_alloc no record is taken.
bool TakeRecords(EventNode& node, LoadedRecords& taken);

// Lets the loader read 10,000 records beyond those it has read. Never lowers the limit.
void ExtendLoad(EventNode& node);

// Lets the loader read the channel to its end.
void UnlimitLoad(EventNode& node);

// Asks the loader to end and cancels its read. The loader ends after the current step.
void StopLoad(EventNode& node);

// Waits, after StopLoad, until the loader is in no read. Cancels again: a read may begin just after
// a cancel. The rest of the step does not wait for the log.
void AwaitReadEnd(EventNode& node);

// Lets a failed channel be loaded again, once the window has taken its records.
void AcknowledgeFailure(EventNode& node);

// Whether lastRow is near enough to the end of the list to read ahead.
bool NearsEnd(std::int32_t lastRow, std::int32_t rowCount);

// ---- The loader's thread ----

// Waits while the load is at its limit. Returns false if the loader must end.
bool AwaitRoom(EventNode& node);

// Marks a read of a query as pending while it lives, so that the window can cancel it. The query
// must outlive it.
class PendingRead {
public:
    PendingRead(EventNode& node, void* query);
    PendingRead(const PendingRead&) = delete;
    PendingRead& operator=(const PendingRead&) = delete;
    ~PendingRead();

    // False if the load must stop; then nothing may be read.
    bool MayRead() const { return mayRead_; }

private:
    EventNode& node_;
    bool mayRead_;
};

// Hands a page of records over and raises the loaded count. On std::bad_alloc nothing is handed
// over.
void AppendPage(EventNode& node, EventRecordList page);

// Records that the query is exhausted.
void MarkDone(EventNode& node);

// Stores the code with which the current step failed.
void StoreLoadResult(EventNode& node, std::uint32_t code);

// Ends a failed load. Stores 1359 (ERROR_INTERNAL_ERROR) if no step stored a code.
void EndFailedLoad(EventNode& node);

}  // namespace tavrin::eventlog
