#pragma once

#include <string>
#include <vector>

#include "support/recording.h"

namespace tavrin::test {

// A channel that the stories select.
struct StoryChannel {
    std::wstring path;
    std::vector<std::wstring> treePath;
    std::vector<RecordedEvent> events;  // newest first
};

// Two pages of events that all differ. The newest has a message, the second has none, the third has
// an unregistered provider. The others alternate between two providers.
const StoryChannel& SmallChannel();

// Has more events than a load reads before it pauses.
const StoryChannel& LargeChannel();

// All channels in the service's order.
const std::vector<RecordedChannel>& ListedChannels();

// Returns the event's data as the text of an event without a message shows them.
std::wstring DataText(const RecordedEvent& event);

// The event that arrives while the small channel is shown.
RecordedEvent ArrivingEvent();

// A recording of the channels on disk. With Content::Small the large channel is empty.
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
