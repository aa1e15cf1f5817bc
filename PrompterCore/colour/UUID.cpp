#include "PrompterCore/colour/UUID.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "PrompterCore/colour/HexDigits.h"

namespace PrompterCore {

namespace {

constexpr std::size_t length = 36;

constexpr bool isHyphenBefore(std::size_t byte) noexcept {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

}  // namespace

std::optional<UUID> UUID::fromText(const Text& text) {
    const std::string_view written = text.utf8();
    if (written.size() != length) return std::nullopt;
    Bytes bytes{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < bytes.size(); i++) {
        if (isHyphenBefore(i) && written[at++] != '-') return std::nullopt;
        const auto byte = HexDigits::byteAt(written, at);
        if (!byte) return std::nullopt;
        bytes[i] = *byte;
        at += 2;
    }
    return UUID(bytes);
}

std::string UUID::text() const {
    std::string written;
    for (std::size_t i = 0; i < bytes_.size(); i++) {
        if (isHyphenBefore(i)) written += '-';
        HexDigits::append(written, bytes_[i]);
    }
    return written;
}

UUID RecordCoding<UUID>::read(const RecordValue& value) {
    const std::optional<UUID> id = UUID::fromText(value.text());
    if (!id)
        throw RecordFailure(RecordFailure::Kind::mismatch,
                            value.json() + " where a UUID is required");
    return *id;
}

RecordValue RecordCoding<UUID>::write(const UUID& id) { return RecordValue(Text(id.text())); }

}  // namespace PrompterCore
