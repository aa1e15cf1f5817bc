#pragma once

// `varnelle chapters`: a script's chapters listed, and edited one by one.
//
// Units: chapters are counted from 1, as a user counts. Each function says what is wrong on
// standard error and returns the exit status.
//
// An edited script keeps its byte order mark, and where all its lines end alike (CR LF, as Windows
// writes them) new ones end so too.

#include <cstdint>
#include <optional>
#include <string>

#include "apps/varnelle/ExitStatus.h"

namespace Varnelle {

/// A script, and where it goes when it is edited: to standard output or back into its file.
struct EditedScript {
    std::string file;
    bool isInPlace = false;
};

/// The chapters with their starts and reading times; with `json` as records. Where there are none,
/// standard error says so.
void listChapters(const std::string& file, bool json);

/// A new chapter in front of chapter `before`, or at the end. Its text is the file `text`, if any.
ExitStatus addChapter(const EditedScript& script, const std::string& title,
                      const std::optional<std::string>& text, std::optional<std::int64_t> before);
ExitStatus renameChapter(const EditedScript& script, std::int64_t chapter,
                         const std::string& title);
/// With `keepingText` only its heading goes.
ExitStatus removeChapter(const EditedScript& script, std::int64_t chapter, bool keepingText);
ExitStatus moveChapter(const EditedScript& script, std::int64_t chapter, std::int64_t destination);
/// The chapter's text becomes that of the file `text`.
ExitStatus replaceChapter(const EditedScript& script, std::int64_t chapter,
                          const std::string& text);

/// The chapter by itself, ready to be prompted, on standard output.
ExitStatus excerptChapter(const std::string& file, std::int64_t chapter);

}  // namespace Varnelle
