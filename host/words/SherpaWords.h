#pragma once

// What sherpa-onnx says about a sound: JSON objects with the pieces of the words and when each
// begins, in seconds from the segment's start.
//
//   {"text":" BEHIND ME","tokens":[" BE","HIND"," ME"],"timestamps":[0.60,0.84,1.05],
//    "start_time":0.0,"is_final":true}
//
// A word ends where the next one begins. An object that is not final is replaced by the next one.

#include "host/words/JsonObjectsReader.h"
#include "host/words/WordsJson.h"

namespace Varnelle {

class SherpaWords final : public JsonObjectsReader {
private:
    void takeObject(const WordsJson::Json& object) override;

    bool isOpen_ = false;  // the words behind the settled ones may still change
};

}  // namespace Varnelle
