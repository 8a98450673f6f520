// Parses arbitrary bytes as a script for the replay service.

#include "input.h"
#include "replay/events/event_maker.h"
#include "replay/script/script.h"
#include "replay/text/utf8.h"
#include <algorithm>

using namespace tavrin;
using fuzz::Require;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::wstring text = replay::text::ToWide({reinterpret_cast<const char*>(data), size});
    const replay::script::Script script = replay::script::ReadScript(text);
    const auto lines = static_cast<std::size_t>(std::ranges::count(text, L'\n')) + 1;
    Require(script.faults.size() + script.changes.size() + script.paces.size() +
                    script.channels.size() + script.wrongLines.size() <=
                lines,
            "a line is one thing at most");
    Require(std::ranges::is_sorted(script.wrongLines), "wrong lines are listed in order");
    for (const replay::script::DueChange& change : script.changes) {
        Require(!replay::events::MakeEventXml(change.event).empty(),
                "an event that arrives has XML");
    }
    return 0;
}
