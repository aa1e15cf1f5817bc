#pragma once

// The forms in which recognised words can come, and which of them a text is in.
//
//   fromRawValue<WordsFormat>("ctm");                     // WordsFormat::ctm
//   recognisedFormat("talk 1 0.60 0.45 behind 0.98\n");   // WordsFormat::ctm
//
// A new form: a reader in a file of its own, a row in the table and a case in wordsReader.

#include <memory>
#include <optional>
#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "host/words/WordsReader.h"

namespace Varnelle {

enum class WordsFormat { jsonLines, vosk, whisper, sherpa, ctm, webVtt, srt };

}  // namespace Varnelle

template <>
struct PrompterCore::Enumeration<Varnelle::WordsFormat> {
    using Format = Varnelle::WordsFormat;
    struct Row {
        Format value;
        std::string_view caseName, rawValue;  // the raw value is its name on the command line
    };
    static constexpr Row rows[] = {
        {Format::jsonLines, "jsonLines", "jsonl"},
        {Format::vosk, "vosk", "vosk"},
        {Format::whisper, "whisper", "whisper"},
        {Format::sherpa, "sherpa", "sherpa"},
        {Format::ctm, "ctm", "ctm"},
        {Format::webVtt, "webVtt", "vtt"},
        {Format::srt, "srt", "srt"},
    };
};

namespace Varnelle {

/// The form of the text that begins with `beginning`, which holds whole lines. Absent while more
/// lines must be seen.
[[nodiscard]] std::optional<WordsFormat> recognisedFormat(std::string_view beginning);

/// Reads a text of this form from its beginning.
[[nodiscard]] std::unique_ptr<WordsReader> wordsReader(WordsFormat format, WordsArrival arrival);

}  // namespace Varnelle
