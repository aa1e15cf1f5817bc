#include "host/words/VoskWords.h"

#include <algorithm>
#include <utility>

#include "PrompterCore/support/Integers.h"
#include "host/words/WordParts.h"

namespace Varnelle {

using WordsJson::Broken;
using WordsJson::Json;

namespace {

std::vector<HeardWord> timedWords(const Json& list, const char* name) {
    if (!list.is_array()) throw Broken("\"" + std::string(name) + "\" is no list");
    std::vector<HeardWord> words;
    for (const Json& entry : list) {
        const auto spoken =
            spokenWord(WordsJson::bytesOf(WordsJson::member(entry, "word"), "word"));
        HeardWord word{.word = {},
                       .start = toMilliseconds(WordsJson::seconds(entry, "start")),
                       .end = toMilliseconds(WordsJson::seconds(entry, "end")),
                       .confidence = std::nullopt};
        if (word.end < word.start) throw Broken("a word ends before it starts");
        if (const auto found = entry.find("conf"); found != entry.end() && found->is_number())
            word.confidence = confidenceOf(found->get<double>());
        if (!spoken) continue;
        word.word = *spoken;
        words.push_back(std::move(word));
    }
    return words;
}

}  // namespace

void VoskWords::takeObject(const Json& object) {
    if (object.contains("partial")) return takePartial(object);
    const auto alternatives = object.find("alternatives");
    if (alternatives == object.end()) return takeFinal(object);
    if (!alternatives->is_array()) throw Broken("\"alternatives\" is no list");
    if (alternatives->empty()) return change({}, true);
    takeFinal(alternatives->front());
}

// Words without times are said now, as far as anybody knows.
std::vector<HeardWord> VoskWords::untimed(const Json& text, const char* key) const {
    return wordsOf(WordsJson::bytesOf(text, key), lastEnd_, lastEnd_);
}

void VoskWords::takePartial(const Json& object) {
    const auto timed = object.find("partial_result");
    if (timed != object.end()) return change(timedWords(*timed, "partial_result"), false);
    auto words = untimed(object["partial"], "partial");
    if (arrival_ == WordsArrival::live) change(std::move(words), false);
}

void VoskWords::takeFinal(const Json& object) {
    if (const auto timed = object.find("result"); timed != object.end())
        return change(timedWords(*timed, "result"), true);
    auto words = untimed(WordsJson::member(object, "text"), "text");
    if (arrival_ == WordsArrival::recorded && !words.empty())
        throw Broken("the words have no times; make the recogniser say them");
    change(std::move(words), true);
}

// What is said the same as before stays as it was.
void VoskWords::change(std::vector<HeardWord> words, bool final) {
    const auto [same, rest] = std::ranges::mismatch(
        unsettled_, words, [](const HeardWord& a, const HeardWord& b) { return a.word == b.word; });
    const bool withdraws = same != unsettled_.end();
    const std::int64_t kept = settled() + (same - unsettled_.begin());
    for (const HeardWord& word : words) {
        lastEnd_ = std::max(lastEnd_, word.end);
    }
    if (final && unsettled_.empty()) {
        for (HeardWord& word : words) {
            settle(std::move(word));
        }
        return;
    }
    if (withdraws || rest != words.end() || final)
        say({.time = words.empty() ? lastEnd_ : words.back().end,
             .keep = kept,
             .words = {rest, words.end()},
             .final = final});
    if (final) {
        settleTo(settled() + PrompterCore::signedCount(words.size()));
        words.clear();
    }
    unsettled_ = std::move(words);
}

}  // namespace Varnelle
