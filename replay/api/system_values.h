#pragma once

#include "replay/api/variant_writer.h"
#include "replay/events/system_fields.h"

#include <cstddef>

namespace replay::api {

// Number of system values of an event.
constexpr std::size_t kSystemValues = EvtSystemPropertyIdEND;

// Writes an event's system values in the order of their identifiers.
void WriteSystemValues(const events::SystemFields& system, VariantWriter& writer);

// Upper bound of the size of an event's system values in bytes.
std::size_t SystemValuesBound(const events::SystemFields& system);

}  // namespace replay::api
