#include "PrompterCore/script/SpokenForms.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "PrompterCore/script/Contractions.h"
#include "PrompterCore/script/NumberWords.h"
#include "PrompterCore/script/SpokenCharacters.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

constexpr bool isAsciiDigit(char c) noexcept { return c >= '0' && c <= '9'; }

// A string of ASCII digits whose value fits 64 bits.
std::optional<std::int64_t> wholeNumber(std::string_view digits) noexcept {
    // Neither a sign nor nothing at all is a number here.
    if (digits.empty() || !isAsciiDigit(digits.front())) return std::nullopt;
    std::int64_t value = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stopped, failure] = std::from_chars(digits.data(), end, value);
    if (failure != std::errc() || stopped != end) return std::nullopt;
    return value;
}

// The word without the code points at its ends that are no letters, marks or digits.
std::string_view trimmedToAlphanumerics(std::string_view word) noexcept {
    std::size_t from = 0;
    while (from < word.size()) {
        std::size_t behind = from;
        if (CharacterClasses::isAlphanumeric(Utf8::next(word, behind))) break;
        from = behind;
    }
    std::size_t to = word.size();
    while (to > from) {
        std::size_t before = to;
        if (CharacterClasses::isAlphanumeric(Utf8::previous(word, before))) break;
        to = before;
    }
    return word.substr(from, to - from);
}

std::string withoutCommas(std::string_view word) {
    std::string result;
    for (const Character character : Characters(Text(WellFormed{word}))) {
        if (!character.is(',')) result.append(character.utf8());
    }
    return result;
}

// What stands between characters that are the separator, where something does.
std::vector<std::string_view> pieces(const Characters& characters, char separator) {
    std::vector<std::string_view> result;
    std::int64_t from = 0;
    for (std::int64_t i = 0; i <= characters.count(); ++i) {
        if (i < characters.count() && !characters[i].is(separator)) continue;
        if (from < i) result.push_back(characters.slice(CharacterRange(from, i)));
        from = i + 1;
    }
    return result;
}

bool isAllNumeric(std::string_view piece) {
    for (const Character character : Characters(Text(WellFormed{piece}))) {
        if (!character.isNumeric()) return false;
    }
    return true;
}

// "3.14": digits, a point, digits, with commas anywhere. False when `word` is none such.
bool takeDecimalReading(std::string_view word, WordTaker take) {
    if (word.find('.') == std::string_view::npos) return false;
    const std::string_view trimmed = trimmedToAlphanumerics(word);
    // The first piece begins here, and it has to be a number.
    if (trimmed.empty() || !isAsciiDigit(trimmed.front())) return false;
    const Characters characters(Text(WellFormed{withoutCommas(trimmed)}));
    const std::vector<std::string_view> both = pieces(characters, '.');
    if (both.size() != 2 || !isAllNumeric(both[1])) return false;
    const std::optional<std::int64_t> whole = wholeNumber(both[0]);
    if (!whole) return false;
    takeNumberWords(*whole, take);
    take("point");
    for (const Character character : Characters(Text(WellFormed{both[1]}))) {
        const auto digit = CharacterClasses::decimalDigit(character.firstCodePoint());
        if (digit) takeNumberWords(*digit, take);
    }
    return true;
}

// What an ASCII character becomes (0 when it is dropped), and what the steps after have to think of
// when a word holds it.
enum Trait : std::uint8_t { digit = 1, hyphen = 2, point = 4, beyondAscii = 8 };

struct AsciiCharacter {
    char spoken = 0;
    std::uint8_t traits = 0;
};

constexpr std::array<AsciiCharacter, 256> asciiCharacters = [] {
    std::array<AsciiCharacter, 256> table{};
    for (std::size_t c = 0; c < table.size(); ++c) {
        const auto character = static_cast<char>(c);
        if (c >= 0x80) table[c].traits = beyondAscii;
        if (c >= 'A' && c <= 'Z') table[c].spoken = static_cast<char>(c + 0x20);
        if (c >= 'a' && c <= 'z') table[c].spoken = character;
        if (isAsciiDigit(character)) table[c] = {character, digit};
    }
    table['-'] = {'-', hyphen};
    table['.'] = {0, point};
    return table;
}();

// Writes the letters, digits and hyphens of `word` in lower case from `end` on, which moves behind
// them, and gives the traits of all its characters. With one beyond ASCII among them what is
// written is of no use.
unsigned writeAscii(std::string_view word, char*& end) noexcept {
    unsigned traits = 0;
    char* behind = end;
    for (const char c : word) {
        const AsciiCharacter character = asciiCharacters[static_cast<unsigned char>(c)];
        traits |= character.traits;
        *behind = character.spoken;
        behind += character.spoken != 0 ? 1 : 0;
    }
    end = behind;
    return traits;
}

// Writes `c` at `at`, and gives the place behind it.
char* writeUtf8(char32_t c, char* at) noexcept {
    const auto trail = [c, &at](int shift) {
        *at++ = static_cast<char>(0x80 | ((c >> shift) & 0x3F));
    };
    if (c < 0x80) {
        *at++ = static_cast<char>(c);
    } else if (c < 0x800) {
        *at++ = static_cast<char>(0xC0 | (c >> 6));
        trail(0);
    } else {
        *at++ = static_cast<char>(0xE0 | (c >> 12));
        trail(6);
        trail(0);
    }
    return at;
}

