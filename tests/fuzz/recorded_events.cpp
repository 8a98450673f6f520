// Reads arbitrary bytes as a file of recorded events.

#include <memory>
#include <string>

#include "input.h"
#include "replay/api/system_values.h"
#include "replay/events/recorded_source.h"
#include "replay/text/utf8.h"
#include "replay/text/xml_reader.h"

using namespace tavrin;
using fuzz::Require;

namespace {

using replay::events::RenderingPart;

constexpr RenderingPart kParts[] = {
    RenderingPart::kMessage,  RenderingPart::kLevel,    RenderingPart::kTask,
    RenderingPart::kOpcode,   RenderingPart::kKeywords, RenderingPart::kChannel,
    RenderingPart::kProvider,
};

// Writes the system values into a buffer of exactly the measured size.
void CheckSystemValues(const replay::events::SystemFields& system) {
    replay::api::VariantWriter measure(nullptr, replay::api::kSystemValues);
    replay::api::WriteSystemValues(system, measure);
    Require(measure.Size() <= replay::api::SystemValuesBound(system),
            "the size is within its bound");
    std::string buffer(measure.Size(), '\0');
    replay::api::VariantWriter writer(buffer.data(), replay::api::kSystemValues);
    replay::api::WriteSystemValues(system, writer);
    Require(writer.Size() == buffer.size(), "the written size is the measured size");
}

void CheckEvent(const replay::events::RecordedSource& source, std::uint64_t ordinal) {
    const std::string xml = source.Xml(ordinal);
    const std::string rendered = source.RenderedXml(ordinal);
    Require(xml.size() == source.XmlSize(ordinal), "XmlSize is the size of the XML");
    Require(xml.size() <= rendered.size(), "the XML is not longer than with its rendering");
    Require(rendered.starts_with("<Event") && rendered.ends_with('>'),
            "an event's XML is complete");
    Require(replay::text::ToWide(xml).size() == replay::text::WideLength(xml),
            "the length is that of the text");
    CheckSystemValues(source.System(ordinal));
    for (const RenderingPart part : kParts) {
        source.Rendering(ordinal, part);
    }
    const auto found = source.Find(source.Facts(ordinal).recordId);
    Require(found && source.Facts(*found).recordId == source.Facts(ordinal).recordId,
            "an event is found by its record id");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    replay::events::RecordedSource::Extent extent;
    const auto bytes = std::make_shared<replay::platform::OwnedBytes>(
        std::string(reinterpret_cast<const char*>(data), size));
    const replay::events::RecordedSource source(L"Channel", bytes, extent);
    Require(extent.end <= size, "the extent ends inside the file");
    for (const replay::text::XmlDamage& damage : extent.damages) {
        Require(damage.offset <= size, "each damage is inside the file");
    }
    for (std::uint64_t ordinal = 0; ordinal < source.Count(); ++ordinal) {
        CheckEvent(source, ordinal);
    }
    return 0;
}
