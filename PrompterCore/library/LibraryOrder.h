#pragma once

// The order in which one level of the library is shown.
//
//   LibraryOrder::sorted(items);   // folders first, then by name: "a", "B", "c"; "10" before "2"

#include <vector>

#include "PrompterCore/library/ScriptItem.h"

namespace PrompterCore::LibraryOrder {

/// The same items, folders first, each kind by name without regard to case and without a locale,
/// and those whose names are then equal by id. Items that are alike in all of this stay as they
/// stood. Children keep their order. O(n log n), each name folded once.
[[nodiscard]] std::vector<ScriptItem> sorted(std::vector<ScriptItem> items);

}  // namespace PrompterCore::LibraryOrder
