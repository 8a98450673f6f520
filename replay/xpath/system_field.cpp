#include "replay/xpath/system_field.h"

#include "replay/text/xml_text.h"

namespace replay::xpath {
namespace {

struct FieldRow {
    std::string_view path;
    SystemField field;
    FieldType type;
};

constexpr FieldRow kFields[] = {
    {"System/Provider/@Name", SystemField::kProviderName, FieldType::kText},
    {"System/Provider/@Guid", SystemField::kProviderGuid, FieldType::kGuid},
    {"System/Provider/@EventSourceName", SystemField::kEventSourceName, FieldType::kText},
    {"System/EventID", SystemField::kEventId, FieldType::kNumber},
    {"System/EventID/@Qualifiers", SystemField::kQualifiers, FieldType::kNumber},
    {"System/Version", SystemField::kVersion, FieldType::kNumber},
    {"System/Level", SystemField::kLevel, FieldType::kNumber},
    {"System/Task", SystemField::kTask, FieldType::kNumber},
    {"System/Opcode", SystemField::kOpcode, FieldType::kNumber},
    {"System/Keywords", SystemField::kKeywords, FieldType::kNumber},
    {"System/TimeCreated/@SystemTime", SystemField::kSystemTime, FieldType::kTime},
    {"System/EventRecordID", SystemField::kEventRecordId, FieldType::kNumber},
    {"System/Correlation/@ActivityID", SystemField::kActivityId, FieldType::kGuid},
    {"System/Correlation/@RelatedActivityID", SystemField::kRelatedActivityId, FieldType::kGuid},
    {"System/Execution/@ProcessID", SystemField::kProcessId, FieldType::kNumber},
    {"System/Execution/@ThreadID", SystemField::kThreadId, FieldType::kNumber},
    {"System/Channel", SystemField::kChannel, FieldType::kText},
    {"System/Computer", SystemField::kComputer, FieldType::kText},
    {"System/Security/@UserID", SystemField::kUserId, FieldType::kText},
    {"", SystemField::kElement, FieldType::kText},
    {"System", SystemField::kElement, FieldType::kText},
    {"System/Provider", SystemField::kElement, FieldType::kText},
    {"System/TimeCreated", SystemField::kElement, FieldType::kText},
    {"System/Correlation", SystemField::kElement, FieldType::kText},
    {"System/Execution", SystemField::kElement, FieldType::kText},
    {"System/Security", SystemField::kElement, FieldType::kText},
};

template <typename Number>
FieldValue ToValue(const std::optional<Number>& number) {
    if (!number) {
        return {};
    }
    return static_cast<std::uint64_t>(*number);
}

FieldValue ToValue(const std::optional<std::string_view>& text) {
    if (!text) {
        return {};
    }
    return *text;
}

FieldValue ValueOf(SystemField field, const events::SystemFields& system) {
    switch (field) {
        case SystemField::kProviderName: return ToValue(system.providerName);
        case SystemField::kProviderGuid: return ToValue(system.providerGuid);
        case SystemField::kEventSourceName: return ToValue(system.eventSourceName);
        case SystemField::kEventId: return ToValue(system.eventId);
        case SystemField::kQualifiers: return ToValue(system.qualifiers);
        case SystemField::kVersion: return ToValue(system.version);
        case SystemField::kLevel: return ToValue(system.level);
        case SystemField::kTask: return ToValue(system.task);
        case SystemField::kOpcode: return ToValue(system.opcode);
        case SystemField::kKeywords: return ToValue(system.keywords);
        case SystemField::kSystemTime: return ToValue(system.timeCreated);
        case SystemField::kEventRecordId: return ToValue(system.recordId);
        case SystemField::kActivityId: return ToValue(system.activityId);
        case SystemField::kRelatedActivityId: return ToValue(system.relatedActivityId);
        case SystemField::kProcessId: return ToValue(system.processId);
        case SystemField::kThreadId: return ToValue(system.threadId);
        case SystemField::kChannel: return ToValue(system.channel);
        case SystemField::kComputer: return ToValue(system.computer);
        case SystemField::kUserId: return ToValue(system.userId);
        case SystemField::kElement: return std::string_view();
        case SystemField::kUnknown: return {};
    }
    return {};
}

}  // namespace

SystemField FindSystemField(std::string_view path) {
    for (const FieldRow& row : kFields) {
        if (row.path == path) {
            return row.field;
        }
    }
    return SystemField::kUnknown;
}

FieldType TypeOf(SystemField field) {
    for (const FieldRow& row : kFields) {
        if (row.field == field) {
            return row.type;
        }
    }
    return FieldType::kText;
}

FieldValue EventView::Value(SystemField field) {
    switch (field) {
        case SystemField::kProviderName:
            if (!facts_.provider.empty()) {
                return facts_.provider;  // already decoded
            }
            break;
        case SystemField::kSystemTime:
            if (facts_.time != 0) {
                return facts_.time;
            }
            break;
        case SystemField::kEventRecordId:
            if (facts_.recordId != 0) {
                return facts_.recordId;
            }
            break;
        default: break;
    }
    const FieldValue value = ValueOf(field, System());
    const auto* text = std::get_if<std::string_view>(&value);
    if (text == nullptr || text->find('&') == std::string_view::npos) {
        return value;
    }
    decoded_ = text::DecodeXml(*text);
    return std::string_view(decoded_);
}

const events::SystemFields& EventView::System() {
    if (!system_) {
        place_ = log_.Place(ordinal_);
        system_ = place_.source->System(place_.ordinal);
    }
    return *system_;
}

}  // namespace replay::xpath
