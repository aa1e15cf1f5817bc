#pragma once

// The JSON document of whisper.cpp, short (-oj) or full (-ojf): segments with their times in
// milliseconds, in the full form also the pieces that words are made of.
//
//   {"transcription":[{"offsets":{"from":600,"to":1200},"text":" Behind me",
//     "tokens":[{"text":" Behind","offsets":{"from":600,"to":1050},"p":0.98}, ...]}]}
//
// A segment without pieces shares out its time by the letters of its words.

#include "host/words/JsonObjects.h"
#include "host/words/WordParts.h"
#include "host/words/WordsJson.h"
#include "host/words/WordsReader.h"

namespace Varnelle {

class WhisperWords final : public WordsReader {
protected:
    void read(std::string_view line) override;
    void end() override;

private:
    void take(const std::vector<JsonObjects::Found>& found);
    void takeSegment(const WordsJson::Json& segment);
    void settleAll(std::vector<HeardWord> words);

    JsonObjects objects_{JsonObjects::Where::inItsList};
    WordPieces pieces_;
    bool partsBySpaces_ = false;  // a segment has begun with a space
};

}  // namespace Varnelle
