#include "host/words/OwnWords.h"

#include <utility>
#include <variant>

#include "host/WordsFile.h"

namespace Varnelle {

void OwnWords::read(std::string_view line) {
    if (line.find_first_not_of(" \t") == std::string_view::npos) return;
    auto result = wordsFromLine(line);
    if (auto* const update = std::get_if<WordsUpdate>(&result)) {
        say(std::move(*update));
    } else {
        passOver(lineNumber(), std::get<BrokenLine>(result).why);
    }
}

}  // namespace Varnelle
