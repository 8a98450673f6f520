#include "replay/events/event_maker.h"

#include "replay/text/event_time.h"
#include "replay/text/numbers.h"
#include "replay/text/xml_text.h"

namespace replay::events {
namespace {

// Returns an element with this text, which it escapes.
std::string Element(const std::string& name, std::string_view text) {
    return "<" + name + ">" + text::EncodeXml(text) + "</" + name + ">";
}

// Returns an empty element with these attributes, given as XML.
std::string EmptyElement(const std::string& name, const std::string& attributes) {
    return "<" + name + " " + attributes + "/>";
}

std::string Attribute(const std::string& name, std::string_view value) {
    return name + "='" + text::EncodeXml(value) + "'";
}

std::string SystemXml(const MadeEvent& event) {
    return "<System>" + EmptyElement("Provider", Attribute("Name", event.provider)) +
           Element("EventID", std::to_string(event.eventId)) + Element("Version", "0") +
           Element("Level", std::to_string(event.level)) + Element("Task", "0") +
           Element("Opcode", "0") + Element("Keywords", text::HexText(event.keywords)) +
           EmptyElement("TimeCreated", Attribute("SystemTime", text::FormatEventTime(event.time))) +
           Element("EventRecordID", std::to_string(event.recordId)) + "<Correlation/>" +
           EmptyElement("Execution", Attribute("ProcessID", std::to_string(event.processId)) + " " +
                                         Attribute("ThreadID", std::to_string(event.threadId))) +
           Element("Channel", event.channel) + Element("Computer", event.computer) +
           "<Security/></System>";
}

}  // namespace

std::string MakeEventXml(const MadeEvent& event) {
    std::string xml = "<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'>" +
                      SystemXml(event) + "<EventData>";
    if (!event.data.empty()) {
        xml += Element("Data", event.data);
    }
    xml += "</EventData>";
    if (!event.message.empty()) {
        xml += "<RenderingInfo Culture='en-US'>" + Element("Message", event.message) +
               "</RenderingInfo>";
    }
    return xml + "</Event>";
}

}  // namespace replay::events
