#include "window/harness/recording_writer.h"

#include <cwchar>
#include <iterator>

#include "window/harness/text_encoding.h"

namespace tavrin::test {
namespace {

std::wstring Escape(std::wstring_view text) {
    std::wstring escaped;
    for (const wchar_t unit : text) {
        switch (unit) {
            case L'&': escaped += L"&amp;"; break;
            case L'<': escaped += L"&lt;"; break;
            case L'>': escaped += L"&gt;"; break;
            case L'\'': escaped += L"&apos;"; break;
            case L'"': escaped += L"&quot;"; break;
            default: escaped += unit;
        }
    }
    return escaped;
}

std::wstring Hexadecimal(std::uint64_t number) {
    wchar_t text[32];
    std::swprintf(text, std::size(text), L"0x%llx", static_cast<unsigned long long>(number));
    return text;
}

std::wstring ChannelXml(const ChannelSpec& channel) {
    return L"  <channel name=\"" + Escape(channel.name) + L"\" type=\"" + channel.type +
           L"\" owningPublisher=\"" + Escape(channel.publisher) + L"\" enabled=\"" +
           (channel.enabled ? L"true" : L"false") + L"\"" +
           (channel.attributes.empty() ? L"" : L" " + channel.attributes) + L"/>\n";
}

// Old-style events have neither version nor process.
std::wstring ExecutionXml(const EventSpec& event) {
    if (!event.processId) {
        return L"";
    }
    return L"<Correlation/><Execution ProcessID='" + std::to_wstring(*event.processId) +
           L"' ThreadID='8'/>";
}

std::wstring SystemXml(const std::wstring& channel, const EventSpec& event) {
    return L"<System><Provider Name='" + Escape(event.provider) + L"'/><EventID>" +
           std::to_wstring(event.eventId) + L"</EventID><Version>0</Version><Level>" +
           std::to_wstring(event.level) + L"</Level><Task>0</Task><Opcode>0</Opcode><Keywords>" +
           Hexadecimal(event.keywords) + L"</Keywords><TimeCreated SystemTime='" + event.time +
           L"'/><EventRecordID>" + std::to_wstring(event.recordId) + L"</EventRecordID>" +
           ExecutionXml(event) + L"<Channel>" + Escape(channel) +
           L"</Channel><Computer>TESTBED</Computer><Security/></System>";
}

std::wstring RenderingXml(const EventSpec& event) {
    if (!event.message) {
        return L"";
    }
    return L"<RenderingInfo Culture='en-US'><Message>" + Escape(*event.message) +
           L"</Message></RenderingInfo>";
}

}  // namespace

RecordingWriter::RecordingWriter(const std::vector<ChannelSpec>& channels) {
    std::wstring xml = L"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<channels>\n";
    for (const ChannelSpec& channel : channels) {
        xml += ChannelXml(channel);
    }
    WriteFile(folder() / L"channels.xml", ToUtf8(xml + L"</channels>\n"));
}

void RecordingWriter::WriteEvents(const std::wstring& channel,
                                  const std::vector<EventSpec>& events) const {
    std::wstring xml = L"<Events>";
    for (const EventSpec& event : events) {
        xml += L"\r\n" + EventXml(channel, event);
    }
    WriteFile(FileOf(channel), ToUtf8(xml + L"\r\n</Events>"));
}

void RecordingWriter::AppendEvent(const std::wstring& channel, const EventSpec& event) const {
    AppendToFile(FileOf(channel), ToUtf8(L"\r\n" + EventXml(channel, event)));
}

std::filesystem::path RecordingWriter::FileOf(const std::wstring& channel) const {
    std::wstring name;
    for (const wchar_t unit : channel) {
        name += unit == L'/' ? std::wstring(L"%4") : std::wstring(1, unit);
    }
    return folder() / (name + L".xml");
}

std::wstring EventXml(const std::wstring& channel, const EventSpec& event) {
    return L"<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'>" +
           SystemXml(channel, event) + event.eventData + RenderingXml(event) + L"</Event>";
}

std::vector<EventSpec> Events(std::size_t count, EventSpec model, std::uint64_t first) {
    std::vector<EventSpec> events(count, model);
    for (std::size_t i = 0; i < count; ++i) {
        events[i].recordId = first + i;
    }
    return events;
}

}  // namespace tavrin::test
