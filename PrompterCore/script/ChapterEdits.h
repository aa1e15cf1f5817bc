#pragma once

// Chapters as units of editing: each operation looks at a script and answers with the one edit that
// does what was asked. Nothing is changed here.
//
// Units: a position is a character of the script, a chapter an index into
// ScriptChapters::chaptersOf(script). Blank lines are written as line feeds.
//
//   Script script("# One\na\n\n# Two\nb\n");
//   ChapterEdits::move(1, 0, script)->appliedTo(script.text());
//   // "# Two\nb\n\n# One\na\n"
//   ChapterEdits::rename(0, "First", script)->selection;    // characters 2 ..< 7: "First"
//
// An edit belongs to the script that it was made from. A title is written as it is: one that holds
// a line break or nothing visible makes no heading of that name.

#include <cstdint>
#include <optional>
#include <string_view>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/script/TextEdit.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore::ChapterEdits {

/// What a host calls a chapter that has no title yet.
inline constexpr std::string_view newTitle = "New chapter";

/// Makes a heading at the caret, with blank lines between it and the text on either side: behind
/// the text that stands before the caret on its line, or else in front of the whole line. The title
/// is selected. `position` is taken as the nearest in the script.
[[nodiscard]] TextEdit insertHeading(const Text& title, std::int64_t position,
                                     const Script& script);

/// Makes a chapter with `text`, trimmed, as its body: in front of `chapter` or, without one, at the
/// end, where it replaces the white space. Absent when there is no such chapter.
[[nodiscard]] std::optional<TextEdit> add(const Text& title, const Text& text,
                                          std::optional<std::int64_t> chapter,
                                          const Script& script);

/// Writes the heading line anew, without its indentation; the title is selected. Absent when there
/// is no such chapter.
[[nodiscard]] std::optional<TextEdit> rename(std::int64_t chapter, const Text& title,
                                             const Script& script);

/// Puts `text`, trimmed, in place of all that follows the heading line. Absent when there is no
/// such chapter.
[[nodiscard]] std::optional<TextEdit> replaceTextOf(std::int64_t chapter, const Text& text,
                                                    const Script& script);

/// Takes the chapter out; `keepingText` takes out only its heading line and the line breaks behind
/// it, so that its text joins the chapter before. Absent when there is no such chapter.
[[nodiscard]] std::optional<TextEdit> remove(std::int64_t chapter, bool keepingText,
                                             const Script& script);

/// Takes the chapter out and puts it in again so that `destination` is its new index. All chapters
/// come out with one blank line between them; what stands before the first stays as it is. Absent
/// when there is no such chapter or destination, or when they are the same.
[[nodiscard]] std::optional<TextEdit> move(std::int64_t chapter, std::int64_t destination,
                                           const Script& script);

}  // namespace PrompterCore::ChapterEdits
