#pragma once

// A script's chapters: the stretches from one heading line to the next.
//
// Units: characters, words and tokens as in Script; times are whole seconds at the reading pace.
//
//   Script script("# One\nHello world\n# Two\nBye");
//   auto chapters = ScriptChapters::chaptersOf(script);
//   chapters[1].title;                        // "Two"
//   ScriptChapters::current(1, chapters);     // 0: token 1 is in the first chapter

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One chapter. Every range runs up to the next heading, or to the end for the last chapter.
struct ScriptChapter {
    std::int64_t index = 0;      ///< its place in the list, and its heading's in Script::headings
    Text title;                  ///< the heading's
    CharacterRange sourceRange;  ///< the heading line and everything up to the next heading line
    WordRange wordRange;         ///< the words below the heading
    TokenRange tokenRange;       ///< the tokens below the heading
    std::int64_t startsAt = 0;   ///< whole seconds from the script's start until it is reached,
                                 ///< counting every word before it

    /// The number of words below the heading.
    [[nodiscard]] std::int64_t wordCount() const noexcept { return wordRange.count(); }

    friend bool operator==(const ScriptChapter&, const ScriptChapter&) = default;
};

namespace ScriptChapters {

/// One chapter for each heading, in text order. Text before the first heading is in none; without
/// headings there are none. O(n) in headings.
[[nodiscard]] std::vector<ScriptChapter> chaptersOf(const Script& script);

/// The index of the chapter that holds token `cursor`; -1 and 0 both mean the very beginning. Of
/// chapters that begin at the same token the last. Absent before the first chapter's first token.
[[nodiscard]] std::optional<std::int64_t> current(std::int64_t cursor,
                                                  std::span<const ScriptChapter> chapters) noexcept;

}  // namespace ScriptChapters

}  // namespace PrompterCore
