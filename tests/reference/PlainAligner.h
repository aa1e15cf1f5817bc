#pragma once

// The aligner, one step after the other: every heard text brought to its spoken forms, every pair
// of words split into characters and compared with two rows of an edit distance.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <optional>
#include <span>
#include <vector>

#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/voice/VoiceAligner.h"

namespace PrompterCore::Plain {

inline std::int64_t editDistance(const Characters& a, const Characters& b) {
    std::vector<std::int64_t> previous(static_cast<std::size_t>(b.count()) + 1);
    std::iota(previous.begin(), previous.end(), 0);
    for (std::int64_t i = 0; i < a.count(); ++i) {
        std::vector<std::int64_t> current = {i + 1};
        for (std::size_t j = 1; j < previous.size(); ++j) {
            const bool same = a[i] == b[static_cast<std::int64_t>(j) - 1];
            current.push_back(
                std::min({current[j - 1] + 1, previous[j] + 1, previous[j - 1] + (same ? 0 : 1)}));
        }
        previous = current;
    }
    return previous.back();
}

inline double similarity(const Text& w, const Text& t, double fuzzyFloor) {
    if (w == t) return 1.0;
    if (w.isEmpty() || t.isEmpty()) return 0.0;
    const Characters a(w);
    const Characters b(t);
    const double s = 1.0 - static_cast<double>(editDistance(a, b)) /
                               static_cast<double>(std::max(a.count(), b.count()));
    if (!(s >= 0)) return 0.0;
    return s >= fuzzyFloor ? s : 0.0;
}

inline double penalisedScore(const std::vector<Text>& tail, const VoiceAligner& aligner,
                             std::int64_t i) {
    const AlignerConfig& config = aligner.config();
    double sum = 0, weights = 0, weight = 1.0;
    for (std::int64_t k = 0; k < static_cast<std::int64_t>(tail.size()) && i - k >= 0; ++k) {
        const Text& word = tail[tail.size() - 1 - static_cast<std::size_t>(k)];
        const Text& token = aligner.script().tokens()[static_cast<std::size_t>(i - k)].text;
        sum = sum + weight * similarity(word, token, config.fuzzyFloor);
        weights = weights + weight;
        weight = weight * config.recencyDecay;
    }
    const std::int64_t offset = i - aligner.cursor();
    const double penalty =
        offset < 0 ? config.backwardPenalty * static_cast<double>(-offset)
                   : config.forwardPenalty * static_cast<double>(offset > 1 ? offset - 1 : 0);
    return sum / weights - penalty;
}

/// What `aligner` should answer to `words`; the cursor belongs at its token then.
inline std::optional<Alignment> observed(const VoiceAligner& aligner, std::span<const Text> words) {
    std::vector<Text> tail;
    for (const Text& word : words)
        for (const Text& form : spokenForms(word))
            tail.push_back(form);
    const auto length = static_cast<std::size_t>(aligner.config().tailLength);
    if (tail.size() > length) tail.erase(tail.begin(), tail.end() - aligner.config().tailLength);
    const auto count = static_cast<std::int64_t>(aligner.script().tokens().size());
    if (tail.empty() || count == 0) return std::nullopt;
    const std::int64_t lower =
        std::max<std::int64_t>(aligner.cursor() - aligner.config().lookBehind, 0);
    const std::int64_t upper =
        std::min<std::int64_t>(aligner.cursor() + aligner.config().lookAhead, count - 1);
    std::optional<Alignment> best;
    for (std::int64_t i = lower; i <= upper; ++i) {
        const double score = penalisedScore(tail, aligner, i);
        if (!best || score > best->confidence) best = {.tokenIndex = i, .confidence = score};
    }
    if (best && best->confidence >= aligner.config().acceptScore) return best;
    return std::nullopt;
}

}  // namespace PrompterCore::Plain
