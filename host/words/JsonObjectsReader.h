#pragma once

// What the readers of forms share that are one JSON object behind the other.

#include <string_view>
#include <vector>

#include "host/words/JsonObjects.h"
#include "host/words/WordsJson.h"
#include "host/words/WordsReader.h"

namespace Varnelle {

/// Cuts what comes in into objects. One that is broken is passed over with its line.
class JsonObjectsReader : public WordsReader {
protected:
    void read(std::string_view line) final { take(objects_.take(line)); }
    void end() final { take(objects_.finish()); }

    /// Takes one whole object. Throws WordsJson::Broken where it makes no sense.
    virtual void takeObject(const WordsJson::Json& object) = 0;

private:
    void take(const std::vector<JsonObjects::Found>& found);

    JsonObjects objects_{JsonObjects::Where::outermost};
};

}  // namespace Varnelle
