#pragma once

// What Vosk says about a sound: a JSON object for each utterance, and before its end objects for
// what may still change.
//
//   {"result":[{"conf":0.98,"end":1.05,"start":0.6,"word":"behind"}],"text":"behind"}
//   {"partial":"behind me"}
//
// With alternatives the first one counts. A partial result has times only when they are asked for;
// without them words count when they come, and not at all when they were recorded.

#include "host/words/JsonObjectsReader.h"
#include "host/words/WordsJson.h"

namespace Varnelle {

class VoskWords final : public JsonObjectsReader {
public:
    explicit VoskWords(WordsArrival arrival) : arrival_(arrival) {}

private:
    void takeObject(const WordsJson::Json& object) override;
    void takePartial(const WordsJson::Json& object);
    void takeFinal(const WordsJson::Json& object);
    std::vector<HeardWord> untimed(const WordsJson::Json& text, const char* key) const;
    void change(std::vector<HeardWord> words, bool final);

    WordsArrival arrival_;
    std::vector<HeardWord> unsettled_;  // of the utterance that goes on
    double lastEnd_ = 0;                // of all words so far
};

}  // namespace Varnelle
