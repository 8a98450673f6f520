#pragma once

#include "replay/events/system_fields.h"

namespace replay::text {
class XmlReader;
}

namespace replay::events {

// Reads the rest of a <System> element after its start tag. A number or time that cannot be parsed
// is absent.
SystemFields ReadSystem(text::XmlReader& reader);

}  // namespace replay::events
