#include "replay/api/output_buffer.h"
#include "replay/api/system_values.h"
#include "replay/results/bookmark.h"
#include "replay/service/call.h"
#include "replay/text/utf8.h"

#include <memory>
#include <string>

#include <windows.h>
#include <winevt.h>

namespace replay::api {

using namespace calls;
using namespace service;

namespace {

class RenderContext final : public Object {};

struct RenderOutput {
    DWORD size;
    void* buffer;
    DWORD* used;
    DWORD* count;
};

DWORD RenderText(std::string_view text, const RenderOutput& output) {
    const std::size_t needed = (text::WideLength(text) + 1) * sizeof(wchar_t);
    const DWORD error = FitInto(needed, output.size, output.buffer, output.used);
    if (error == ERROR_SUCCESS) {
        *text::CopyWide(text, static_cast<wchar_t*>(output.buffer)) = L'\0';
    }
    return error;
}

DWORD RenderSystemValues(const Call& call, const HandleTarget& event, const RenderOutput& output) {
    const auto& source = static_cast<const events::EventSource&>(*event.object);
    events::SystemFields system = source.System(event.ordinal);
    const script::CallEffects& effects = call.Effects();
    if (system.recordId) {
        *system.recordId += effects.recordIdOffset;
    }
    if (effects.time) {
        system.timeCreated = effects.time;
    }
    std::size_t needed = SystemValuesBound(system);
    const bool surelyFits =
        effects.padding == 0 && output.buffer != nullptr && needed <= output.size;
    if (!surelyFits) {
        VariantWriter measure(nullptr, kSystemValues);
        WriteSystemValues(system, measure);
        needed = measure.Size() + effects.padding;
        const DWORD error = FitInto(needed, output.size, output.buffer, output.used);
        if (error != ERROR_SUCCESS) {
            return error;
        }
    }
    VariantWriter writer(output.buffer, kSystemValues);
    WriteSystemValues(system, writer);
    *output.used = static_cast<DWORD>(writer.Size() + effects.padding);
    *output.count = static_cast<DWORD>(kSystemValues);
    return ERROR_SUCCESS;
}

DWORD RenderBookmark(const Call& call, HANDLE fragment, const RenderOutput& output) {
    const HandleTarget target = call.Use(fragment, HandleKind::kBookmark);
    if (!target) {
        return ERROR_INVALID_HANDLE;
    }
    return RenderText(static_cast<const results::Bookmark&>(*target.object).Xml(), output);
}

DWORD Render(Call& call, HANDLE context, HANDLE fragment, DWORD flags, const RenderOutput& output) {
    if (flags > EvtRenderBookmark || output.used == nullptr || output.count == nullptr) {
        return ERROR_INVALID_PARAMETER;
    }
    *output.count = 0;
    if (flags == EvtRenderBookmark) {
        return RenderBookmark(call, fragment, output);
    }
    const HandleTarget event = call.Use(fragment, HandleKind::kEvent);
    if (!event) {
        return ERROR_INVALID_HANDLE;
    }
    call.Handled(1);
    if (flags == EvtRenderEventXml) {
        return RenderText(static_cast<const events::EventSource&>(*event.object).Xml(event.ordinal),
                          output);
    }
    if (!call.Use(context, HandleKind::kRenderContext)) {
        return ERROR_INVALID_HANDLE;
    }
    return RenderSystemValues(call, event, output);
}

}  // namespace

extern "C" EVT_HANDLE WINAPI EvtCreateRenderContext(DWORD count, LPCWSTR* paths, DWORD flags) {
    const Argument arguments[] = {NumberArgument(L"ValuePathsCount", count),
                                  PointerArgument(L"ValuePaths", paths),
                                  FlagsArgument(L"Flags", flags)};
    return ServeHandle(
        ApiFunction::kCreateRenderContext, arguments, [&](Call& call, HANDLE& handle) -> DWORD {
            if (flags > EvtRenderContextUser) {
                return ERROR_INVALID_PARAMETER;
            }
            if (flags != EvtRenderContextSystem) {
                return ERROR_NOT_SUPPORTED;
            }
            if (count != 0 || paths != nullptr) {
                return ERROR_INVALID_PARAMETER;
            }
            handle = call.Open(HandleKind::kRenderContext, std::make_shared<RenderContext>());
            return ERROR_SUCCESS;
        });
}

extern "C" BOOL WINAPI EvtRender(EVT_HANDLE context, EVT_HANDLE fragment, DWORD flags, DWORD size,
                                 PVOID buffer, PDWORD used, PDWORD count) {
    const Argument arguments[] = {
        HandleArgument(L"Context", context), HandleArgument(L"Fragment", fragment),
        FlagsArgument(L"Flags", flags), NumberArgument(L"BufferSize", size),
        PointerArgument(L"Buffer", buffer)};
    return Serve(ApiFunction::kRender, arguments, [&](Call& call) -> DWORD {
        const DWORD error = Render(call, context, fragment, flags, {size, buffer, used, count});
        if (error == ERROR_SUCCESS || error == ERROR_INSUFFICIENT_BUFFER) {
            call.Returns(L"BufferUsed", *used);
        }
        return error;
    });
}

}  // namespace replay::api
