// What a recogniser's process sends when it has lost its mind: reading it never fails, whatever its
// pieces are, what was read writes back to the same bytes, and nothing follows what is broken.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/support/Require.h"
#include "host/RecogniserMessages.h"

using namespace Varnelle;
using PrompterCore::require;

namespace {

std::vector<RecogniserMessage> messagesIn(std::string_view bytes, std::size_t step, bool& broken) {
    MessageReader reader;
    std::vector<RecogniserMessage> messages;
    for (; !bytes.empty(); bytes.remove_prefix(std::min(step, bytes.size()))) {
        reader.append(bytes.substr(0, step));
        while (const auto message = reader.next()) {
            require(!reader.isBroken(), "a broken stream has no messages");
            messages.push_back(*message);
        }
    }
    broken = reader.isBroken();
    return messages;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(data, data + size);
    bool broken = false;
    const std::vector<RecogniserMessage> messages = messagesIn(bytes, bytes.size() + 1, broken);
    bool brokenInPieces = false;
    require(messagesIn(bytes, 3, brokenInPieces) == messages,
            "messages do not depend on the pieces");
    require(broken == brokenInPieces, "nor does what breaks");
    std::string written;
    for (const RecogniserMessage& message : messages) {
        written += bytesOf(message);
        if (const auto updates = updatesFromBytes(message.content))
            require(updatesFromBytes(bytesOfUpdates(*updates)) == updates, "updates read back");
        if (const auto samples = samplesFromBytes(message.content))
            require(bytesOfSamples(*samples) == message.content, "samples read back");
    }
    require(bytes.starts_with(written), "what was read writes back to the same bytes");
    return 0;
}
