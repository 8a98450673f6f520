// Builds a channel's query and evaluates it with the replay service: it must select exactly the
// events of the chosen sources within the time range.

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "input.h"
#include "query/query_builder.h"
#include "replay/events/channel_log.h"
#include "replay/results/query_text.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_text.h"

using namespace tavrin;
using fuzz::Require;

namespace {

constexpr std::uint64_t kTicksPerMillisecond = 10'000;           // resolution of a query's times
constexpr std::uint64_t kLastMillisecond = 265'046'774'399'999;  // of the year 9999
constexpr std::size_t kMostNames = 40;                           // more than two Selects

// A log with one event of this provider and time.
class OneEvent final : public replay::events::EventSource {
public:
    OneEvent(const std::wstring& provider, std::uint64_t time)
        : EventSource(L""),
          provider_(replay::text::ToUtf8(provider)),
          raw_(replay::text::EncodeXml(provider_)),
          time_(time) {}

    std::uint64_t Count() const override { return 1; }
    std::uint64_t Bytes() const override { return 0; }
    replay::events::EventFacts Facts(std::uint64_t) const override { return {1, time_, provider_}; }
    replay::events::SystemFields System(std::uint64_t) const override {
        replay::events::SystemFields fields;
        fields.providerName = raw_;
        fields.timeCreated = time_;
        return fields;
    }
    std::string Xml(std::uint64_t) const override { return {}; }
    std::string RenderedXml(std::uint64_t) const override { return {}; }
    std::size_t XmlSize(std::uint64_t) const override { return 0; }
    std::optional<std::string> Rendering(std::uint64_t,
                                         replay::events::RenderingPart) const override {
        return std::nullopt;
    }
    bool CarriesRendering(std::uint64_t) const override { return false; }
    std::optional<std::uint64_t> Find(std::uint64_t) const override { return std::nullopt; }
    bool HasMessageOf(std::string_view) const override { return false; }

private:
    const std::string provider_;
    const std::string raw_;
    const std::uint64_t time_;
};

bool Selects(const replay::results::QueryText& query, const std::wstring& provider,
             std::uint64_t time) {
    const replay::events::ChannelLog log(std::make_shared<OneEvent>(provider, time));
    return std::ranges::any_of(query.terms, [&log](const replay::results::QueryTerm& term) {
        replay::xpath::EventView event(log, 0);
        return term.xpath->Matches(event);
    });
}

struct Filters {
    std::wstring path;
    query::TimeRangeFilter range;
    query::SourceSet chosen;

    // The chosen names without those that contain both kinds of quotes.
    query::SourceSet Writable() const {
        query::SourceSet names = chosen;
        std::erase_if(names, [](const std::wstring& name) {
            return name.find(L'"') != std::wstring::npos && name.find(L'\'') != std::wstring::npos;
        });
        return names;
    }
    bool Covers(std::uint64_t time) const {
        return (!range.hasFrom || time >= range.from) && (!range.hasTo || time < range.to);
    }
};

Filters ReadFilters(FuzzedDataProvider& input) {
    const auto time = [&input] {
        return kTicksPerMillisecond *
               input.ConsumeIntegralInRange<std::uint64_t>(0, kLastMillisecond);
    };
    Filters filters;
    filters.range = {
        .hasFrom = input.ConsumeBool(), .hasTo = input.ConsumeBool(), .from = time(), .to = time()};
    filters.path = fuzz::ZeroFreeText(input.ConsumeRandomLengthString());
    while (input.remaining_bytes() > 0 && filters.chosen.size() < kMostNames) {
        filters.chosen.insert(fuzz::ZeroFreeText(input.ConsumeRandomLengthString()));
    }
    return filters;
}

void CheckSelection(const Filters& filters, const replay::results::QueryText& query) {
    const query::SourceSet names = filters.Writable();
    std::vector<std::wstring> providers(filters.chosen.begin(), filters.chosen.end());
    providers.insert(providers.end(), {L"", L"\"", L"'", L"Other", filters.path});
    const std::uint64_t times[] = {1, filters.range.from - 1, filters.range.from,
                                   filters.range.to - 1, filters.range.to};
    for (const std::wstring& provider : providers) {
        for (const std::uint64_t time : times) {
            const bool wanted = (names.empty() || names.contains(provider)) && filters.Covers(time);
            // Skips time 0: every event of the service has a time.
            Require(time == 0 || Selects(query, provider, time) == wanted,
                    "the query selects exactly the events that match the filters");
        }
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const Filters filters = ReadFilters(input);
    const std::wstring text = query::BuildQueryText(filters.path, filters.range, filters.chosen);
    const bool filtered =
        filters.range.hasFrom || filters.range.hasTo || !filters.Writable().empty();
    Require(text.empty() != filtered, "the query is empty only without filters");
    if (!filtered) {
        return 0;
    }
    const replay::results::QueryText query = replay::results::ReadQuery(nullptr, text.c_str());
    Require(query.error == ERROR_SUCCESS, "the query can be read");
    for (const replay::results::QueryTerm& term : query.terms) {
        Require(term.channel == filters.path && !term.suppress,
                "each term selects from the channel");
    }
    CheckSelection(filters, query);
    return 0;
}
