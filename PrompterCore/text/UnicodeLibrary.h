#pragma once

// What the sources of this room share of the Unicode library. Not installed.

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>

#include "PrompterCore/support/Require.h"

namespace PrompterCore::UnicodeLibrary {

/// The normaliser that `instance` gives, as in normalizer(icu::Normalizer2::getNFCInstance).
inline const icu::Normalizer2& normalizer(const icu::Normalizer2* (*instance)(UErrorCode&)) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* result = instance(status);
    require(U_SUCCESS(status), "the Unicode library has its normalisation data");
    return *result;
}

/// The bytes as the library takes them. It counts in 32 bits: stops the program unless they do.
inline icu::StringPiece piece(std::string_view bytes) {
    require(bytes.size() <= static_cast<std::size_t>(std::numeric_limits<std::int32_t>::max()),
            "a text that is normalised or lower-cased has less than 2 GB");
    return {bytes.data(), static_cast<std::int32_t>(bytes.size())};
}

/// `bytes`, well-formed, with every long run of combining marks in canonical order; the canonical
/// equivalent of what was given. Absent when they all stand in order already. The library sorts
/// marks by insertion, which a run of thousands would make quadratic. O(n).
[[nodiscard]] std::optional<std::string> withOrderedMarks(std::string_view bytes);

}  // namespace PrompterCore::UnicodeLibrary
