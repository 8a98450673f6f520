#pragma once

#include <string>
#include <vector>

#include "support/recording.h"

namespace tavrin::test {

// A channel that the stories select, as it is recorded and as the tree shows it.
struct StoryChannel {
    std::wstring path;
    std::vector<std::wstring> treePath;
    std::vector<RecordedEvent> events;  // newest first
};

// Two pages of events, each of another look. The newest has a message, the second none, the
// third a provider that is not registered, and the others two providers by turns.
const StoryChannel& SmallChannel();

// More events than a load reads before it pauses.
const StoryChannel& LargeChannel();

// All channels, in the order in which the service lists them.
const std::vector<RecordedChannel>& ListedChannels();

// What the events' data are in the text of an event without message.
std::wstring DataText(const RecordedEvent& event);

// The event that arrives while the small channel is shown.
RecordedEvent ArrivingEvent();

// A recording of the channels on disk; the large one is left empty where nobody selects it.
enum class Content { Small, Whole };
class FaultRecording {
public:
    explicit FaultRecording(Content content);

    const std::filesystem::path& folder() const { return writer_.folder(); }
    void Append(const RecordedEvent& event) const {
        writer_.AppendEvent(SmallChannel().path, event);
    }

private:
    Recording writer_;
};

}  // namespace tavrin::test
