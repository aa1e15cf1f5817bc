// Lines of recognised words, as any program may write them: reading one never throws, and what was
// read reads back the same when it is written.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "PrompterCore/support/Require.h"
#include "host/HeardWords.h"
#include "host/WordsFile.h"

using namespace Varnelle;

namespace {

void checkUpdate(const WordsUpdate& update) {
    PrompterCore::require(update.time >= 0 && update.time <= 1e6, "a time is seconds of a sound");
    PrompterCore::require(update.keep >= 0, "a count is not negative");
    for (const HeardWord& word : update.words) {
        PrompterCore::require(word.start >= 0 && word.start <= word.end && word.end <= 1e6,
                              "a word starts before it ends");
    }
    const std::string line = lineFromWords(update);
    PrompterCore::require(line.find('\n') == std::string::npos, "an update is one line");
    const auto again = wordsFromLine(line);
    const auto* same = std::get_if<WordsUpdate>(&again);
    PrompterCore::require(same != nullptr && *same == update, "what is written reads back");
    PrompterCore::require(lineFromWords(*same) == line, "and is written alike");
    for (std::size_t i = 0; i < update.words.size(); ++i) {
        PrompterCore::require(same->words[i].word.utf8() == update.words[i].word.utf8(),
                              "to the byte");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    // Line by line, so that a recording's whole file is an input too.
    const std::string bytes(data, data + size);
    HeardWords words;
    for (std::size_t from = 0; from <= bytes.size();) {
        const std::size_t to = std::min(bytes.find('\n', from), bytes.size());
        const auto read = wordsFromLine(std::string_view(bytes).substr(from, to - from));
        if (const auto* update = std::get_if<WordsUpdate>(&read)) {
            checkUpdate(*update);
            words.apply(*update);
        } else {
            PrompterCore::require(!std::get<BrokenLine>(read).why.empty(), "it says what is wrong");
        }
        from = to + 1;
    }
    return 0;
}
