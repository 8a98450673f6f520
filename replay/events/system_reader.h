#pragma once

#include "replay/events/system_fields.h"

namespace replay::text {
class XmlReader;
}

namespace replay::events {

// Reads the <System> element whose start the reader just read, up to its end. What cannot be
// read as the number or time that it should be is taken as absent.
SystemFields ReadSystem(text::XmlReader& reader);

}  // namespace replay::events
