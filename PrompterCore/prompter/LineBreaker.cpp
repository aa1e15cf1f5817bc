#include "PrompterCore/prompter/LineBreaker.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string>
#include <utility>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore {

namespace {

// Fills lines word by word. The line being filled is kept as the text that is measured, indentation
// in front, so that one more word costs only that word.
class Filler {
public:
    Filler(const LineBreaker& breaker, const std::vector<ScriptWord>& words)
        : breaker_(breaker), words_(words), indent_(words.empty() ? 0 : words.front().indent) {}

    void addWord(const ScriptWord& word) {
        if (word.breaksBefore >= 1) {
            flush();
            addBlankLines(word.breaksBefore - 1, word.tokenRange.lower());
            indent_ = word.indent;
        }
        if (!isFilling() || !appendIfItFits(word)) {
            flush();
            startLine();
            filled_ += word.text.utf8();
        }
        ++nextWord_;
    }

    void addHeading(const ScriptHeading& heading) {
        if (isFilling()) {
            flush();
        } else if (!lines_.empty()) {
            addBlankLines(heading.breaksBefore - 1, heading.firstToken);
        }
        lines_.push_back({.text = {},
                          .tokenRange = TokenRange::emptyAt(heading.firstToken),
                          .wordRange = WordRange::emptyAt(heading.wordIndex),
                          .indent = 0,
                          .heading = heading.title});
    }

    void endText() { flush(); }

    std::vector<PromptLine> take() { return std::move(lines_); }

private:
    bool isFilling() const noexcept { return firstWord_ < nextWord_; }

    void flush() {
        if (!isFilling()) return;
        const ScriptWord& first = words_[static_cast<std::size_t>(firstWord_)];
        const ScriptWord& last = words_[static_cast<std::size_t>(nextWord_ - 1)];
        lines_.push_back(
            {.text = std::string_view(filled_).substr(static_cast<std::size_t>(indent_)),
             .tokenRange = TokenRange(first.tokenRange.lower(), last.tokenRange.upper()),
             .wordRange = WordRange(firstWord_, nextWord_),
             .indent = indent_});
        firstWord_ = nextWord_;
    }

    // Leaves the indentation in the buffer. It mostly stands there already, from the line before.
    void startLine() {
        if (indent_ != indentWritten_) filled_.assign(static_cast<std::size_t>(indent_), ' ');
        filled_.resize(static_cast<std::size_t>(indent_));
        indentWritten_ = indent_;
    }

    bool appendIfItFits(const ScriptWord& word) {
        require(static_cast<bool>(breaker_.measure), "the measuring function is set");
        const std::size_t before = filled_.size();
        filled_ += ' ';
        filled_ += word.text.utf8();
        // A width that is no number breaks no line.
        if (!(breaker_.width < breaker_.measure(filled_))) return true;
        filled_.resize(before);
        return false;
    }

    void addBlankLines(std::int64_t count, std::int64_t token) {
        for (std::int64_t i = 0; i < count; ++i) {
            lines_.push_back({.text = {},
                              .tokenRange = TokenRange::emptyAt(token),
                              .wordRange = WordRange::emptyAt(nextWord_),
                              .indent = 0});
        }
    }

    const LineBreaker& breaker_;
    const std::vector<ScriptWord>& words_;
    std::vector<PromptLine> lines_;
    std::string filled_;              // the line being filled, as measured
    std::int64_t indent_;             // of the script's line that is being laid out
    std::int64_t indentWritten_ = 0;  // spaces that filled_ begins with
    std::int64_t firstWord_ = 0;      // of the line being filled
    std::int64_t nextWord_ = 0;       // the word to come; firstWord_ when the line has none yet
};

}  // namespace

std::vector<PromptLine> LineBreaker::linesFor(const Script& script) const {
    Filler filler(*this, script.words());
    auto heading = script.headings().begin();
    const auto placeHeadingsBefore = [&](std::size_t word) {
        for (; heading != script.headings().end() && heading->wordIndex == signedCount(word);
             ++heading) {
            filler.addHeading(*heading);
        }
    };
    for (std::size_t i = 0; i < script.words().size(); ++i) {
        placeHeadingsBefore(i);
        filler.addWord(script.words()[i]);
    }
    // Behind the last text no line is being filled any more, so that a heading there keeps the
    // blank lines in front of it.
    filler.endText();
    placeHeadingsBefore(script.words().size());
    return filler.take();
}

std::optional<std::int64_t> LineBreaker::lineContaining(
    std::int64_t token, std::span<const PromptLine> lines) noexcept {
    if (token < 0) return std::nullopt;
    std::int64_t low = 0;
    std::int64_t high = signedCount(lines.size()) - 1;
    while (low <= high) {
        const std::int64_t middle = (low + high) / 2;
        const TokenRange range = lines[static_cast<std::size_t>(middle)].tokenRange;
        if (range.contains(token)) return middle;
        if (token < range.lower()) {
            high = middle - 1;
        } else {
            low = middle + 1;
        }
    }
    return std::nullopt;
}

double LineBreaker::lineIndexFor(double position, std::span<const PromptLine> lines) noexcept {
    const double token = position > 0 ? position : 0;  // what is no number is not above 0 either
    const auto line = std::ranges::find_if(lines, [token](const PromptLine& candidate) {
        return !candidate.isBlank() && static_cast<double>(candidate.tokenRange.upper()) > token;
    });
    if (line == lines.end()) {
        const bool anyText = !std::ranges::all_of(lines, &PromptLine::isBlank);
        return anyText ? static_cast<double>(lines.size()) : 0;
    }
    const TokenRange range = line->tokenRange;
    double fraction = 0;
    if (!range.isEmpty()) {
        const auto span = static_cast<double>(distanceBetween(range.lower(), range.upper()));
        fraction = std::clamp((token - static_cast<double>(range.lower())) / span, 0.0, 1.0);
    }
    const auto nextText = std::find_if_not(line + 1, lines.end(),
                                           [](const PromptLine& next) { return next.isBlank(); });
    // The blank and heading lines behind it, and itself.
    const auto carried = static_cast<double>(std::distance(line, nextText));
    return static_cast<double>(std::distance(lines.begin(), line)) + fraction * carried;
}

}  // namespace PrompterCore
