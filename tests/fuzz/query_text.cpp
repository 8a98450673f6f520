// Parses arbitrary text as a query and evaluates it over an event that has most fields.

#include "replay/results/query_text.h"

#include <memory>

#include "input.h"
#include "replay/events/recorded_source.h"

using namespace tavrin;
using fuzz::Require;

namespace {

constexpr char kEvent[] =
    "<Event><System><Provider Name='A &amp; B' Guid='{555908d1-a6d7-4695-8e1e-26931d2012f4}'/>"
    "<EventID Qualifiers='16384'>7036</EventID><Version>0</Version><Level>4</Level><Task>1</Task>"
    "<Opcode>2</Opcode><Keywords>0x8080000000000000</Keywords>"
    "<TimeCreated SystemTime='2024-03-01T08:00:00.1234567Z'/><EventRecordID>9</EventRecordID>"
    "<Execution ProcessID='516' ThreadID='1792'/><Channel>C</Channel><Computer>H</Computer>"
    "<Security UserID='S-1-5-18'/></System></Event>";

const replay::events::ChannelLog& Log() {
    static const replay::events::ChannelLog log = [] {
        replay::events::RecordedSource::Extent extent;
        return replay::events::ChannelLog(std::make_shared<replay::events::RecordedSource>(
            L"C", std::make_shared<replay::platform::OwnedBytes>(kEvent), extent));
    }();
    return log;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = fuzz::ZeroFreeText({reinterpret_cast<const char*>(data), size});
    const replay::results::QueryText query = replay::results::ReadQuery(L"C", text.c_str());
    Require(query.error != ERROR_SUCCESS || !query.terms.empty(), "a query selects something");
    Require((query.error == ERROR_SUCCESS) == query.reason.empty(),
            "exactly a failure has a reason");
    for (const replay::results::QueryTerm& term : query.terms) {
        replay::xpath::EventView event(Log(), 0);
        const bool matches = term.xpath->Matches(event);
        Require(matches || !term.xpath->MatchesAll(), "a term that matches all matches this event");
    }
    return 0;
}
