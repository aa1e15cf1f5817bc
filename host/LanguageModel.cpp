#include "host/LanguageModel.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "PrompterCore/support/Require.h"

namespace Varnelle {
namespace {

using PrompterCore::require;

constexpr std::uint32_t startId = 0;
constexpr std::uint32_t endId = 1;

// Equal runs become one with their number.
template <class Gram, class Ids>
std::vector<Gram> counted(std::vector<Ids> runs) {
    std::sort(runs.begin(), runs.end());
    std::vector<Gram> grams;
    for (const Ids& ids : runs) {
        if (grams.empty() || grams.back().ids != ids) grams.push_back(Gram{.ids = ids});
        ++grams.back().count;
    }
    return grams;
}

// Witten-Bell: of all that follows a history, as much is left to words that never did as there are
// different words that did. `shorter` holds every history and every run without its first word.
template <class Gram, class Find>
void smoothOver(std::vector<Gram>& grams, std::size_t order, std::vector<Gram>& shorter,
                Find find) {
    const auto history = [order](const Gram& gram) { return std::span(gram.ids).first(order - 1); };
    for (auto first = grams.begin(); first != grams.end();) {
        const auto last = std::find_if(first, grams.end(), [&](const Gram& gram) {
            return !std::ranges::equal(history(gram), history(*first));
        });
        double total = 0;
        for (auto gram = first; gram != last; ++gram)
            total += static_cast<double>(gram->count);
        const auto kinds = static_cast<double>(last - first);

        shorter[static_cast<std::size_t>(find(shorter, history(*first)) - shorter.data())].backoff =
            kinds / (total + kinds);
        for (; first != last; ++first) {
            const auto rest = std::span(first->ids).subspan(1, order - 1);
            first->probability =
                (static_cast<double>(first->count) + kinds * find(shorter, rest)->probability) /
                (total + kinds);
        }
    }
}

void appendLogarithm(std::string& text, double probability) {
    // What the format writes for never.
    const double logarithm = probability > 0 ? std::log10(probability) : -99.0;
    std::array<char, 32> buffer;
    const auto written = std::to_chars(buffer.data(), buffer.data() + buffer.size(), logarithm,
                                       std::chars_format::fixed, 5);
    text.append(buffer.data(), written.ptr);
}

}  // namespace

LanguageModel::LanguageModel(std::int64_t tokenCount, std::span<const Wording> wordings,
                             std::span<const CommonWord> background, double backgroundMass) {
    require(backgroundMass >= 0 && backgroundMass <= 1, "a mass lies between 0 and 1");
    idOf(std::string(sentenceStart));
    idOf(std::string(sentenceEnd));
    count(tokenCount, wordings);
    mixGround(background, wordings.empty() ? 1.0 : backgroundMass);
    smooth();
}

LanguageModel::WordId LanguageModel::idOf(const std::string& word) {
    const auto [known, isNew] = ids_.try_emplace(word, static_cast<WordId>(words_.size()));
    if (isNew) {
        words_.push_back(word);
        unigrams_.push_back(Gram{.ids = {known->second}});
    }
    return known->second;
}

void LanguageModel::count(std::int64_t tokenCount, std::span<const Wording> wordings) {
    struct Edge {
        std::int64_t from, to;  // token boundaries
        WordId word;
    };
    std::vector<Edge> edges;
    for (const Wording& wording : wordings) {
        require(wording.token >= 0 && wording.tokenCount >= 1 &&
                    wording.tokenCount <= tokenCount - wording.token,
                "a wording's tokens lie in the script");
        edges.push_back({wording.token, wording.token + wording.tokenCount, idOf(wording.word)});
    }
    edges.push_back({tokenCount, tokenCount + 1, endId});
    std::ranges::stable_sort(edges, {}, &Edge::from);
    const auto from = [&edges](std::int64_t token) {
        const auto first = std::ranges::lower_bound(edges, token, {}, &Edge::from);
        return std::span<const Edge>(first,
                                     std::ranges::upper_bound(edges, token, {}, &Edge::from));
    };

    using Ids = std::array<WordId, 3>;
    std::vector<Ids> pairs, triples;
    for (const Edge& first : from(0)) {
        pairs.push_back({startId, first.word});
        for (const Edge& second : from(first.to))
            triples.push_back({startId, first.word, second.word});
    }
    for (const Edge& first : edges) {
        ++unigrams_[first.word].count;
        for (const Edge& second : from(first.to)) {
            pairs.push_back({first.word, second.word});
            for (const Edge& third : from(second.to))
                triples.push_back({first.word, second.word, third.word});
        }
    }
    bigrams_ = counted<Gram>(std::move(pairs));
    trigrams_ = counted<Gram>(std::move(triples));
}

void LanguageModel::mixGround(std::span<const CommonWord> background, double backgroundMass) {
    double said = 0;
    for (const Gram& gram : unigrams_)
        said += static_cast<double>(gram.count);
    for (Gram& gram : unigrams_)
        gram.probability = (1 - backgroundMass) * static_cast<double>(gram.count) / said;

    double common = 0;
    for (const CommonWord& word : background)
        common += word.probability;
    for (const CommonWord& word : background)
        unigrams_[idOf(word.word)].probability += backgroundMass * word.probability / common;
}

void LanguageModel::smooth() {
    smoothOver(bigrams_, 2, unigrams_, find);
    smoothOver(trigrams_, 3, bigrams_, find);
}

const LanguageModel::Gram* LanguageModel::find(const std::vector<Gram>& grams,
                                               std::span<const WordId> ids) {
    const auto start = [&ids](const Gram& gram) { return std::span(gram.ids).first(ids.size()); };
    const auto found = std::lower_bound(
        grams.begin(), grams.end(), ids, [&](const Gram& gram, std::span<const WordId> sought) {
            return std::ranges::lexicographical_compare(start(gram), sought);
        });
    return found != grams.end() && std::ranges::equal(start(*found), ids) ? &*found : nullptr;
}

double LanguageModel::probability(std::span<const std::string_view> history,
                                  std::string_view word) const {
    std::vector<WordId> ids;
    for (const std::string_view one : history.last(std::min<std::size_t>(history.size(), 2))) {
        const auto known = ids_.find(std::string(one));
        if (known == ids_.end()) {
            ids.clear();  // nothing is known beyond it
        } else {
            ids.push_back(known->second);
        }
    }
    const auto known = ids_.find(std::string(word));
    if (known == ids_.end()) return 0;
    ids.push_back(known->second);

    double backoff = 1;
    for (std::span<const WordId> run = ids;; run = run.subspan(1)) {
        if (run.size() == 1) return backoff * unigrams_[run[0]].probability;
        const auto& grams = run.size() == 3 ? trigrams_ : bigrams_;
        if (const Gram* gram = find(grams, run)) return backoff * gram->probability;
        const auto& histories = run.size() == 3 ? bigrams_ : unigrams_;
        if (const Gram* gram = find(histories, run.first(run.size() - 1))) backoff *= gram->backoff;
    }
}

std::string LanguageModel::arpa() const {
    std::string text = "\\data\\\n";
    const std::array<const std::vector<Gram>*, 3> orders = {&unigrams_, &bigrams_, &trigrams_};
    for (std::size_t order = 1; order <= 3; ++order) {
        text += "ngram " + std::to_string(order) + '=' + std::to_string(orders[order - 1]->size()) +
                '\n';
    }
    for (std::size_t order = 1; order <= 3; ++order) {
        text += "\n\\" + std::to_string(order) + "-grams:\n";
        for (const Gram& gram : *orders[order - 1]) {
            appendLogarithm(text, gram.probability);
            for (const WordId id : std::span(gram.ids).first(order))
                text += ' ' + words_[id];
            if (order < 3) {
                text += ' ';
                appendLogarithm(text, gram.backoff);
            }
            text += '\n';
        }
    }
    return text + "\n\\end\\\n";
}

}  // namespace Varnelle
