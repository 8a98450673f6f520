#include "replay/recording/channel_config.h"

#include "replay/text/blanks.h"
#include "replay/text/numbers.h"
#include "replay/text/utf8.h"

#include <iterator>
#include <vector>

namespace replay::recording {
namespace {

constexpr std::string_view kTypes[] = {"Admin", "Operational", "Analytic", "Debug"};

std::optional<ChannelType> ReadType(std::string_view text) {
    for (std::uint32_t i = 0; i < std::size(kTypes); ++i) {
        if (kTypes[i] == text) {
            return static_cast<ChannelType>(i);
        }
    }
    return std::nullopt;
}

// Parses a list of levels such as "1,2,3". Skips anything that is not a number from 0 to 255.
std::vector<std::uint8_t> ReadLevels(std::string_view list) {
    std::vector<std::uint8_t> levels;
    while (!list.empty()) {
        const std::size_t comma = list.find(',');
        if (const auto level = text::ParseNumber<std::uint8_t>(text::Trim(list.substr(0, comma)))) {
            levels.push_back(*level);
        }
        list.remove_prefix(comma == std::string_view::npos ? list.size() : comma + 1);
    }
    return levels;
}

std::optional<events::SyntheticPlan> ReadPlan(const Property& property) {
    const auto events = property("events");
    if (!events) {
        return std::nullopt;
    }
    events::SyntheticPlan plan;
    plan.events = text::ParseNumber<std::uint64_t>(*events).value_or(0);
    if (const auto providers = property("providers")) {
        plan.providers = text::ParseNumber<std::uint32_t>(*providers).value_or(1);
    }
    if (const auto levels = property("levels")) {
        plan.levels = ReadLevels(*levels);
    }
    if (const auto rate = property("rate")) {
        plan.eventsPerSecond =
            static_cast<double>(text::ParseNumber<std::uint64_t>(*rate).value_or(1));
    }
    return plan;
}

}  // namespace

std::optional<ChannelConfig> ReadChannelConfig(const Property& property) {
    const auto name = property("name");
    const auto type = ReadType(property("type").value_or("Operational"));
    if (!name || name->empty() || !type) {
        return std::nullopt;
    }
    ChannelConfig config;
    config.name = text::ToWide(*name);
    config.type = *type;
    config.publisher = text::ToWide(property("owningPublisher").value_or(""));
    config.enabled = property("enabled").value_or("true") == "true";
    config.denied = property("access").value_or("") == "denied";
    config.forwarded = property("forwarded").value_or("") == "yes";
    config.synthetic = ReadPlan(property);
    return config;
}

}  // namespace replay::recording
