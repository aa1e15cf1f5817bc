#pragma once

// One change of a text: a range of characters gives way to a new text. A host applies it to its
// text view, so that it joins the editor's undo history.
//
// Units: user-perceived characters of the text before the edit, for the selection of the text after
// it.
//
//   TextEdit edit{.range = CharacterRange(5, 5), .replacement = ",", .selection = std::nullopt};
//   edit.appliedTo("Hello world");    // "Hello, world"

#include <optional>

#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One replacement, and what is selected afterwards.
struct TextEdit {
    CharacterRange range;                     ///< what gives way; empty for an insertion
    Text replacement;                         ///< what takes its place
    std::optional<CharacterRange> selection;  ///< to be set in the edited text; absent when the
                                              ///< host keeps its own

    /// The edited text. Stops the program unless the range lies within `text`. O(n).
    [[nodiscard]] Text appliedTo(const Text& text) const;

    friend bool operator==(const TextEdit&, const TextEdit&) = default;
};

}  // namespace PrompterCore
