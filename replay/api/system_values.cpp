#include "replay/api/system_values.h"

namespace replay::api {

void WriteSystemValues(const events::SystemFields& system, VariantWriter& writer) {
    writer.Xml(system.providerName);
    writer.Guid(system.providerGuid);
    writer.UInt16(system.eventId);
    writer.UInt16(system.qualifiers);
    writer.Byte(system.level);
    writer.UInt16(system.task);
    writer.Byte(system.opcode);
    writer.HexInt64(system.keywords);
    writer.FileTime(system.timeCreated);
    writer.UInt64(system.recordId);
    writer.Guid(system.activityId);
    writer.Guid(system.relatedActivityId);
    writer.UInt32(system.processId);
    writer.UInt32(system.threadId);
    writer.Xml(system.channel);
    writer.Xml(system.computer);
    writer.Sid(system.userId);
    writer.Byte(system.version);
}

std::size_t SystemValuesBound(const events::SystemFields& system) {
    constexpr std::size_t kGuidsSidAndGaps = 3 * (sizeof(GUID) + 8) + 68 + 8 + 3 * sizeof(wchar_t);
    const auto text = [](const std::optional<std::string_view>& value) {
        return value ? value->size() * sizeof(wchar_t) : 0;
    };
    return kSystemValues * sizeof(EVT_VARIANT) + kGuidsSidAndGaps + text(system.providerName) +
           text(system.channel) + text(system.computer);
}

}  // namespace replay::api
