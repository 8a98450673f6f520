// Publisher metadata and event messages.

#include "replay/api/output_buffer.h"
#include "replay/service/call.h"
#include "replay/text/utf8.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

class Publisher final : public Object {
public:
    explicit Publisher(std::string name) : name_(std::move(name)) {}
    const std::string& Name() const { return name_; }

private:
    std::string name_;
};

// The standard level names, which every publisher has.
constexpr std::string_view kLevelNames[] = {"Information", "Critical",    "Error",
                                            "Warning",     "Information", "Verbose"};

std::optional<std::string> LevelName(const events::EventSource& source, std::uint64_t ordinal) {
    if (auto carried = source.Rendering(ordinal, events::RenderingPart::kLevel)) {
        return carried;
    }
    const std::uint8_t level = source.System(ordinal).level.value_or(0);
    if (level >= std::size(kLevelNames)) {
        return std::nullopt;
    }
    return std::string(kLevelNames[level]);
}

std::optional<events::RenderingPart> PartOf(DWORD flags) {
    switch (flags) {
        case EvtFormatMessageEvent: return events::RenderingPart::kMessage;
        case EvtFormatMessageTask: return events::RenderingPart::kTask;
        case EvtFormatMessageOpcode: return events::RenderingPart::kOpcode;
        case EvtFormatMessageKeyword: return events::RenderingPart::kKeywords;
        case EvtFormatMessageChannel: return events::RenderingPart::kChannel;
        case EvtFormatMessageProvider: return events::RenderingPart::kProvider;
        default: return std::nullopt;
    }
}

// Returns the requested text, if present.
std::optional<std::string> FindText(const events::EventSource& source, std::uint64_t ordinal,
                                    DWORD flags) {
    if (flags == EvtFormatMessageXml) {
        return source.RenderedXml(ordinal);
    }
    if (flags == EvtFormatMessageLevel) {
        return LevelName(source, ordinal);
    }
    const auto part = PartOf(flags);
    auto text = part ? source.Rendering(ordinal, *part) : std::nullopt;
    // Keywords are a list: a zero ends each, and a second zero ends the list.
    if (text && flags == EvtFormatMessageKeyword) {
        text->push_back('\0');
    }
    return text;
}

DWORD OpenPublisher(const Call& call, LPCWSTR identity, LPCWSTR logFile, HANDLE& handle) {
    if (identity == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    if (logFile != nullptr) {
        return ERROR_FILE_NOT_FOUND;  // a recording has no metadata archives
    }
    const auto recording = Service::Get().CurrentRecording();
    if (!recording->IsAvailable()) {
        return RPC_S_SERVER_UNAVAILABLE;
    }
    if (!recording->IsRegistered(identity)) {
        return ERROR_FILE_NOT_FOUND;
    }
    handle = call.Open(HandleKind::kPublisher, std::make_shared<Publisher>(text::ToUtf8(identity)));
    return ERROR_SUCCESS;
}

struct MessageOutput {
    DWORD size;
    wchar_t* buffer;
    DWORD* used;
};

DWORD FormatEvent(const Call& call, HANDLE publisher, HANDLE eventHandle, DWORD flags,
                  const MessageOutput& output) {
    const HandleTarget event = call.Use(eventHandle, HandleKind::kEvent);
    if (!event) {
        return ERROR_INVALID_HANDLE;
    }
    const auto& source = static_cast<const events::EventSource&>(*event.object);
    if (publisher == nullptr) {
        if (!source.CarriesRendering(event.ordinal)) {
            return ERROR_EVT_MESSAGE_NOT_FOUND;
        }
    } else {
        const HandleTarget target = call.Use(publisher, HandleKind::kPublisher);
        if (!target) {
            return ERROR_INVALID_HANDLE;
        }
        if (static_cast<const Publisher&>(*target.object).Name() !=
            source.Facts(event.ordinal).provider) {
            return ERROR_EVT_MESSAGE_NOT_FOUND;
        }
    }
    const auto failure =
        flags == EvtFormatMessageEvent ? source.MessageFailure(event.ordinal) : std::nullopt;
    if (failure && *failure != ERROR_EVT_UNRESOLVED_VALUE_INSERT) {
        return *failure;
    }
    const auto text = FindText(source, event.ordinal, flags);
    if (!text) {
        return ERROR_EVT_MESSAGE_NOT_FOUND;
    }
    const DWORD error = ReturnText(text::ToWide(*text), output.size, output.buffer, output.used);
    return error == ERROR_SUCCESS ? failure.value_or(ERROR_SUCCESS) : error;
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtOpenPublisherMetadata(EVT_HANDLE session, LPCWSTR identity,
                                                      LPCWSTR logFile, LCID locale, DWORD flags) {
    const Argument arguments[] = {
        HandleArgument(L"Session", session), TextArgument(L"PublisherId", identity),
        TextArgument(L"LogFilePath", logFile), NumberArgument(L"Locale", locale),
        FlagsArgument(L"Flags", flags)};
    return ServeHandle(ApiFunction::kOpenPublisherMetadata, arguments,
                       [&](Call& call, HANDLE& handle) -> DWORD {
                           if (flags != 0) {
                               return ERROR_INVALID_PARAMETER;
                           }
                           return OpenPublisher(call, identity, logFile, handle);
                       });
}

extern "C" BOOL WINAPI EvtFormatMessage(EVT_HANDLE publisher, EVT_HANDLE event, DWORD messageId,
                                        DWORD valueCount, PEVT_VARIANT values, DWORD flags,
                                        DWORD size, LPWSTR buffer, PDWORD used) {
    const Argument arguments[] = {HandleArgument(L"PublisherMetadata", publisher),
                                  HandleArgument(L"Event", event),
                                  NumberArgument(L"MessageId", messageId),
                                  NumberArgument(L"ValueCount", valueCount),
                                  PointerArgument(L"Values", values),
                                  FlagsArgument(L"Flags", flags),
                                  NumberArgument(L"BufferSize", size),
                                  PointerArgument(L"Buffer", buffer)};
    return Serve(ApiFunction::kFormatMessage, arguments, [&](Call& call) -> DWORD {
        if (flags < EvtFormatMessageEvent || flags > EvtFormatMessageXml || used == nullptr) {
            return ERROR_INVALID_PARAMETER;
        }
        // A recording has the messages of its events but no message tables.
        if (flags == EvtFormatMessageId) {
            return ERROR_EVT_MESSAGE_ID_NOT_FOUND;
        }
        const DWORD error = FormatEvent(call, publisher, event, flags, {size, buffer, used});
        if (error == ERROR_SUCCESS || error == ERROR_INSUFFICIENT_BUFFER ||
            error == ERROR_EVT_UNRESOLVED_VALUE_INSERT) {
            call.Returns(L"BufferUsed", *used);
        }
        return error;
    });
}

}  // namespace replay::api
