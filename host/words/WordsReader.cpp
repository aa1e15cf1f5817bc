#include "host/words/WordsReader.h"

#include <utility>

namespace Varnelle {

WordsRead WordsReader::take(std::string_view line) {
    ++lineNumber_;
    read(line);
    return std::exchange(read_, {});
}

WordsRead WordsReader::finish() {
    end();
    return std::exchange(read_, {});
}

void WordsReader::passOver(std::int64_t line, std::string why) {
    read_.broken.push_back({.line = line, .why = std::move(why)});
}

void WordsReader::settle(HeardWord word) {
    const double time = word.end;
    say({.time = time, .keep = settled_++, .words = {std::move(word)}, .final = true});
}

}  // namespace Varnelle
