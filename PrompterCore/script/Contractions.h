#pragma once

// What an English contraction stands for. The keys carry no apostrophe, so that a word written
// without one ("its", "were") expands like the contraction: a recogniser writes both alike.

#include <optional>
#include <span>
#include <string_view>

namespace PrompterCore {

/// One contraction and its one or two words.
struct Contraction {
    std::string_view key;     ///< lower case, no apostrophe
    std::string_view first;   ///< the first word it stands for
    std::string_view second;  ///< the second; empty when there is only one

    friend bool operator==(const Contraction&, const Contraction&) = default;
};

/// All contractions, ordered by key.
[[nodiscard]] std::span<const Contraction> contractions() noexcept;

/// The contraction with this key. Absent when there is none. Never allocates.
[[nodiscard]] std::optional<Contraction> contractionFor(std::string_view key) noexcept;

}  // namespace PrompterCore
