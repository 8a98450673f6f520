#pragma once

#include <cstdint>

namespace tavrin::eventlog {

// The bits of a node's flags word: its kind and its type.
namespace node_flags {

inline constexpr std::uint32_t Folder = 0x001;
inline constexpr std::uint32_t Channel = 0x002;
inline constexpr std::uint32_t AdminChannel = 0x004;
inline constexpr std::uint32_t OperationalChannel = 0x008;
inline constexpr std::uint32_t AnalyticChannel = 0x010;
inline constexpr std::uint32_t DebugChannel = 0x020;
inline constexpr std::uint32_t WindowsLogsFolder = 0x040;
inline constexpr std::uint32_t AppsAndServicesFolder = 0x080;
inline constexpr std::uint32_t RootFolder = 0x100;
inline constexpr std::uint32_t PublisherFolder = 0x200;

}  // namespace node_flags

// Throws std::logic_error, whose text names the fault, unless the flags say folder or channel, with
// a type of that kind.
void ValidateNodeFlags(std::uint32_t flags);

}  // namespace tavrin::eventlog
