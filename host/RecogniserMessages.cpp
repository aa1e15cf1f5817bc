#include "host/RecogniserMessages.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>
#include <variant>

#include "PrompterCore/support/Require.h"
#include "host/WordsFile.h"

namespace Varnelle {

namespace {

constexpr std::size_t headSize = 5;  // bytes: the kind and the length

}  // namespace

std::string bytesOf(const RecogniserMessage& message) {
    const std::size_t size = message.content.size();
    PrompterCore::require(size <= RecogniserMessage::largest, "a message is not too large");
    std::string bytes(1, static_cast<char>(message.kind));
    for (std::size_t i = 0; i < headSize - 1; ++i) {
        bytes.push_back(static_cast<char>((size >> (8 * i)) & 0xFFU));
    }
    return bytes + message.content;
}

std::optional<RecogniserMessage> MessageReader::next() {
    if (isBroken_ || bytes_.size() < headSize) return std::nullopt;
    std::size_t size = 0;
    for (std::size_t i = 0; i < headSize - 1; ++i) {
        size |= std::size_t{static_cast<unsigned char>(bytes_[1 + i])} << (8 * i);
    }
    using Kind = RecogniserMessage::Kind;
    const auto kind = static_cast<Kind>(bytes_[0]);
    isBroken_ = size > RecogniserMessage::largest || (kind != Kind::ready && kind != Kind::hear &&
                                                      kind != Kind::finish && kind != Kind::words);
    if (isBroken_ || bytes_.size() < headSize + size) return std::nullopt;
    RecogniserMessage message{kind, bytes_.substr(headSize, size)};
    bytes_.erase(0, headSize + size);
    return message;
}

std::string bytesOfSamples(std::span<const float> samples) {
    const auto bytes = std::as_bytes(samples);
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

std::optional<std::vector<float>> samplesFromBytes(std::string_view bytes) {
    if (bytes.size() % sizeof(float) != 0) return std::nullopt;
    std::vector<float> samples(bytes.size() / sizeof(float));
    if (!bytes.empty()) std::memcpy(samples.data(), bytes.data(), bytes.size());
    return samples;
}

std::string bytesOfUpdates(std::span<const WordsUpdate> updates) {
    std::string bytes;
    for (const WordsUpdate& update : updates) {
        bytes += lineFromWords(update);
        bytes += '\n';
    }
    return bytes;
}

std::optional<std::vector<WordsUpdate>> updatesFromBytes(std::string_view bytes) {
    std::vector<WordsUpdate> updates;
    while (!bytes.empty()) {
        const std::size_t end = bytes.find('\n');
        if (end == std::string_view::npos) return std::nullopt;
        auto read = wordsFromLine(bytes.substr(0, end));
        if (!std::holds_alternative<WordsUpdate>(read)) return std::nullopt;
        updates.push_back(std::get<WordsUpdate>(std::move(read)));
        bytes.remove_prefix(end + 1);
    }
    return updates;
}

}  // namespace Varnelle
