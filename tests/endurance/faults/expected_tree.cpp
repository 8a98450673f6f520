#include "endurance/faults/expected_tree.h"

#include <algorithm>
#include <map>
#include <optional>
#include <ostream>

#include "base/utf8.h"

namespace tavrin::test {
namespace {

// The texts from the root down. Sorted paths are in the order in which the program fills the tree:
// each item after its parent, siblings by name.
using Path = std::vector<std::wstring>;

constexpr wchar_t kRoot[] = L"Event Viewer (Local)";
constexpr wchar_t kWindowsLogs[] = L"Windows Logs";
constexpr wchar_t kServicesLogs[] = L"Applications and Service Logs";
constexpr int kPublisherImage = 1;

int ImageOfType(const std::wstring& type) {
    const std::map<std::wstring, int> images = {
        {L"Admin", 5}, {L"Operational", 7}, {L"Analytic", 6}, {L"Debug", 4}};
    return images.at(type);
}

bool IsClassic(const std::wstring& name) {
    const std::wstring names[] = {L"Application", L"Security", L"Setup", L"System",
                                  L"Forwarded Events"};
    return std::ranges::count(names, name) > 0;
}

// Splits a publisher's name at dashes into at most three parts; the last keeps its dashes.
std::vector<std::wstring> PublisherParts(std::wstring rest) {
    std::vector<std::wstring> parts;
    while (!rest.empty()) {
        const std::size_t dash = parts.size() < 2 ? rest.find(L'-') : std::wstring::npos;
        parts.push_back(rest.substr(0, dash));
        rest.erase(0, dash == std::wstring::npos ? dash : dash + 1);
    }
    return parts;
}

std::wstring LeafName(const std::wstring& path, const std::wstring& publisher) {
    const wchar_t separator = path.find(L'/') == std::wstring::npos ? L'-' : L'/';
    return path.starts_with(publisher) ? path.substr(path.find_last_of(separator) + 1) : path;
}

// Enumerates the channels as the program does.
class ChannelWalk {
public:
    ChannelWalk(const std::vector<RecordedChannel>& channels, FaultyService& service)
        : channels_(channels), service_(service) {}

    void AddChannels() {
        while (NextPath()) {
            // The service refuses the empty path that the buffer holds before the first channel.
            if (service_.Call(L"EvtOpenChannelConfig") == ERROR_SUCCESS && !buffer_.empty()) {
                Add();
            }
        }
    }

    // An item without an image is a channel whose type was never read.
    const std::map<Path, std::optional<int>>& items() const { return items_; }

private:
    // Returns false at the end.
    bool NextPath() {
        const DWORD refusal = service_.Call(L"EvtNextChannelPath");
        if (refusal == ERROR_NO_MORE_ITEMS || (refusal == 0 && next_ == channels_.size())) {
            return false;
        }
        if (refusal == ERROR_INSUFFICIENT_BUFFER) {
            // A failed call reports no size, so the second call gets too small a buffer.
            service_.Call(L"EvtNextChannelPath");
            return false;
        }
        if (refusal != ERROR_SUCCESS) {
            return true;  // the buffer keeps the last path
        }
        if (service_.Call(L"EvtNextChannelPath") != ERROR_SUCCESS) {
            return false;
        }
        buffer_ = channels_[next_++].name;
        return true;
    }

    // Adds the channel whose path is in the buffer.
    void Add() {
        const RecordedChannel& channel =
            *std::ranges::find(channels_, buffer_, &RecordedChannel::name);
        std::wstring publisher;
        if (ReadProperty()) {
            publisher = channel.publisher;
            if (ReadProperty()) {
                image_ = ImageOfType(channel.type);
            }
        }
        const std::vector<std::wstring> folders = PublisherParts(publisher);
        const std::wstring& first = folders.empty() ? buffer_ : folders.front();
        Path item = {kRoot, IsClassic(first) ? kWindowsLogs : kServicesLogs};
        for (const std::wstring& folder : folders) {
            item.push_back(folder);
            items_.emplace(item, kPublisherImage);
        }
        item.push_back(folders.empty() ? buffer_ : LeafName(buffer_, publisher));
        items_.emplace(item, image_);
    }

    // Every value fits the first buffer. The program retries once if the service asks for more.
    bool ReadProperty() {
        DWORD refusal = service_.Call(L"EvtGetChannelConfigProperty");
        if (refusal == ERROR_INSUFFICIENT_BUFFER) {
            refusal = service_.Call(L"EvtGetChannelConfigProperty");
        }
        return refusal == ERROR_SUCCESS;
    }

    const std::vector<RecordedChannel>& channels_;
    FaultyService& service_;
    std::size_t next_ = 0;
    std::wstring buffer_;
    std::optional<int> image_;  // of the last type that was read
    std::map<Path, std::optional<int>> items_ = {
        {{kRoot}, 0}, {{kRoot, kWindowsLogs}, 2}, {{kRoot, kServicesLogs}, 3}};
};

}  // namespace

void PrintTo(const TreeLine& line, std::ostream* stream) {
    *stream << line.depth << " \"" << base::ToUtf8(line.text) << "\" " << line.image;
}

std::vector<TreeLine> ExpectedTree(const std::vector<RecordedChannel>& channels,
                                   FaultyService& service) {
    ChannelWalk walk(channels, service);
    if (service.Call(L"EvtOpenChannelEnum") == ERROR_SUCCESS) {
        walk.AddChannels();
    }
    std::vector<TreeLine> lines;
    for (const auto& [path, image] : walk.items()) {
        if (!image) {
            break;  // the program stops filling the tree at a channel without a type
        }
        lines.push_back({static_cast<int>(path.size()) - 1, path.back(), *image});
    }
    return lines;
}

}  // namespace tavrin::test
