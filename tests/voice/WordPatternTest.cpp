#include "PrompterCore/voice/WordPattern.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

using Letters = std::vector<Letter>;

TEST(Alphabet, NumbersWhatItLearnsAndKnowsNothingElse) {
    Alphabet alphabet;
    Letters heard;
    Letters token;
    alphabet.learn("cafe\u0301", heard);
    alphabet.spell("cap\u00E9", token);
    EXPECT_EQ(heard, (Letters{1, 2, 3, 4}));
    EXPECT_EQ(token, (Letters{1, 2, Alphabet::unknown, 4}));
    EXPECT_EQ(alphabet.size(), 5U);
    alphabet.learn("face", heard);  // appends; e without its accent is another character
    EXPECT_EQ(heard, (Letters{1, 2, 3, 4, 3, 2, 1, 5}));
}

TEST(Alphabet, KnowsAnAsciiCharacterByItsEquivalent) {
    Alphabet alphabet;
    Letters kelvin;
    Letters letter;
    alphabet.learn("\u212A", kelvin);
    alphabet.spell("K", letter);
    EXPECT_EQ(kelvin, letter);
}

TEST(WordPattern, IsComparedWithManyWords) {
    Alphabet alphabet;
    Letters colour;
    alphabet.learn("colour", colour);
    const WordPattern pattern(colour, alphabet.size());
    struct Case {
        Text word;
        std::int64_t distance;
        double similarity;
    };
    for (const auto& [word, distance, similarity] :
         {Case{"colour", 0, 1.0}, {"color", 1, 1.0 - 1.0 / 6.0}, {"zzz", 6, 0.0}, {"", 6, 0.0}}) {
        Letters letters;
        alphabet.spell(word, letters);
        EXPECT_EQ(pattern.editDistanceTo(letters), distance) << word;
        EXPECT_EQ(pattern.similarityTo(letters, 0.0), similarity) << word;
    }
}

}  // namespace
}  // namespace PrompterCore
