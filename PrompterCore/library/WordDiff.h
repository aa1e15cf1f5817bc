#pragma once

// Two texts compared word by word.
//
//   WordDiff::between("the quick fox", "the slow fox");
//   // equal "the", delete "quick", insert "slow", equal "fox"

#include <vector>

#include "PrompterCore/library/DiffOperation.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore::WordDiff {

/// What became of the words, in reading order. Words are what white space separates; they compare
/// by canonical equivalence, with their case and punctuation. A segment's words are joined by
/// single spaces, whatever stood between them, and no two neighbours have the same operation. Empty
/// when neither text has a word. O(n m) in words.
[[nodiscard]] std::vector<DiffSegment> between(const Text& before, const Text& after);

}  // namespace PrompterCore::WordDiff