// Writes the letters, numerals and hyphens of `word` from `end` on, which moves behind them, code
// point by code point. False when one of them depends on its neighbours.
bool writeQuickly(std::string_view word, char*& end) noexcept {
    using enum SpokenCharacter::Effect;
    SpokenCharacter::Effect last = dropped;  // what a joined code point would join
    for (std::size_t at = 0; at < word.size();) {
        const SpokenCharacter character = spokenCharacter(Utf8::next(word, at));
        switch (character.effect) {
            case dependent: return false;
            case foldedAway: continue;
            case dropped: break;
            case joined:
                if (last != dropped) return false;
                continue;
            case orderedSign:
                if (last == orderedSign) return false;
                [[fallthrough]];
            case sign:
                if (last == dropped || last == hyphen) return false;
                [[fallthrough]];
            case kept:
            case hyphen: end = writeUtf8(character.letter, end);
        }
        last = character.effect;
    }
    return true;
}

// The letters, numerals and hyphens of a word, folded and in lower case as a whole.
std::string normalised(std::string_view word) {
    std::string kept;
    for (const Character character : Characters(lowercased(folded(Text(WellFormed{word}))))) {
        if (character.isLetter() || character.isNumeric() || (character.is('-') && !kept.empty()))
            kept.append(character.utf8());
    }
    return kept;
}

// Without the hyphens at the ends. By characters: what was dropped may have kept a hyphen apart
// from a mark.
std::string_view withoutOuterHyphens(std::string_view spoken) {
    if (spoken.empty() || (spoken.front() != '-' && spoken.back() != '-')) return spoken;
    const Characters characters(Text(WellFormed{spoken}));
    std::int64_t from = 0;
    std::int64_t to = characters.count();
    while (from < to && characters[to - 1].is('-'))
        --to;
    while (from < to && characters[from].is('-'))
        ++from;
    return spoken.substr(characters.byteOffset(from),
                         characters.byteOffset(to) - characters.byteOffset(from));
}

// False when `spoken` has no hyphen to be cut at.
bool takePieces(std::string_view spoken, WordTaker take) {
    if (spoken.find('-') == std::string_view::npos) return false;
    const Characters characters(Text(WellFormed{spoken}));
    const std::vector<std::string_view> between = pieces(characters, '-');
    if (between.size() == 1 && between[0].size() == spoken.size()) return false;
    for (const std::string_view piece : between)
        takeSpokenForms(piece, take);
    return true;
}

bool takeNumber(std::string_view spoken, WordTaker take) {
    const std::optional<std::int64_t> number = wholeNumber(spoken);
    if (!number) return false;
    // Four digits are read as a year, "1500" and "0042" alike.
    if (spoken.size() == 4) {
        takeYearWords(*number, take);
    } else {
        takeNumberWords(*number, take);
    }
    return true;
}

bool takeContraction(std::string_view spoken, WordTaker take) {
    const std::optional<Contraction> contraction = contractionFor(spoken);
    if (!contraction) return false;
    take(contraction->first);
    if (!contraction->second.empty()) take(contraction->second);
    return true;
}

void takeLetters(std::string_view spoken, WordTaker take) {
    if (!spoken.empty() && !takeContraction(spoken, take)) take(spoken);
}

// `spoken` is what is left of a word with digits or hyphens among it, `traits` what it may hold.
void takeNormalised(std::string_view spoken, unsigned traits, WordTaker take) {
    if ((traits & hyphen) != 0) spoken = withoutOuterHyphens(spoken);
    if ((traits & digit) != 0 && takeNumber(spoken, take)) return;
    if ((traits & hyphen) != 0 && takePieces(spoken, take)) return;
    takeLetters(spoken, take);
}

// `room` has the word's bytes: what is spoken never takes more, but for words that go the general
// way.
void takeFormsThrough(char* room, std::string_view word, WordTaker take) {
    const auto written = [room](const char* end) {
        return std::string_view(room, static_cast<std::size_t>(end - room));
    };
    char* end = room;
    const unsigned traits = writeAscii(word, end);
    if (traits == 0) return takeLetters(written(end), take);
    if ((traits & point) != 0 && takeDecimalReading(word, take)) return;
    if ((traits & beyondAscii) == 0) return takeNormalised(written(end), traits, take);
    // Full-width forms may be folded to digits and hyphens.
    end = room;
    if (writeQuickly(word, end)) return takeNormalised(written(end), digit | hyphen, take);
    takeNormalised(normalised(word), digit | hyphen, take);
}

void takeLongWord(std::string_view word, WordTaker take) {
    std::string room(word.size(), '\0');
    takeFormsThrough(room.data(), word, take);
}

}  // namespace

void takeSpokenForms(std::string_view word, WordTaker take) {
    std::array<char, 64> room;  // no allocation for a word of ordinary length
    if (word.size() > room.size()) return takeLongWord(word, take);
    takeFormsThrough(room.data(), word, take);
}

void appendSpokenForms(std::string_view word, std::vector<Text>& forms) {
    const auto append = [&forms](std::string_view form) { forms.emplace_back(WellFormed{form}); };
    takeSpokenForms(word, WordTaker(append));
}

std::vector<Text> spokenForms(const Text& word) {
    std::vector<Text> forms;
    appendSpokenForms(word.utf8(), forms);
    return forms;
}

}  // namespace PrompterCore
