#pragma once

// Questions about the library's tree. An item's id is its path: the parent of "a/b/c" is "a/b".
// Ids compare as whole texts, canonically equivalent ones being equal.
//
// Every walk is depth-first, an item before its children, in the order given. An empty list gives
// an absent or empty answer everywhere. Items that are returned come whole, with all their
// children: that copy is what a call costs beside its walk, O(n) in items unless it says otherwise.
//
//   LibraryTree::parentIDOf("Talks/2024/Keynote");                // "Talks/2024"
//   LibraryTree::neighbourOf("Talks", 1, items, {"Talks"});       // the first row inside it

#include <cstdint>
#include <optional>
#include <set>
#include <vector>

#include "PrompterCore/library/ScriptItem.h"
#include "PrompterCore/text/Locale.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore::LibraryTree {

/// The first item with the id `wanted`. Absent when there is none.
[[nodiscard]] std::optional<ScriptItem> find(const Text& wanted,
                                             const std::vector<ScriptItem>& items);

/// `id` without its last component; a "/" at either end, or beside another, separates nothing.
/// Absent for an id of fewer than two components.
[[nodiscard]] std::optional<Text> parentIDOf(const Text& id);

/// True when `id` lies below `ancestor` by its path. Asks no tree; an id does not lie below itself.
[[nodiscard]] bool isDescendant(const Text& id, const Text& ancestor);

/// The items that `id` lies in, the outermost first; those that are not in the tree are left out.
[[nodiscard]] std::vector<ScriptItem> ancestorsOf(const Text& id,
                                                  const std::vector<ScriptItem>& items);

/// The id of the folder that something new goes into: the selected folder, or the one that the
/// selected script lies in. Absent for the top level, also when nothing that exists is selected.
[[nodiscard]] std::optional<Text> insertionFolderFor(const std::optional<Text>& selected,
                                                     const std::vector<ScriptItem>& items);

/// The remembered item, where it exists and is a script; firstScript otherwise.
[[nodiscard]] std::optional<ScriptItem> scriptToOpen(const std::optional<Text>& remembered,
                                                     const std::vector<ScriptItem>& items);

/// The first script. Absent when there is none. Scripts' own children, should they have any, come
/// too late to count; only folders are looked into.
[[nodiscard]] std::optional<ScriptItem> firstScript(const std::vector<ScriptItem>& items);

/// What a search shows: items whose name contains `query`, whole, and the folders that lead to
/// them, reduced to that. The query is trimmed of horizontal blanks; an empty one gives the items
/// as they are. Case does not count, by the rules of `locale`; user-perceived characters match as
/// wholes, so that "e" is not found in "é".
[[nodiscard]] std::vector<ScriptItem> filtered(const std::vector<ScriptItem>& items,
                                               const Text& query, const Locale& locale = Locale());

/// The ids of all folders. Scripts are not looked into.
[[nodiscard]] std::vector<Text> folderIDs(const std::vector<ScriptItem>& items);

/// The ids of the rows that are shown: all items but those inside a folder that is not `expanded`.
[[nodiscard]] std::vector<Text> visibleIDs(const std::vector<ScriptItem>& items,
                                           const std::set<Text>& expanded);

/// The row `step` rows below `current` (above, when negative), at most the last or first one. The
/// first row when `current` is absent or not visible. Absent when nothing is visible.
[[nodiscard]] std::optional<Text> neighbourOf(const std::optional<Text>& current, std::int64_t step,
                                              const std::vector<ScriptItem>& items,
                                              const std::set<Text>& expanded);

}  // namespace PrompterCore::LibraryTree
