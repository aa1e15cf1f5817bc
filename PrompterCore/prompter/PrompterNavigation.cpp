#include "PrompterCore/prompter/PrompterNavigation.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/prompter/PromptParagraphs.h"
#include "PrompterCore/support/Integers.h"

namespace PrompterCore::PrompterNavigation {

namespace {

bool hasTokens(const PromptLine& line) noexcept { return !line.tokenRange.isEmpty(); }

// The first token of the line reached after `count` lines with tokens, or of the last of them.
// Absent when there are none.
template <class Line>
std::optional<std::int64_t> tokenReached(Line from, Line end, std::uint64_t count) noexcept {
    std::optional<std::int64_t> token;
    for (Line line = from; line != end && count > 0; ++line) {
        if (!hasTokens(*line)) continue;
        token = line->tokenRange.lower();
        --count;
    }
    return token;
}

}  // namespace

std::optional<std::int64_t> lineStart(std::int64_t step, std::int64_t cursor,
                                      std::span<const PromptLine> lines) noexcept {
    const auto containing = LineBreaker::lineContaining(std::max<std::int64_t>(cursor, 0), lines);
    const auto line = containing ? lines.begin() + *containing
                                 : std::find_if(lines.begin(), lines.end(), hasTokens);
    if (line == lines.end()) return std::nullopt;
    if (step >= 0) return tokenReached(line + 1, lines.end(), distanceBetween(0, step));
    return tokenReached(std::make_reverse_iterator(line), lines.rend(), distanceBetween(step, 0));
}

std::optional<std::int64_t> paragraphStart(std::int64_t step, std::int64_t cursor,
                                           std::span<const PromptLine> lines) {
    std::vector<std::int64_t> starts;
    for (const LineRange block : PromptParagraphs::blocks(lines)) {
        if (const auto token = PromptParagraphs::firstTokenOf(block, lines)) {
            starts.push_back(*token);
        }
    }
    if (starts.empty() || step == 0) return std::nullopt;
    const std::int64_t token = std::max<std::int64_t>(cursor, 0);
    // The last paragraph that starts at or before the cursor, in list order; else the first.
    const auto reached = std::find_if(starts.rbegin(), starts.rend(),
                                      [token](std::int64_t start) { return start <= token; });
    std::int64_t place =
        std::max<std::int64_t>(std::distance(starts.begin(), reached.base()) - 1, 0);
    // Its own start is the first step back from within it.
    if (step < 0 && starts[static_cast<std::size_t>(place)] < token) ++place;
    const std::int64_t target =
        std::clamp<std::int64_t>(saturatingAdd(place, step), 0, signedCount(starts.size()) - 1);
    const std::int64_t start = starts[static_cast<std::size_t>(target)];
    if (start == token) return std::nullopt;
    return start;
}

}  // namespace PrompterCore::PrompterNavigation
