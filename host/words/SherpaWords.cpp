#include "host/words/SherpaWords.h"

#include <algorithm>
#include <utility>

#include "PrompterCore/support/Integers.h"
#include "host/words/WordParts.h"

namespace Varnelle {

using WordsJson::Broken;
using WordsJson::Json;

namespace {

constexpr double lastPiece = 0.3;  // s, what the last piece of an object is taken to last

// The sign that some models write for the space before a word.
std::string withSpace(std::string piece) {
    constexpr std::string_view sign = "\u2581";
    return piece.starts_with(sign) ? " " + piece.substr(sign.size()) : piece;
}

const Json& list(const Json& object, const char* key) {
    const Json& value = WordsJson::member(object, key);
    if (!value.is_array()) throw Broken("\"" + std::string(key) + "\" is no list");
    return value;
}

std::vector<HeardWord> wordsOf(const Json& object) {
    const Json& tokens = list(object, "tokens");
    if (tokens.empty()) return {};
    const Json& timestamps = list(object, "timestamps");
    if (timestamps.size() != tokens.size()) throw Broken("not every token has its time");
    const double from =
        object.contains("start_time") ? WordsJson::seconds(object, "start_time") : 0;
    WordPieces pieces;
    std::vector<HeardWord> words;
    const auto append = [&](std::vector<HeardWord> more) {
        std::move(more.begin(), more.end(), std::back_inserter(words));
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const double start = from + WordsJson::secondsOf(timestamps[i], "timestamps");
        const bool isLast = i + 1 == tokens.size();
        const double next =
            isLast ? start + lastPiece
                   : std::max(start, from + WordsJson::secondsOf(timestamps[i + 1], "timestamps"));
        append(pieces.add(withSpace(WordsJson::bytesOf(tokens[i], "tokens")), start, next,
                          std::nullopt));
    }
    append(pieces.finish());
    return words;
}

}  // namespace

void SherpaWords::takeObject(const Json& object) {
    std::vector<HeardWord> words = wordsOf(object);
    const auto final = object.find("is_final");
    const bool isFinal = final == object.end() || !final->is_boolean() || final->get<bool>();
    if (isFinal && !isOpen_) {
        for (HeardWord& word : words) {
            settle(std::move(word));
        }
        return;
    }
    const std::int64_t kept = settled();
    if (isFinal) settleTo(kept + PrompterCore::signedCount(words.size()));
    isOpen_ = !isFinal;
    const double time = words.empty() ? 0 : words.back().end;
    say({.time = time, .keep = kept, .words = std::move(words), .final = isFinal});
}

}  // namespace Varnelle
