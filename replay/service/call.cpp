#include "replay/service/call.h"

#include "replay/results/query_text.h"
#include "replay/text/channel_name.h"

#include <algorithm>

namespace replay::service {
namespace {

HANDLE HandleOf(const calls::Argument& argument) {
    return const_cast<HANDLE>(argument.pointer);
}

// Whether a text argument is the channel's name or a structured query that names it.
bool Names(const calls::Argument& argument, const std::wstring& foldedChannel) {
    const auto* text = static_cast<const wchar_t*>(argument.pointer);
    if (text == nullptr) {
        return false;
    }
    if (argument.name != L"Query") {
        return text::FoldCase(text) == foldedChannel;
    }
    const results::QueryText query = results::ReadQuery(L"", text);
    return std::ranges::any_of(query.terms, [&foldedChannel](const results::QueryTerm& term) {
        return text::FoldCase(term.channel) == foldedChannel;
    });
}

}  // namespace

Call::Call(calls::ApiFunction function, calls::Arguments arguments)
    : service_(Service::Get()), arguments_(arguments) {
    if (calls::CanBeCancelled(function)) {
        operation_.BeginOn(service_.handles.Peek(HandleOf(arguments.front())).object);
    }
    // Counted only after registration, so that a caller that sees the count can cancel the call.
    id_ = service_.Count(function);
    if (service_.calls.IsOn(function)) {
        milliseconds_ = service_.MillisecondsSinceStart();
    }
    const auto isAbout = [this](const std::wstring& channel) { return IsAbout(channel); };
    if (service_.pace.IsOn()) {
        operation_.SetCosts(service_.pace.CostsOf(function, isAbout));
    }
    if (service_.faults.IsOn()) {
        effects_ = service_.faults.Enter(function, operation_, isAbout);
    }
}

void Call::Returns(std::wstring_view name, std::uint64_t value) {
    if (!service_.calls.IsOn(id_.function)) {
        return;
    }
    returned_.append(L" ").append(name).append(L"=").append(std::to_wstring(value));
}

calls::HandleTarget Call::Use(HANDLE handle, calls::HandleKind kind) const {
    return Reported(service_.handles.Use(handle, kind, id_));
}

calls::HandleTarget Call::UseAny(HANDLE handle) const {
    return Reported(service_.handles.Use(handle, id_));
}

calls::HandleTarget Call::Reported(calls::HandleTarget target) const {
    if (!target) {
        service_.WriteReport();
    }
    return target;
}

HANDLE Call::Open(calls::HandleKind kind, std::shared_ptr<calls::Object> object) const {
    return service_.handles.Open(kind, std::move(object), id_, calls::Describe(arguments_));
}

void Call::Leave(std::wstring_view result, DWORD error) {
    operation_.Pay();
    if (service_.calls.IsOn(id_.function)) {
        service_.calls.Add({id_.sequence, milliseconds_, GetCurrentThreadId(),
                            std::wstring(calls::NameOf(id_.function)), calls::Describe(arguments_),
                            std::wstring(result) + returned_, error});
    }
    SetLastError(error);
}

bool Call::IsAbout(const std::wstring& foldedChannel) const {
    return std::ranges::any_of(arguments_, [&](const calls::Argument& argument) {
        if (argument.kind == calls::Argument::Kind::kText) {
            return Names(argument, foldedChannel);
        }
        if (argument.kind != calls::Argument::Kind::kHandle) {
            return false;
        }
        const calls::HandleTarget target = service_.handles.Peek(HandleOf(argument));
        return target && target.object->IsAbout(foldedChannel);
    });
}

}  // namespace replay::service
