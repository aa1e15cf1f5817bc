#pragma once

// What sherpa-onnx says about a sound: JSON objects with the pieces of the words and when each
// begins, in seconds from the segment's start.
//
//   {"text":" BEHIND ME","tokens":[" BE","HIND"," ME"],"timestamps":[0.60,0.84,1.05],
//    "start_time":0.0,"is_final":true}
//
// A word ends where the next one begins. An object that is not final is replaced by the next one.

#include "host/words/JsonObjects.h"
#include "host/words/WordsJson.h"
#include "host/words/WordsReader.h"

namespace Varnelle {

class SherpaWords final : public WordsReader {
protected:
    void read(std::string_view line) override;
    void end() override;

private:
    void take(const std::vector<JsonObjects::Found>& found);
    void takeObject(const WordsJson::Json& object);

    JsonObjects objects_{JsonObjects::Where::outermost};
    bool isOpen_ = false;  // the words behind the settled ones may still change
};

}  // namespace Varnelle
