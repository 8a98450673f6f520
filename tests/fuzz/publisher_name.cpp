// Derives a channel's folders and leaf name from arbitrary names.

#include <vector>

#include "eventlog/channels/channel_enumeration.h"
#include "eventlog/records/event_record.h"
#include "input.h"

using namespace tavrin;
using fuzz::Require;

namespace {

constexpr std::size_t kMostParts = 3;

void CheckParts(const std::wstring& publisher) {
    std::vector<std::wstring> parts = {L"from before"};
    const int count = eventlog::SplitPublisherName(publisher, parts);
    Require(static_cast<std::size_t>(count) == parts.size(), "the result is the number of parts");
    Require(parts.size() <= kMostParts, "there are at most three parts");
    Require(parts.empty() == publisher.empty(), "only an empty name has no parts");
    if (parts.empty()) {
        return;
    }
    std::wstring joined = parts.front();
    for (std::size_t i = 1; i < parts.size(); ++i) {
        Require(parts[i - 1].find(L'-') == std::wstring::npos,
                "only the last part may contain a dash");
        joined.append(L"-").append(parts[i]);
    }
    // An empty part at the end is dropped.
    Require(joined == publisher || (joined + L"-" == publisher && parts.size() < kMostParts),
            "the joined parts are the name");
}

void CheckLeaf(const std::wstring& path, const std::wstring& publisher) {
    const std::wstring leaf = eventlog::ChannelLeafName(path, publisher);
    Require(path.ends_with(leaf), "the leaf is the end of the path");
    if (!path.starts_with(publisher)) {
        Require(leaf == path, "the path of another publisher does not change");
    } else {
        Require(leaf.find(L'/') == std::wstring::npos, "the leaf has no folder");
    }
}

void CheckSource(const std::wstring& provider) {
    const std::wstring source = eventlog::ShortSourceName(provider);
    Require(provider.ends_with(source), "the source is the end of the provider's name");
    Require(source == provider || source.find(L'-') == std::wstring::npos,
            "a shortened source contains no dash");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const std::wstring publisher = fuzz::WideText(input.ConsumeRandomLengthString());
    const std::wstring rest = fuzz::WideText(input.ConsumeRemainingBytesAsString());
    CheckParts(publisher);
    CheckLeaf(rest, publisher);
    CheckLeaf(publisher + rest, publisher);
    CheckSource(publisher);
    return 0;
}
