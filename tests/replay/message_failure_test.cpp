#include <optional>
#include <string>

#include "event_log.h"
#include "test_recording.h"

namespace {

using namespace replay_test;

// Formats the messages of Alpha as a caller that asks for the size first.
class MessageFailures : public ReplayTest {
protected:
    void TearDown() override {
        LetGo();
        ReplayTest::TearDown();
    }
    // Releases Alpha's file, which cannot be replaced while it is served.
    void LetGo() {
        event = Handle();
        publisher = Handle();
        replay::LoadEmbedded();
    }

    struct Outcome {
        DWORD error = ERROR_SUCCESS;
        DWORD used = 0;
        std::wstring text;
    };

    // Serves a log of one event. `failure` is the error with which its message is returned.
    void WriteMessage(const std::optional<std::wstring>& message, DWORD failure = ERROR_SUCCESS) {
        LetGo();
        std::string file =
            tavrin::test::EventsXml(L"Alpha", {{.provider = L"Alder", .message = message}});
        if (failure != ERROR_SUCCESS) {
            file.insert(file.find("<Message") + 8, " Failure='" + std::to_string(failure) + "'");
        }
        ServeAlpha(file);
        event = NextEvent(Query(L"Alpha"));
        publisher = Handle(EvtOpenPublisherMetadata(nullptr, L"Alder", nullptr, 0, 0));
    }
    // Formats into a buffer of `size` characters, or without a buffer if `size` is 0.
    Outcome Format(DWORD size) const {
        std::wstring buffer(size, L'?');
        Outcome outcome;
        outcome.error = ErrorOf(
            EvtFormatMessage(publisher.get(), event.get(), 0, 0, nullptr, EvtFormatMessageEvent,
                             size, size == 0 ? nullptr : buffer.data(), &outcome.used));
        outcome.text = buffer.substr(0, buffer.find(L'\0'));
        return outcome;
    }

    Handle event;
    Handle publisher;
};

TEST_F(MessageFailures, ARecorded15029StillReturnsTheText) {
    WriteMessage(L"The service %1 stopped.", ERROR_EVT_UNRESOLVED_VALUE_INSERT);
    const Outcome size = Format(0);
    EXPECT_EQ(size.error, DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(size.used, DWORD{24});
    const Outcome filled = Format(size.used);
    EXPECT_EQ(filled.error, DWORD{ERROR_EVT_UNRESOLVED_VALUE_INSERT});
    EXPECT_EQ(filled.text, L"The service %1 stopped.");
}

TEST_F(MessageFailures, AScripted15029ComesWithTheSizeAndTheText) {
    WriteMessage(L"text");
    ASSERT_TRUE(replay::Script(L"fail EvtFormatMessage code=15029"));
    const Outcome size = Format(0);
    EXPECT_EQ(size.error, DWORD{ERROR_EVT_UNRESOLVED_VALUE_INSERT});
    EXPECT_EQ(size.used, DWORD{5});
    const Outcome filled = Format(size.used);
    EXPECT_EQ(filled.error, DWORD{ERROR_EVT_UNRESOLVED_VALUE_INSERT});
    EXPECT_EQ(filled.text, L"text");
}

TEST_F(MessageFailures, AScripted15029HidesNoOtherFailure) {
    WriteMessage({});
    ASSERT_TRUE(replay::Script(L"fail EvtFormatMessage code=15029"));
    EXPECT_EQ(Format(0).error, DWORD{ERROR_EVT_MESSAGE_NOT_FOUND});
}

// Errors of the service if the message, its table or its language is missing.
constexpr DWORD kNoMessage[] = {
    ERROR_RESOURCE_TYPE_NOT_FOUND,  ERROR_RESOURCE_LANG_NOT_FOUND,      ERROR_EVT_MESSAGE_NOT_FOUND,
    ERROR_EVT_MESSAGE_ID_NOT_FOUND, ERROR_EVT_MESSAGE_LOCALE_NOT_FOUND, ERROR_MUI_FILE_NOT_FOUND,
};

TEST_F(MessageFailures, OtherCodesComeWithNothing) {
    for (const DWORD code : kNoMessage) {
        WriteMessage(L"text", code);
        EXPECT_EQ(Format(0).error, code);
        const Outcome filled = Format(5);
        EXPECT_EQ(filled.error, code);
        EXPECT_EQ(filled.text, L"?????");
    }
}

TEST_F(MessageFailures, OtherScriptedCodesComeWithNothing) {
    WriteMessage(L"text");
    for (const DWORD code : kNoMessage) {
        ASSERT_TRUE(
            replay::Script(L"fail EvtFormatMessage code=" + std::to_wstring(code) + L" call=2"));
        EXPECT_EQ(Format(0).error, DWORD{ERROR_INSUFFICIENT_BUFFER});
        const Outcome filled = Format(5);
        EXPECT_EQ(filled.error, code);
        EXPECT_EQ(filled.text, L"?????");
    }
}

TEST_F(MessageFailures, APublisherMayHaveNoMetadata) {
    ASSERT_TRUE(replay::Script(L"fail EvtOpenPublisherMetadata code=15002"));
    EXPECT_EQ(EvtOpenPublisherMetadata(nullptr, L"Alder", nullptr, 0, 0), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_EVT_PUBLISHER_METADATA_NOT_FOUND});
}

}  // namespace
