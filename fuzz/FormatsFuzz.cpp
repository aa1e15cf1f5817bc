// Recognised words in any form: reading never throws, times are times, and a list of words is never
// withdrawn past what was settled.
//
// Bytes: the form, whether they come live, then the text.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "fuzz/Bytes.h"
#include "host/words/WordsFormat.h"

using namespace Varnelle;
using PrompterCore::require;

namespace {

struct Check {
    HeardWords words;
    std::int64_t settled = 0;
    bool isOurs = false;  // then it is the writer's to keep what is settled

    void take(const WordsRead& read, std::int64_t line) {
        for (const BrokenPart& broken : read.broken) {
            require(!broken.why.empty(), "it says what is wrong");
            require(broken.line >= 0 && broken.line <= line, "on a line that was read");
        }
        for (const WordsUpdate& update : read.updates) {
            require(update.time >= 0 && update.time <= 2.1e6, "a time is seconds of a sound");
            require(update.keep >= settled || isOurs, "what was settled stays");
            for (const HeardWord& word : update.words) {
                require(word.start >= 0 && word.start <= word.end, "a word starts before it ends");
                require(
                    !word.confidence || isOurs || (*word.confidence >= 0 && *word.confidence <= 1),
                    "a confidence is one");
                require(!word.word.isEmpty() || isOurs, "a word is not empty");
            }
            words.apply(update);
            if (update.final) settled = PrompterCore::signedCount(words.words().size());
        }
    }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Bytes bytes({data, size});
    const auto& formats = PrompterCore::allCases<WordsFormat>;
    const std::uint8_t choice = bytes.next();
    const auto arrival = bytes.next() % 2 == 0 ? WordsArrival::recorded : WordsArrival::live;
    const std::string text = bytes.text();
    const auto format = choice < formats.size()
                            ? formats[choice]
                            : recognisedFormat(text).value_or(WordsFormat::jsonLines);
    const auto reader = wordsReader(format, arrival);
    Check check{.words = {}, .settled = 0, .isOurs = format == WordsFormat::jsonLines};
    std::int64_t line = 0;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t to = std::min(text.find('\n', from), text.size());
        check.take(reader->take(std::string_view(text).substr(from, to - from)), ++line);
        from = to + 1;
    }
    check.take(reader->finish(), line);
    return 0;
}
