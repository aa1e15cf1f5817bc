#include "host/words/WordParts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Trims.h"

namespace Varnelle {

namespace {

using PrompterCore::Character;
using PrompterCore::Characters;

// A word of a phrase, and how many characters stand before it and within it.
struct Part {
    std::string bytes;
    std::int64_t before, count;
};

std::vector<Part> partsOf(std::string_view phrase) {
    std::vector<Part> parts;
    std::int64_t total = 0;
    bool isInside = false;
    const Characters characters((Text(phrase)));
    for (const Character character : characters) {
        if (character.isWhiteSpace()) {
            isInside = false;
            continue;
        }
        if (!std::exchange(isInside, true)) parts.push_back({{}, total, 0});
        parts.back().bytes += character.utf8();
        parts.back().count += 1;
        ++total;
    }
    return parts;
}

std::string withoutBrackets(std::string_view phrase) {
    std::string result;
    while (true) {
        const std::size_t open = phrase.find('[');
        const std::size_t close = open == std::string_view::npos ? open : phrase.find(']', open);
        result += phrase.substr(0, close == std::string_view::npos ? close : open);
        if (close == std::string_view::npos) return result;
        result += ' ';
        phrase.remove_prefix(close + 1);
    }
}

bool isBetween(std::string_view word, std::string_view open, std::string_view close) {
    return word.size() > open.size() + close.size() && word.starts_with(open) &&
           word.ends_with(close);
}

}  // namespace

double toMilliseconds(double seconds) { return std::round(seconds * 1000) / 1000; }

std::optional<double> confidenceOf(double confidence) {
    return confidence >= 0 && confidence <= 1 ? std::optional(confidence) : std::nullopt;
}

std::vector<HeardWord> wordsOf(std::string_view phrase, double start, double end,
                               std::optional<double> confidence) {
    const std::vector<Part> parts = partsOf(withoutBrackets(phrase));
    std::vector<HeardWord> words;
    if (parts.empty()) return words;
    const auto total = static_cast<double>(parts.back().before + parts.back().count);
    const auto at = [&](std::int64_t characters) {
        return toMilliseconds(start + (end - start) * (static_cast<double>(characters) / total));
    };
    for (const Part& part : parts) {
        words.push_back({.word = part.bytes,
                         .start = at(part.before),
                         .end = at(part.before + part.count),
                         .confidence = confidence});
    }
    return words;
}

std::optional<std::string> spokenWord(std::string_view written) {
    if (isBetween(written, "<", ">") || isBetween(written, "[", "]") ||
        isBetween(written, "++", "++"))
        return std::nullopt;
    if (written.ends_with(')')) {
        const std::size_t open = written.rfind('(');
        const std::string_view mark = open == std::string_view::npos
                                          ? std::string_view()
                                          : written.substr(open + 1, written.size() - open - 2);
        if (open > 0 && !mark.empty() &&
            mark.find_first_not_of("0123456789") == std::string_view::npos)
            written = written.substr(0, open);
    }
    if (written.empty()) return std::nullopt;
    return std::string(written);
}

std::vector<HeardWord> WordPieces::add(std::string_view piece, double start, double end,
                                       std::optional<double> confidence) {
    std::vector<HeardWord> words;
    if (piece.starts_with(' ')) {
        words = finish();
        piece.remove_prefix(1);
    }
    if (piece.empty()) return words;
    if (bytes_.empty()) {
        start_ = start;
        end_ = end;
        confidence_ = confidence;
    } else {
        end_ = std::max(end_, end);
        confidence_ = confidence && confidence_ ? std::optional(std::min(*confidence, *confidence_))
                                                : std::nullopt;
    }
    bytes_ += piece;
    return words;
}

void WordPieces::extendTo(double end) { end_ = std::max(end_, end); }

std::vector<HeardWord> WordPieces::finish() {
    return wordsOf(std::exchange(bytes_, {}), start_, end_, confidence_);
}

}  // namespace Varnelle
