#pragma once

// The words of captions, WebVTT and SRT: phrases with their start and end, which share out their
// time by the letters of their words; in WebVTT perhaps a time before each word.
//
//   00:00:00.600 --> 00:00:01.660 align:start
//   Behind <00:00:01.050>me <00:00:01.200>stands
//
// Comma or dot, hours or none are read in both. Cues may overlap and need no order. What a cue
// repeats of the one before it, as captions that roll up do, is read once. The words are known when
// all has been read.

#include <optional>
#include <string>
#include <vector>

#include "host/words/WordsReader.h"

namespace Varnelle {

class CaptionWords final : public WordsReader {
protected:
    void read(std::string_view line) override;
    void end() override;

private:
    // The lines of one cue, behind its times.
    struct Cue {
        std::int64_t line = 0;
        double start = 0, end = 0;
        std::vector<std::string> texts;
    };

    void startCue(std::string_view line);
    void finishCue();
    void addWords(const Cue& cue, std::string_view text);

    std::optional<Cue> cue_;           // being read
    bool isRemark_ = false;            // within a block that is no cue: NOTE, STYLE, REGION
    bool isBlockStart_ = true;         // behind an empty line
    std::optional<std::string> head_;  // a block's first line, perhaps its number or name
    std::int64_t headLine_ = 0;
    std::string lastText_;  // the last line of the previous cue
    double lastEnd_ = 0;
    std::vector<HeardWord> words_;
};

}  // namespace Varnelle
