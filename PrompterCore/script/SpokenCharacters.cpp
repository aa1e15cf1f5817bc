#include "PrompterCore/script/SpokenCharacters.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "PrompterCore/text/Stretches.h"

namespace PrompterCore {

namespace {

using Effect = SpokenCharacter::Effect;

// Letters as they are spoken, from a first code point on. '_' is dropped, '?' depends.
struct Letters {
    char32_t first;
    std::u32string_view spoken;
};

constexpr Letters latin1AndExtendedA = {0xA0,
                                        U"__________ª_______²³_µ___¹º_¼½¾_"
                                        U"aaaaaaæceeeeiiiiðnooooo_øuuuuyþß"
                                        U"aaaaaaæceeeeiiiiðnooooo_øuuuuyþy"
                                        U"aaaaaaccccccccddđđeeeeeeeeeegggg"
                                        U"gggghhħħiiiiiiiiiıĳĳjjkkĸllllllŀ"
                                        U"ŀłłnnnnnnŉŋŋooooooœœrrrrrrssssss"
                                        U"ssttttŧŧuuuuuuuuuuuuwwyyyzzzzzzſ"};
constexpr Letters greek = {0x384,
                           U"__α_εηι_ο_υωιαβγδεζηθικλμνξοπρ_?"
                           U"τυφχψωιυαεηιυαβγδεζηθικλμνξοπρςσ"
                           U"τυφχψωιυουωϗ"};
constexpr Letters cyrillic = {0x400,
                              U"ееђгєѕііјљњћкиуџабвгдежзииклмноп"
                              U"рстуфхцчшщъыьэюяабвгдежзииклмноп"
                              U"рстуфхцчшщъыьэюяееђгєѕііјљњћкиуџ"};
constexpr Letters latinExtendedAdditional = {0x1E00,
                                             U"aabbbbbbccddddddddddeeeeeeeeeeff"
                                             U"gghhhhhhhhhhiiiikkkkkkllllllllmm"
                                             U"mmmmnnnnnnnnoooooooopppprrrrrrrr"
                                             U"ssssssssssttttttttuuuuuuuuuuvvvv"
                                             U"wwwwwwwwwwxxxxyyzzzzzzhtwyẚſẜẝßẟ"
                                             U"aaaaaaaaaaaaaaaaaaaaaaaaeeeeeeee"
                                             U"eeeeeeeeiiiioooooooooooooooooooo"
                                             U"oooouuuuuuuuuuuuuuyyyyyyyyỻỻỽỽỿỿ"};

// Stretches in which every code point has one effect; the kept ones stay as they are. In order.
struct Stretch {
    char32_t first, last;
    Effect effect;
};

constexpr Stretches stretches(std::to_array<Stretch>({
    {0x0300, 0x0314, Effect::foldedAway},  // accents
    {0x0323, 0x0328, Effect::foldedAway},
    {0x05B0, 0x05BD, Effect::foldedAway},  // Hebrew points
    {0x05BE, 0x05BE, Effect::dropped},
    {0x05BF, 0x05BF, Effect::foldedAway},
    {0x05C1, 0x05C2, Effect::foldedAway},
    {0x05D0, 0x05EA, Effect::kept},
    {0x060C, 0x060C, Effect::dropped},
    {0x061B, 0x061B, Effect::dropped},
    {0x061F, 0x061F, Effect::dropped},
    {0x0620, 0x064A, Effect::kept},        // Arabic
    {0x064B, 0x0652, Effect::foldedAway},  // Arabic points
    {0x0660, 0x0669, Effect::kept},
    {0x0671, 0x06D3, Effect::kept},
    {0x06D4, 0x06D4, Effect::dropped},
    {0x0900, 0x0903, Effect::sign},  // Devanagari
    {0x0904, 0x0939, Effect::kept},
    {0x093E, 0x094C, Effect::sign},
    {0x094D, 0x094D, Effect::orderedSign},
    {0x0964, 0x0965, Effect::dropped},
    {0x0966, 0x096F, Effect::kept},
    {0x0E01, 0x0E30, Effect::kept},  // Thai
    {0x0E31, 0x0E31, Effect::sign},
    {0x0E32, 0x0E32, Effect::kept},
    {0x0E33, 0x0E37, Effect::sign},
    {0x0E38, 0x0E3A, Effect::orderedSign},
    {0x0E40, 0x0E46, Effect::kept},
    {0x0E47, 0x0E47, Effect::sign},
    {0x0E48, 0x0E4B, Effect::orderedSign},
    {0x0E4C, 0x0E4E, Effect::sign},
    {0x0E50, 0x0E59, Effect::kept},
    {0x200B, 0x200B, Effect::dropped},
    {0x200C, 0x200D, Effect::joined},
    {0x2010, 0x2027, Effect::dropped},  // typographic punctuation
    {0x2030, 0x205E, Effect::dropped},
    {0x20A0, 0x20BF, Effect::dropped},  // currencies
    {0x20E3, 0x20E3, Effect::foldedAway},
    {0x2190, 0x2335, Effect::dropped},  // arrows, operators, symbols, the older emoji
    {0x237B, 0x2394, Effect::dropped},
    {0x2396, 0x23FF, Effect::dropped},
    {0x2500, 0x2775, Effect::dropped},
    {0x2794, 0x27BF, Effect::dropped},
    {0x2B00, 0x2BFF, Effect::dropped},
    {0x3001, 0x3004, Effect::dropped},
    {0x3005, 0x3007, Effect::kept},
    {0x3008, 0x3020, Effect::dropped},
    {0x3030, 0x3030, Effect::dropped},
    {0x3041, 0x3096, Effect::kept},  // kana
    {0x309D, 0x309F, Effect::kept},
    {0x30A0, 0x30A0, Effect::dropped},
    {0x30A1, 0x30FA, Effect::kept},
    {0x30FB, 0x30FB, Effect::dropped},
    {0x30FC, 0x30FF, Effect::kept},
    {0x3400, 0x4DBF, Effect::kept},  // Han
    {0x4E00, 0x9FFC, Effect::kept},
    {0xAC00, 0xD7A3, Effect::kept},  // Hangul syllables
    {0xFE0E, 0xFE0F, Effect::foldedAway},
    {0x1F1E6, 0x1F1FF, Effect::dropped},  // flags
    {0x1F249, 0x1F3FA, Effect::dropped},  // emoji
    {0x1F3FB, 0x1F3FF, Effect::joined},   // their skin tones
    {0x1F400, 0x1FAFF, Effect::dropped},
    {0xE0020, 0xE007F, Effect::joined},  // tags
}));

constexpr SpokenCharacter kept(char32_t letter) noexcept { return {Effect::kept, letter}; }

constexpr std::array<SpokenCharacter, 128> ascii = [] {
    std::array<SpokenCharacter, 128> table{};
    for (char32_t c = 0; c < table.size(); ++c) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        const bool isKept = isCapital || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        table[c] = isKept ? kept(isCapital ? c + 0x20 : c) : SpokenCharacter{Effect::dropped};
    }
    table['-'] = {Effect::hyphen, '-'};
    return table;
}();

bool holds(const Letters& letters, char32_t codePoint) noexcept {
    return codePoint >= letters.first && codePoint - letters.first < letters.spoken.size();
}

SpokenCharacter in(const Letters& letters, char32_t codePoint) noexcept {
    const char32_t letter = letters.spoken[codePoint - letters.first];
    if (letter == U'_') return {Effect::dropped};
    if (letter == U'?') return {Effect::dependent};
    return kept(letter);
}

}  // namespace

SpokenCharacter spokenCharacter(char32_t codePoint) noexcept {
    if (codePoint < 0x80) return ascii[codePoint];
    for (const Letters* letters :
         {&latin1AndExtendedA, &greek, &cyrillic, &latinExtendedAdditional}) {
        if (holds(*letters, codePoint)) return in(*letters, codePoint);
    }
    // Full-width forms of the visible ASCII characters.
    if (codePoint >= 0xFF01 && codePoint <= 0xFF5E) return ascii[codePoint - 0xFEE0];
    const Stretch* const stretch = stretches.find(codePoint);
    return stretch != nullptr ? SpokenCharacter{stretch->effect, codePoint} : SpokenCharacter{};
}

}  // namespace PrompterCore
