#include "replay/events/system_reader.h"

#include "replay/text/blanks.h"
#include "replay/text/event_time.h"
#include "replay/text/numbers.h"
#include "replay/text/xml_reader.h"

#include <string_view>

namespace replay::events {
namespace {

using Text = std::string_view;

template <typename Number>
void SetNumber(std::optional<Number>& field, std::optional<Text> text) {
    if (text) {
        field = text::ParseNumber<Number>(text::Trim(*text));
    }
}

// Reads the values in an element's attributes.
void ReadAttributes(const text::XmlReader& reader, SystemFields& fields) {
    const Text element = reader.Name();
    if (element == "Provider") {
        fields.providerName = reader.Attribute("Name");
        fields.providerGuid = reader.Attribute("Guid");
        fields.eventSourceName = reader.Attribute("EventSourceName");
    } else if (element == "EventID") {
        SetNumber(fields.qualifiers, reader.Attribute("Qualifiers"));
    } else if (element == "TimeCreated") {
        if (const auto time = reader.Attribute("SystemTime")) {
            fields.timeCreated = text::ParseEventTime(*time);
        }
    } else if (element == "Correlation") {
        fields.activityId = reader.Attribute("ActivityID");
        fields.relatedActivityId = reader.Attribute("RelatedActivityID");
    } else if (element == "Execution") {
        SetNumber(fields.processId, reader.Attribute("ProcessID"));
        SetNumber(fields.threadId, reader.Attribute("ThreadID"));
    } else if (element == "Security") {
        fields.userId = reader.Attribute("UserID");
    }
}

// Reads the value in an element's text.
void ReadContent(Text element, Text text, SystemFields& fields) {
    if (element == "EventID") {
        SetNumber(fields.eventId, text);
    } else if (element == "Version") {
        SetNumber(fields.version, text);
    } else if (element == "Level") {
        SetNumber(fields.level, text);
    } else if (element == "Task") {
        SetNumber(fields.task, text);
    } else if (element == "Opcode") {
        SetNumber(fields.opcode, text);
    } else if (element == "Keywords") {
        fields.keywords = text::ParseHexOrDecimal(text::Trim(text));
    } else if (element == "EventRecordID") {
        SetNumber(fields.recordId, text);
    } else if (element == "Channel") {
        fields.channel = text;
    } else if (element == "Computer") {
        fields.computer = text;
    }
}

}  // namespace

SystemFields ReadSystem(text::XmlReader& reader) {
    SystemFields fields;
    const std::size_t inside = reader.Depth();
    Text element;
    while (reader.Depth() >= inside) {
        switch (reader.Next()) {
            case text::XmlToken::kStart:
                element = reader.Name();
                ReadAttributes(reader, fields);
                break;
            case text::XmlToken::kText:
                if (reader.Depth() == inside + 1) {
                    ReadContent(element, reader.Text(), fields);
                }
                break;
            case text::XmlToken::kEnd: break;
            case text::XmlToken::kDone:
            case text::XmlToken::kDamaged: return fields;
        }
    }
    return fields;
}

}  // namespace replay::events
