#pragma once

// Identifiers of 128 bits, as of RFC 4122.
//
//   const auto id = UUID::fromText("0f8fad5b-d9cb-469f-a165-70867728950e");
//   id->text();                        // "0F8FAD5B-D9CB-469F-A165-70867728950E"
//   UUID::fromRandom(randomBytes);     // a fresh one, out of the host's own source of randomness

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value. Whoever needs a fresh one brings the randomness: the library has no source of it.
class UUID {
public:
    using Bytes = std::array<std::uint8_t, 16>;

    /// These bytes, in the order in which they are written.
    constexpr explicit UUID(const Bytes& bytes) noexcept : bytes_(bytes) {}

    /// Version 4: 122 of the bits are `random`'s, six say the version and the variant.
    [[nodiscard]] static constexpr UUID fromRandom(const Bytes& random) noexcept {
        Bytes bytes = random;
        bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
        bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
        return UUID(bytes);
    }

    /// 32 hexadecimal digits in groups of 8, 4, 4, 4 and 12 with hyphens between them, in either
    /// case. Absent for anything else: no braces, no blanks.
    [[nodiscard]] static std::optional<UUID> fromText(const Text& text);

    /// The 36 characters that fromText reads, in upper case.
    [[nodiscard]] std::string text() const;

    /// In the order in which they are written.
    [[nodiscard]] constexpr const Bytes& bytes() const noexcept { return bytes_; }

    friend constexpr bool operator==(const UUID&, const UUID&) = default;

private:
    Bytes bytes_;
};

/// Stored as its text.
template <>
struct RecordCoding<UUID> {
    static UUID read(const RecordValue& value);
    static RecordValue write(const UUID& id);
};

}  // namespace PrompterCore
