#include "replay/events/event_maker.h"

#include "replay/text/event_time.h"
#include "replay/text/numbers.h"
#include "replay/text/xml_text.h"

namespace replay::events {

std::string MakeEventXml(const MadeEvent& event) {
    std::string xml;
    xml.append("<Event xmlns='http://schemas.microsoft.com/win/2004/08/events/event'><System>")
        .append("<Provider Name='")
        .append(text::EncodeXml(event.provider))
        .append("'/>")
        .append("<EventID>")
        .append(std::to_string(event.eventId))
        .append("</EventID>")
        .append("<Version>0</Version>")
        .append("<Level>")
        .append(std::to_string(event.level))
        .append("</Level>")
        .append("<Task>0</Task><Opcode>0</Opcode>")
        .append("<Keywords>")
        .append(text::HexText(event.keywords))
        .append("</Keywords>")
        .append("<TimeCreated SystemTime='")
        .append(text::FormatEventTime(event.time))
        .append("'/>")
        .append("<EventRecordID>")
        .append(std::to_string(event.recordId))
        .append("</EventRecordID>")
        .append("<Correlation/>")
        .append("<Execution ProcessID='")
        .append(std::to_string(event.processId))
        .append("' ThreadID='")
        .append(std::to_string(event.threadId))
        .append("'/>")
        .append("<Channel>")
        .append(text::EncodeXml(event.channel))
        .append("</Channel>")
        .append("<Computer>")
        .append(text::EncodeXml(event.computer))
        .append("</Computer>")
        .append("<Security/></System><EventData>");
    if (!event.data.empty()) {
        xml.append("<Data>").append(text::EncodeXml(event.data)).append("</Data>");
    }
    xml.append("</EventData>");
    if (!event.message.empty()) {
        xml.append("<RenderingInfo Culture='en-US'><Message>")
            .append(text::EncodeXml(event.message))
            .append("</Message></RenderingInfo>");
    }
    return xml.append("</Event>");
}

}  // namespace replay::events
