#include "PrompterCore/voice/WordSimilarity.h"

#include <utility>
#include <vector>

#include "PrompterCore/voice/Alphabet.h"
#include "PrompterCore/voice/WordPattern.h"

namespace PrompterCore::WordSimilarity {

namespace {

struct SpelledPair {
    WordPattern a;
    std::vector<Letter> b;
};

SpelledPair spelled(const Text& a, const Text& b) {
    Alphabet alphabet;
    std::vector<Letter> lettersOfA;
    std::vector<Letter> lettersOfB;
    alphabet.learn(a, lettersOfA);
    alphabet.spell(b, lettersOfB);
    return {.a = WordPattern(std::move(lettersOfA), alphabet.size()), .b = std::move(lettersOfB)};
}

}  // namespace

std::int64_t editDistance(const Text& a, const Text& b) {
    const SpelledPair pair = spelled(a, b);
    return pair.a.editDistanceTo(pair.b);
}

double of(const Text& a, const Text& b, double fuzzyFloor) {
    if (a.utf8() == b.utf8()) return 1.0;
    const SpelledPair pair = spelled(a, b);
    return pair.a.similarityTo(pair.b, fuzzyFloor);
}

}  // namespace PrompterCore::WordSimilarity
