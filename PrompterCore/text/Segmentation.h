#pragma once

// Where user-perceived characters end: the extended grapheme clusters of Unicode Standard Annex 29.
//
//   Segmentation::clusterEnd("e\u0301a", 0);   // 3: e and its accent are one character
//   Segmentation::clusterEnd("\r\n", 0);       // 2: so is a carriage return with its line feed
//
// Consonants that a virama joins are one character too (rule GB9c, which came to the annex after
// the Unicode version that is oldest here; the Unicode library has had it longer).

#include <cstddef>
#include <string_view>

namespace PrompterCore::Segmentation {

/// The byte at which the cluster that starts at `start` ends. `bytes` are well-formed, `start` is
/// below their size and starts a cluster. O(n) in the cluster's length; never allocates.
[[nodiscard]] std::size_t clusterEnd(std::string_view bytes, std::size_t start) noexcept;

}  // namespace PrompterCore::Segmentation
