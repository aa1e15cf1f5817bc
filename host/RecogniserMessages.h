#pragma once

// What a program and its recogniser in another process tell each other: messages over a stream of
// bytes. What comes from the other side is not trusted: it may have been broken in the middle.
//
//   send(bytesOf({RecogniserMessage::Kind::words, bytesOfUpdates(updates)}));
//   MessageReader reader;
//   reader.append(received);
//   while (const auto message = reader.next()) ...
//   if (reader.isBroken()) ...          // no message can follow any more
//
// On the wire: a byte for the kind, four for the length of what follows (lowest first), the
// content.

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/HeardWords.h"

namespace Varnelle {

struct RecogniserMessage {
    enum class Kind : char {
        ready = 'r',   ///< from the recogniser: it listens; no content
        hear = 'h',    ///< to the recogniser: samples follow the last ones
        finish = 'f',  ///< to the recogniser: the sound has ended; no content
        words = 'w',   ///< from the recogniser: the updates that one `hear` or `finish` brought
    };
    static constexpr std::size_t largest = std::size_t{1} << 24;  ///< bytes of content

    Kind kind = Kind::ready;
    std::string content;

    friend bool operator==(const RecogniserMessage&, const RecogniserMessage&) = default;
};

/// Stops the program unless the content is at most `RecogniserMessage::largest` bytes long.
[[nodiscard]] std::string bytesOf(const RecogniserMessage& message);

/// Takes messages out of a stream as it comes. A value.
class MessageReader {
public:
    void append(std::string_view bytes) { bytes_ += bytes; }
    /// The next message that is there as a whole. Absent when more bytes are needed, and when the
    /// stream is broken.
    [[nodiscard]] std::optional<RecogniserMessage> next();
    /// True once a kind that does not exist or a content that is too large was announced.
    [[nodiscard]] bool isBroken() const noexcept { return isBroken_; }

    friend bool operator==(const MessageReader&, const MessageReader&) = default;

private:
    std::string bytes_;  // not yet taken
    bool isBroken_ = false;
};

/// Samples as a content, and back. A number of bytes that makes no whole samples is absent.
[[nodiscard]] std::string bytesOfSamples(std::span<const float> samples);
[[nodiscard]] std::optional<std::vector<float>> samplesFromBytes(std::string_view bytes);

/// Updates as a content, and back: lines as WordsFile.h knows them. Absent when one is broken.
[[nodiscard]] std::string bytesOfUpdates(std::span<const WordsUpdate> updates);
[[nodiscard]] std::optional<std::vector<WordsUpdate>> updatesFromBytes(std::string_view bytes);

}  // namespace Varnelle
