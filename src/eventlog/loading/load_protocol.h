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

// Makes the node as new for a load with this query. Returns what the node held. No loader of
// the node may run.
LoadedRecords ResetForLoad(EventNode& node, std::wstring query);

// Claims the node for a load. Returns true if the caller must start the loader, false if the
// channel is being loaded or was loaded.
bool BeginLoad(EventNode& node);

// True if a failed load left records, to which another load would append them once more: reset
// the node before BeginLoad.
bool HasLeftovers(const EventNode& node);

// Makes TakeRecords begin at the first record again.
void RewindRecords(EventNode& node);

// Appends to `records` what the loader added since the last call, and adds to `index`, an
// earlier state of the node's, what it lacks. Returns whether more may follow: the load is
// neither done nor failed. Throws std::bad_alloc and takes nothing.
bool TakeRecords(EventNode& node, EventRecordList& records, SearchIndex& index);

// Lets the loader read 10,000 records beyond those it has read. Never lowers the limit.
void ExtendLoad(EventNode& node);

// Lets the loader read the channel to its end.
void UnlimitLoad(EventNode& node);

// Asks the loader to end and cancels its read. It ends after the step at hand.
void StopLoad(EventNode& node);

// After StopLoad: waits until the loader is in no read, cancelling again what began just after a
// cancel. What is left of the step does not wait for the log.
void AwaitReadEnd(EventNode& node);

// Lets the channel be loaded again after a failure whose records the window has taken.
void AcknowledgeFailure(EventNode& node);

// Whether a list that is about to show the rows up to lastRow nears the end of its rows.
bool NearsEnd(std::int32_t lastRow, std::int32_t rowCount);

// ---- The loader's thread ----

// Waits while the load is at its limit. Returns false if the loader must end.
bool AwaitRoom(EventNode& node);

// Lets the window cancel what its owner reads from a query as long as it lives. The query must
// outlive it.
class PendingRead {
public:
    PendingRead(EventNode& node, void* query);
    PendingRead(const PendingRead&) = delete;
    PendingRead& operator=(const PendingRead&) = delete;
    ~PendingRead();

    // False if the load must stop: nothing may be read then.
    bool MayRead() const { return mayRead_; }

private:
    EventNode& node_;
    bool mayRead_;
};

// Hands a page of records over and raises the loaded count. Throws std::bad_alloc and hands
// nothing over.
void AppendPage(EventNode& node, EventRecordList page);

// The query is exhausted.
void MarkDone(EventNode& node);

// The step at hand fails with this code of the service.
void StoreLoadResult(EventNode& node, std::uint32_t code);

// The load has failed. Stores 1359 (ERROR_INTERNAL_ERROR) if no step stored a code.
void EndFailedLoad(EventNode& node);

}  // namespace tavrin::eventlog
