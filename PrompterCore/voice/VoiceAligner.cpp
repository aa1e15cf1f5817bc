#include "PrompterCore/voice/VoiceAligner.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "PrompterCore/script/SpokenForms.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"
#include "PrompterCore/voice/Alphabet.h"
#include "PrompterCore/voice/WordPattern.h"

namespace PrompterCore {

namespace {

// The last `limit` spoken forms of `words`, newest first. Older words are not looked at.
std::vector<Text> newestForms(std::span<const Text> words, std::int64_t limit) {
    std::vector<Text> newest;
    const auto isFull = [&] { return signedCount(newest.size()) == limit; };
    std::vector<Text> forms;  // of one word; kept for its memory
    for (auto word = words.rbegin(); word != words.rend() && !isFull(); ++word) {
        forms.clear();
        appendSpokenForms(word->utf8(), forms);
        for (auto form = forms.rbegin(); form != forms.rend() && !isFull(); ++form) {
            newest.push_back(std::move(*form));
        }
    }
    return newest;
}

// What was heard beside a stretch of the script, both spelled once for all their pairs.
class Comparison {
public:
    // `firstToken` is the index of the first of `tokens`.
    Comparison(std::span<const Text> newestFirst, std::span<const ScriptToken> tokens,
               std::int64_t firstToken)
        : firstToken_(firstToken) {
        Alphabet alphabet;
        std::vector<std::vector<Letter>> heard(newestFirst.size());
        for (std::size_t i = 0; i < heard.size(); ++i) {
            alphabet.learn(newestFirst[i], heard[i]);
        }
        heard_.reserve(heard.size());
        for (std::vector<Letter>& letters : heard) {
            heard_.emplace_back(std::move(letters), alphabet.size());
        }
        starts_.reserve(tokens.size() + 1);
        starts_.push_back(0);
        for (const ScriptToken& token : tokens) {
            alphabet.spell(token.text, letters_);
            starts_.push_back(letters_.size());
        }
    }

    // How well the heard words fit when the newest of them is token `candidate`.
    double score(std::int64_t candidate, const AlignerConfig& config) const {
        const std::int64_t pairs = std::min(signedCount(heard_.size()), candidate + 1);
        double weight = 1.0;
        double weights = 0.0;
        double sum = 0.0;
        for (std::int64_t k = 0; k < pairs; ++k) {
            const WordPattern& heard = heard_[static_cast<std::size_t>(k)];
            sum += weight * heard.similarityTo(token(candidate - k), config.fuzzyFloor);
            weights += weight;
            weight *= config.recencyDecay;
        }
        return sum / weights;
    }

private:
    std::span<const Letter> token(std::int64_t index) const {
        const auto i = static_cast<std::size_t>(index - firstToken_);
        return std::span(letters_).subspan(starts_[i], starts_[i + 1] - starts_[i]);
    }

    std::vector<WordPattern> heard_;  // newest first
    std::int64_t firstToken_;
    std::vector<Letter> letters_;      // of all the tokens, one after the other
    std::vector<std::size_t> starts_;  // of each token in letters_, and the end
};

double distancePenalty(std::int64_t offset, const AlignerConfig& config) {
    if (offset < 0) return config.backwardPenalty * static_cast<double>(-offset);
    return config.forwardPenalty * static_cast<double>(std::max<std::int64_t>(offset - 1, 0));
}

}  // namespace

VoiceAligner::VoiceAligner(Script script, const AlignerConfig& config)
    : script_(std::move(script)), config_(config) {}

void VoiceAligner::seekTo(std::int64_t index) noexcept {
    cursor_ = std::clamp<std::int64_t>(index, -1, signedCount(script_.tokens().size()) - 1);
}

std::optional<Alignment> VoiceAligner::observe(std::span<const Text> words) {
    require(config_.tailLength >= 0, "a tail's length is not negative");
    const std::span<const ScriptToken> tokens = script_.tokens();
    const std::int64_t count = signedCount(tokens.size());

    // A heard word needs a token beside it, so more of them than tokens are never compared.
    const std::vector<Text> heard =
        newestForms(words, std::min<std::int64_t>(config_.tailLength, count));
    if (heard.empty()) return std::nullopt;
    const std::int64_t lower =
        std::max<std::int64_t>(checkedSubtract(cursor_, config_.lookBehind), 0);
    const std::int64_t upper =
        std::min<std::int64_t>(checkedAdd(cursor_, config_.lookAhead), count - 1);
    if (upper < lower) return std::nullopt;

    const std::int64_t first = std::max<std::int64_t>(lower - signedCount(heard.size()) + 1, 0);
    const Comparison comparison(heard,
                                tokens.subspan(static_cast<std::size_t>(first),
                                               static_cast<std::size_t>(upper - first + 1)),
                                first);
    const auto scored = [&](std::int64_t candidate) {
        return Alignment{.tokenIndex = candidate,
                         .confidence = comparison.score(candidate, config_) -
                                       distancePenalty(candidate - cursor_, config_)};
    };
    Alignment best = scored(lower);
    for (std::int64_t candidate = lower + 1; candidate <= upper; ++candidate) {
        const Alignment next = scored(candidate);
        if (next.confidence > best.confidence) best = next;
    }
    if (!(best.confidence >= config_.acceptScore)) return std::nullopt;
    cursor_ = best.tokenIndex;
    return best;
}

}  // namespace PrompterCore
