#pragma once

#include <cstddef>
#include <iterator>
#include <optional>
#include <string_view>

namespace replay::calls {

// The exported functions, in the order of kApiFunctionNames.
enum class ApiFunction {
    kCancel,
    kClose,
    kCreateBookmark,
    kCreateRenderContext,
    kFormatMessage,
    kGetChannelConfigProperty,
    kGetExtendedStatus,
    kGetLogInfo,
    kNext,
    kNextChannelPath,
    kOpenChannelConfig,
    kOpenChannelEnum,
    kOpenLog,
    kOpenPublisherMetadata,
    kQuery,
    kRender,
    kSeek,
    kSubscribe,
    kUpdateBookmark,
};

constexpr std::wstring_view kApiFunctionNames[] = {
    L"EvtCancel",
    L"EvtClose",
    L"EvtCreateBookmark",
    L"EvtCreateRenderContext",
    L"EvtFormatMessage",
    L"EvtGetChannelConfigProperty",
    L"EvtGetExtendedStatus",
    L"EvtGetLogInfo",
    L"EvtNext",
    L"EvtNextChannelPath",
    L"EvtOpenChannelConfig",
    L"EvtOpenChannelEnum",
    L"EvtOpenLog",
    L"EvtOpenPublisherMetadata",
    L"EvtQuery",
    L"EvtRender",
    L"EvtSeek",
    L"EvtSubscribe",
    L"EvtUpdateBookmark",
};

constexpr std::size_t kApiFunctionCount = std::size(kApiFunctionNames);
static_assert(kApiFunctionCount == static_cast<std::size_t>(ApiFunction::kUpdateBookmark) + 1);

constexpr std::wstring_view NameOf(ApiFunction function) {
    return kApiFunctionNames[static_cast<std::size_t>(function)];
}

constexpr std::optional<ApiFunction> FindApiFunction(std::wstring_view name) {
    for (std::size_t i = 0; i < kApiFunctionCount; ++i) {
        if (kApiFunctionNames[i] == name) {
            return static_cast<ApiFunction>(i);
        }
    }
    return std::nullopt;
}

// Whether the function is a read from the handle in its first argument, which can be slow.
constexpr bool CanBeCancelled(ApiFunction function) {
    return function == ApiFunction::kNext || function == ApiFunction::kSeek;
}

}  // namespace replay::calls
