#include "replay/events/event_source.h"
#include "replay/results/bookmark.h"
#include "replay/service/call.h"
#include "replay/text/utf8.h"

#include <memory>
#include <utility>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

// A bookmark holds the channel that contains the event and the event's number in it. The XML of a
// forwarded event names another channel and record id.
DWORD UpdateBookmark(const Call& call, HANDLE bookmark, HANDLE eventHandle) {
    const HandleTarget mark = call.Use(bookmark, HandleKind::kBookmark);
    const HandleTarget event = call.Use(eventHandle, HandleKind::kEvent);
    if (!mark || !event) {
        return ERROR_INVALID_HANDLE;
    }
    const auto& source = static_cast<const events::EventSource&>(*event.object);
    static_cast<results::Bookmark&>(*mark.object)
        .Update(source.Channel(), source.NumberInLog(event.ordinal), event.reverse);
    return ERROR_SUCCESS;
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtCreateBookmark(LPCWSTR xml) {
    const Argument arguments[] = {TextArgument(L"BookmarkXml", xml)};
    return ServeHandle(
        ApiFunction::kCreateBookmark, arguments, [&](Call& call, HANDLE& handle) -> DWORD {
            auto bookmark = xml == nullptr ? std::make_shared<results::Bookmark>()
                                           : results::Bookmark::FromXml(text::ToUtf8(xml));
            if (bookmark == nullptr) {
                return ERROR_EVT_MALFORMED_XML_TEXT;
            }
            handle = call.Open(HandleKind::kBookmark, std::move(bookmark));
            return ERROR_SUCCESS;
        });
}

extern "C" BOOL WINAPI EvtUpdateBookmark(EVT_HANDLE bookmark, EVT_HANDLE event) {
    const Argument arguments[] = {HandleArgument(L"Bookmark", bookmark),
                                  HandleArgument(L"Event", event)};
    return Serve(ApiFunction::kUpdateBookmark, arguments,
                 [&](Call& call) { return UpdateBookmark(call, bookmark, event); });
}

}  // namespace replay::api
