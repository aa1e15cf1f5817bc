#pragma once

// CTM, the word times of speech recognition's evaluations: a word on each line, with the
// recording's name, the channel, start and duration in seconds, and perhaps a confidence.
//
//   ;; a comment
//   talk 1 0.60 0.45 behind 0.98
//
// Of alternatives the first one counts. One reading is one recording: words of another are broken.

#include <string>

#include "host/words/WordsReader.h"

namespace Varnelle {

/// True for a line that is a word in this form.
[[nodiscard]] bool isCtmLine(std::string_view line);

class CtmWords final : public WordsReader {
protected:
    void read(std::string_view line) override;

private:
    std::string recording_;  // of the first word; none before it
    bool isOther_ = false;   // within an alternative behind the first
};

}  // namespace Varnelle
