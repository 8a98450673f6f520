#include "replay/script/due_change.h"

#include "replay/text/utf8.h"

#include <string_view>

namespace replay::script {
namespace {

std::string Utf8Value(const ScriptLine& line, std::wstring_view key, std::string_view otherwise) {
    const auto text = line.Text(key);
    return text ? text::ToUtf8(*text) : std::string(otherwise);
}

}  // namespace

std::optional<DueChange> ReadDueChange(const ScriptLine& line) {
    const auto channel = line.Text(L"channel");
    if (!channel || !line.target.empty()) {
        return std::nullopt;
    }
    DueChange change;
    change.atMs = line.Number(L"at").value_or(0);
    change.channel = *channel;
    change.clear = line.verb == L"clear";
    change.xml = Utf8Value(line, L"xml", "");
    events::MadeEvent& event = change.event;
    event.provider = Utf8Value(line, L"provider", event.provider);
    event.eventId = static_cast<std::uint32_t>(line.Number(L"id").value_or(event.eventId));
    event.level = static_cast<std::uint32_t>(line.Number(L"level").value_or(event.level));
    event.keywords = line.Number(L"keywords").value_or(event.keywords);
    event.recordId = line.Number(L"record").value_or(0);
    event.data = Utf8Value(line, L"data", "");
    event.message = Utf8Value(line, L"message", "");
    return change;
}

}  // namespace replay::script
