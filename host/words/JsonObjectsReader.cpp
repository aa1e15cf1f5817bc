#include "host/words/JsonObjectsReader.h"

namespace Varnelle {

void JsonObjectsReader::take(const std::vector<JsonObjects::Found>& found) {
    for (const JsonObjects::Found& object : found) {
        try {
            if (!object.isWhole) throw WordsJson::Broken("this is no whole JSON object");
            takeObject(WordsJson::parsed(object.text));
        } catch (const WordsJson::Broken& broken) {
            passOver(object.line, broken.what());
        }
    }
}

}  // namespace Varnelle
