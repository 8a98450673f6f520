#include "support/recording.h"

#include <cwchar>
#include <iterator>
#include <utility>

#include "base/utf8.h"
#include "base/xml_escape.h"

namespace tavrin::test {
namespace {

using base::XmlEscape;

std::wstring Hexadecimal(std::uint64_t number) {
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"0x%llx", static_cast<unsigned long long>(number));
    return text;
}

std::wstring ChannelXml(const RecordedChannel& channel) {
    return L"  <channel name=\"" + XmlEscape(channel.name) + L"\" type=\"" + channel.type +
           L"\" owningPublisher=\"" + XmlEscape(channel.publisher) + L"\" enabled=\"" +
           (channel.enabled ? L"true" : L"false") + L"\" " + channel.attributes + L"/>\n";
}

std::wstring ExecutionXml(const RecordedEvent& event) {
    return event.processId
               ? L"<Execution ProcessID='" + std::to_wstring(*event.processId) + L"' ThreadID='8'/>"
               : L"";
}

std::wstring SystemXml(const std::wstring& channel, const RecordedEvent& event) {
    return L"<System><Provider Name='" + XmlEscape(event.provider) + L"'/><EventID>" +
           std::to_wstring(event.eventId) + L"</EventID><Version>0</Version><Level>" +
           std::to_wstring(event.level) + L"</Level><Task>0</Task><Opcode>0</Opcode><Keywords>" +
           Hexadecimal(event.keywords) + L"</Keywords><TimeCreated SystemTime='" + event.time +
           L"'/><EventRecordID>" + std::to_wstring(event.recordId) +
           L"</EventRecordID><Correlation/>" + ExecutionXml(event) + L"<Channel>" +
           XmlEscape(channel) + L"</Channel><Computer>TESTER</Computer><Security/></System>";
}

std::wstring RenderingXml(const RecordedEvent& event) {
    if (!event.message) {
        return L"";
    }
    return L"<RenderingInfo Culture='en-US'><Message>" + XmlEscape(*event.message) +
           L"</Message></RenderingInfo>";
}

}  // namespace

Recording::Recording(std::vector<RecordedChannel> channels) : channels_(std::move(channels)) {
    WriteChannels();
}

void Recording::AddChannel(RecordedChannel channel) {
    channels_.push_back(std::move(channel));
    WriteChannels();
}

void Recording::WriteEvents(const std::wstring& channel,
                            const std::vector<RecordedEvent>& events) const {
    WriteFile(FileOf(channel), EventsXml(channel, events));
}

void Recording::AppendEvent(const std::wstring& channel, const RecordedEvent& event) const {
    AppendToFile(FileOf(channel), "\r\n" + EventXml(channel, event));
}

std::filesystem::path Recording::FileOf(const std::wstring& channel) const {
    std::wstring name;
    for (const wchar_t unit : channel) {
        name += unit == L'/' ? std::wstring(L"%4") : std::wstring(1, unit);
    }
    return folder() / (name + L".xml");
}

void Recording::WriteChannels() const {
    std::wstring xml = L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<channels>\n";
    for (const RecordedChannel& channel : channels_) {
        xml += ChannelXml(channel);
    }
    WriteFile(folder() / L"channels.xml", base::ToUtf8(xml + L"</channels>\n"));
}

std::string EventXml(const std::wstring& channel, const RecordedEvent& event) {
    return base::ToUtf8(L"<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'>" +
                        SystemXml(channel, event) + event.data + RenderingXml(event) + L"</Event>");
}

std::string EventsXml(const std::wstring& channel, const std::vector<RecordedEvent>& events) {
    std::string xml = "<Events>";
    for (const RecordedEvent& event : events) {
        xml += "\r\n" + EventXml(channel, event);
    }
    return xml + "\r\n</Events>";
}

std::vector<RecordedEvent> Events(std::size_t count, const RecordedEvent& model,
                                  std::uint64_t first) {
    std::vector<RecordedEvent> events(count, model);
    for (std::size_t i = 0; i < count; ++i) {
        events[i].recordId = first + i;
    }
    return events;
}

std::vector<RecordedEvent> EventsWithMessages(std::size_t count) {
    std::vector<RecordedEvent> events = Events(count);
    for (RecordedEvent& event : events) {
        event.message = L"Message " + std::to_wstring(event.recordId);
    }
    return events;
}

}  // namespace tavrin::test
