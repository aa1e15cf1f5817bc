#include "apps/varnelle/Measure.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include <fmt/format.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/support/Integers.h"

namespace Varnelle {

namespace {

double median(std::vector<double> values) {
    if (values.empty()) return 0;
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

}  // namespace

Measure::Measure(const Script& script, const std::vector<HeardWord>& spoken) {
    for (const HeardWord& word : spoken) {
        for (const Text& form : spokenForms(word.word)) {
            const auto token = script.tokenAt(signedCount(tokens_.size()));
            if (!token || token->text != form) return;
            tokens_.push_back({.start = word.start, .end = word.end});
        }
    }
}

std::int64_t Measure::tokenAt(double time) const {
    const auto after = std::ranges::upper_bound(tokens_, time, {}, &Spoken::start);
    return std::distance(tokens_.begin(), after) - 1;
}

void Measure::aligned(const Alignment& alignment, double time) {
    if (alignment.tokenIndex < signedCount(tokens_.size()))
        delays_.push_back(time - tokens_[static_cast<std::size_t>(alignment.tokenIndex)].end);
}

void Measure::frame(const ReadThrough& reading, const Frame& frame) {
    const std::int64_t token = tokenAt(frame.time);
    if (token < 0 || frame.time > tokens_.back().end) return;
    distances_.push_back(std::abs(frame.position - static_cast<double>(token)));
    const double line = LineBreaker::lineIndexFor(static_cast<double>(token), reading.lines());
    if (std::abs(frame.line - line) <= 1) ++framesInPlace_;
}

double Measure::shareInPlace() const {
    return distances_.empty()
               ? 0
               : static_cast<double>(framesInPlace_) / static_cast<double>(distances_.size());
}

double Measure::medianDelay() const { return median(delays_); }

double Measure::medianDistance() const { return median(distances_); }

std::int64_t Measure::alignedCount() const { return signedCount(delays_.size()); }

std::string Measure::summary() const {
    return fmt::format(
        "{} positions were aligned, each {:.2f} s after its word had ended (median)\n"
        "what was shown was {:.1f} words from what was being spoken (median)\n"
        "the eye line was within one line of the word being spoken {:.1f} % of the time",
        alignedCount(), medianDelay(), medianDistance(), 100 * shareInPlace());
}

}  // namespace Varnelle
