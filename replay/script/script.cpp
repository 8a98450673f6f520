#include "replay/script/script.h"

#include "replay/recording/channel_list.h"
#include "replay/text/channel_name.h"
#include "replay/text/utf8.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace replay::script {
namespace {

using namespace std::chrono_literals;

// Limits each cost so that sums of many do not overflow.
constexpr std::uint64_t kHighestCostUs = 3'600'000'000;

std::optional<std::chrono::microseconds> Microseconds(const ScriptLine& line,
                                                      std::wstring_view key) {
    const auto number = line.Number(key);
    if (!number) {
        return std::nullopt;
    }
    return std::chrono::microseconds(std::min(*number, kHighestCostUs));
}

std::optional<PaceSetting> ReadPace(const ScriptLine& line) {
    PaceSetting setting;
    if (line.target != L"*") {
        setting.function = calls::FindApiFunction(line.target);
        if (!setting.function) {
            return std::nullopt;
        }
    }
    setting.call = Microseconds(line, L"call-us").value_or(0us);
    setting.event = Microseconds(line, L"event-us").value_or(0us);
    return setting;
}

std::optional<ScanSetting> ReadScan(const ScriptLine& line) {
    const auto skip = Microseconds(line, L"skip-us");
    if (!skip || !line.target.empty()) {
        return std::nullopt;
    }
    return ScanSetting{text::FoldCase(line.Text(L"channel").value_or(L"")), *skip};
}

std::optional<recording::ChannelConfig> ReadChannel(const ScriptLine& line) {
    return recording::ReadChannelConfig(
        [&line](std::string_view name) -> std::optional<std::string> {
            const auto text = line.Text(text::ToWide(name));
            if (!text) {
                return std::nullopt;
            }
            return text::ToUtf8(*text);
        });
}

template <typename Item>
bool Take(std::optional<Item> item, std::vector<Item>& items) {
    if (item) {
        items.push_back(std::move(*item));
    }
    return item.has_value();
}

bool TakeLine(const ScriptLine& line, Script& script) {
    if (line.verb.empty()) {
        return line.values.empty();
    }
    if (line.verb == L"pace") {
        return Take(ReadPace(line), script.paces);
    }
    if (line.verb == L"scan") {
        return Take(ReadScan(line), script.scans);
    }
    if (line.verb == L"channel") {
        return Take(ReadChannel(line), script.channels);
    }
    if (line.verb == L"log") {
        return Take(calls::FindApiFunction(line.target), script.logged);
    }
    if (line.verb == L"arrive" || line.verb == L"clear") {
        return Take(ReadDueChange(line), script.changes);
    }
    return Take(ReadFaultRule(line), script.faults);
}

}  // namespace

Script ReadScript(std::wstring_view text) {
    Script script;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find(L'\n');
        const auto line = ReadScriptLine(text.substr(0, end));
        if (!line || !TakeLine(*line, script)) {
            script.wrongLines.push_back(number);
        }
        text.remove_prefix(end == std::wstring_view::npos ? text.size() : end + 1);
    }
    return script;
}

}  // namespace replay::script
