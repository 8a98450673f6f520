#include "replay/service/service.h"

#include "replay/platform/environment.h"
#include "replay/platform/file.h"
#include "replay/platform/notice.h"
#include "replay/platform/shared_file.h"
#include "replay/script/script.h"
#include "replay/text/utf8.h"

#include <mutex>
#include <shared_mutex>
#include <utility>

namespace replay::service {
namespace {

std::atomic<Service*> g_started{nullptr};

// Writes "clean", or one line for each open handle and each misuse.
void WriteLines(const std::wstring& path, const std::vector<std::wstring>& open,
                const std::vector<std::wstring>& faults) {
    std::wstring text;
    for (const auto& line : faults) {
        text += line + L"\n";
    }
    for (const auto& line : open) {
        text += line + L"\n";
    }
    if (text.empty()) {
        text = L"clean\n";
    }
    if (const auto file = platform::CreateOutputFile(path)) {
        platform::WriteBytes(file.get(), text::ToUtf8(text));
    }
}

}  // namespace

Service& Service::Get() {
    // Never deleted: see Service.
    static Service* const service = [] {
        auto* created = new Service;
        created->UseRecordingOfEnvironment();
        const std::wstring log = platform::Environment(L"TAVRIN_REPLAY_CALLS");
        if (!log.empty() && !created->calls.WriteTo(log)) {
            platform::Notice(log + L": cannot be written");
        }
        const std::wstring script = platform::Environment(L"TAVRIN_REPLAY_SCRIPT");
        if (!script.empty()) {
            const auto text = platform::ReadWholeFile(script);
            if (text) {
                created->UseScript(text::ToWide(*text));
            } else {
                platform::Notice(script + L": cannot be read");
            }
        }
        g_started = created;
        return created;
    }();
    return *service;
}

Service* ServiceIfStarted() {
    return g_started;
}

Service::Service()
    : live([this] { return CurrentRecording(); }),
      startMs_(GetTickCount64()),
      reportPath_(platform::Environment(L"TAVRIN_REPLAY_REPORT")) {}

std::shared_ptr<recording::Recording> Service::CurrentRecording() const {
    const std::shared_lock guard(lock_);
    return recording_;
}

void Service::UseRecording(std::shared_ptr<recording::Recording> recording) {
    const std::lock_guard guard(lock_);
    recording_.swap(recording);
}

void Service::UseRecordingOfEnvironment() {
    const std::wstring directory = platform::Environment(L"TAVRIN_REPLAY_LOGS");
    UseRecording(directory.empty() ? recording::Recording::FromResources()
                                   : recording::Recording::FromDirectory(directory));
}

bool Service::UseScript(std::wstring_view text) {
    script::Script script = script::ReadScript(text);
    for (const std::size_t line : script.wrongLines) {
        platform::Notice(L"line " + std::to_wstring(line) +
                         L" of the script is wrong and left out");
    }
    faults.Replace(std::move(script.faults));
    calls.Only(script.logged);
    pace.Replace(script.paces, std::move(script.scans));
    for (recording::ChannelConfig& channel : script.channels) {
        CurrentRecording()->Add(std::move(channel), {});
    }
    live.Schedule(std::move(script.changes));
    return script.wrongLines.empty();
}

void Service::Reset() {
    UseScript({});
    UseRecordingOfEnvironment();
    handles.Clear();
    calls.Collect(false);
    for (auto& count : counts_) {
        count = 0;
    }
}

std::uint64_t Service::CallsOf(calls::ApiFunction function) const {
    return counts_[static_cast<std::size_t>(function)];
}

calls::CallId Service::Count(calls::ApiFunction function) {
    ++counts_[static_cast<std::size_t>(function)];
    return {function, ++sequence_};
}

std::uint64_t Service::MillisecondsSinceStart() const {
    return GetTickCount64() - startMs_;
}

void Service::WriteReport() {
    if (!reportPath_.empty()) {
        WriteLines(reportPath_, handles.DescribeOpen(), handles.Faults());
    }
}

void Service::WriteLastReport() {
    if (reportPath_.empty()) {
        return;
    }
    // A thread that was terminated inside the table still holds its lock.
    if (!handles.TryLock()) {
        WriteLines(reportPath_, {}, {L"unknown: a thread was ended while it used a handle"});
        return;
    }
    WriteLines(reportPath_, handles.DescribeOpenLocked(), handles.FaultsLocked());
    handles.Unlock();
}

}  // namespace replay::service
