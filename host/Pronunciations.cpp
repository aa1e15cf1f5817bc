#include "host/Pronunciations.h"

#include <algorithm>
#include <array>
#include <utility>

#include "PrompterCore/text/Utf8.h"
#include "host/RunProgram.h"

namespace Varnelle {
namespace {

// Every mnemonic of the American voice. The phones are those that agree best with how the
// dictionary writes the words that it shares with espeak-ng, found by aligning both over its 20000
// commonest words; sounds of other languages get the nearest one. Sorted.
constexpr std::array<std::pair<std::string_view, std::string_view>, 150> phonesOfMnemonics = {{
    {"", ""},
    {"*", "T"},
    {"**", "R"},
    {"-", ""},  // keeps two mnemonics apart,
                // as | does
    {"0", "AA"},
    {"0#", "AA"},
    {"02", "AA"},
    {"3", "ER"},
    {"3:", "ER"},
    {":", ""},
    {";", ""},  // joins letters that are spelled out
    {"?", "T"},
    {"@", "AH"},
    {"@#", "AH"},
    {"@-", "AH"},
    {"@2", "AH"},
    {"@5", "AH"},
    {"@L", "AH L"},
    {"A", "AA"},
    {"A#", "AA R"},
    {"A:", "AA"},
    {"A@", "AA R"},
    {"A~", "AA N"},
    {"B", "V"},
    {"C", "SH"},
    {"D", "DH"},
    {"E", "EH"},
    {"E#", "EH"},
    {"E2", "EH"},
    {"I", "IH"},
    {"I#", "IH"},
    {"I2", "IH"},
    {"I2#", "IH"},
    {"IR", "ER"},
    {"J", "JH"},
    {"J^", "JH"},
    {"L", "L"},
    {"L/", "L"},
    {"N", "NG"},
    {"N-", "AH NG"},
    {"O", "AO"},
    {"O2", "AO"},
    {"O:", "AO"},
    {"O@", "AO R"},
    {"OI", "OY"},
    {"O~", "AO N"},
    {"Q", "G"},
    {"Q\"", "R"},
    {"Q^", "G"},
    {"R", "R"},
    {"R2", "R"},
    {"R3", "R"},
    {"S", "SH"},
    {"S;", "SH"},
    {"T", "TH"},
    {"U", "UH"},
    {"U@", "UH R"},
    {"V", "AH"},
    {"VR", "ER"},
    {"X", "K"},
    {"Z", "ZH"},
    {"Z;", "ZH"},
    {"_", ""},  // pauses
    {"_!", ""},
    {"_:", ""},
    {"_::", ""},
    {"_;_", ""},
    {"_^_", ""},
    {"_|", ""},
    {"a", "AE"},
    {"a#", "AH"},
    {"a#2", "AH"},
    {"a2", "AE"},
    {"aI", "AY"},
    {"aI3", "AY ER"},
    {"aI@", "AY AH"},
    {"aU", "AW"},
    {"aU@", "AW ER"},
    {"aa", "AE"},
    {"b", "B"},
    {"c", "K"},
    {"d", "D"},
    {"d#", "D"},
    {"dZ", "JH"},
    {"dZ;", "JH"},
    {"d[", "D"},
    {"e", "EH"},
    {"e#", "EH"},
    {"e:", "EY"},
    {"e@", "EH R"},
    {"eI", "EY"},
    {"f", "F"},
    {"g", "G"},
    {"h", "HH"},
    {"i", "IY"},
    {"i:", "IY"},
    {"i::", "IY"},
    {"i@", "IY AH"},
    {"i@3", "IH R"},
    {"j", "Y"},
    {"k", "K"},
    {"l", "L"},
    {"l#", "L"},
    {"l-", "AH L"},
    {"l.", "L"},
    {"l/", "L"},
    {"l/2", "L"},
    {"l/3", "L"},
    {"l^", "L"},
    {"m", "M"},
    {"m-", "AH M"},
    {"n", "N"},
    {"n-", "AH N"},
    {"n.", "N"},
    {"n^", "N Y"},
    {"o", "OW"},
    {"o:", "OW"},
    {"o@", "AO R"},
    {"oU", "OW"},
    {"oU#", "OW"},
    {"p", "P"},
    {"q", "K"},
    {"r", "R"},
    {"r\"", "R"},
    {"r-", "R"},
    {"r.", "R"},
    {"r/", "R"},
    {"s", "S"},
    {"s.", "SH"},
    {"s;", "S"},
    {"t", "T"},
    {"t#", "T"},
    {"t2", "T"},
    {"tS", "CH"},
    {"tS;", "CH"},
    {"t[", "T"},
    {"u", "UW"},
    {"u:", "UW"},
    {"v", "V"},
    {"v#", "V"},
    {"w", "W"},
    {"w#", "W"},
    {"x", "K"},
    {"z", "Z"},
    {"z#", "Z"},
    {"z.", "ZH"},
    {"z/2", "Z"},
    {"z;", "Z"},
    {"|", ""},
    {"||", ""},
}};
static_assert(std::ranges::is_sorted(phonesOfMnemonics));

constexpr std::string_view stressMarks = "',%=";
constexpr std::int64_t longestWord = 40;  // letters

// Calls `visit` for each part of `text` between separators, empty ones included.
template <class Visit>
void forEachPart(std::string_view text, char separator, Visit visit) {
    while (true) {
        const std::size_t end = std::min(text.find(separator), text.size());
        visit(text.substr(0, end));
        if (end == text.size()) return;
        text.remove_prefix(end + 1);
    }
}

std::string_view withoutStress(std::string_view mnemonic) {
    return mnemonic.substr(std::min(mnemonic.find_first_not_of(stressMarks), mnemonic.size()));
}

std::optional<std::string_view> phonesOf(std::string_view mnemonic) {
    const auto found = std::ranges::lower_bound(phonesOfMnemonics, mnemonic, {},
                                                [](const auto& entry) { return entry.first; });
    if (found == phonesOfMnemonics.end() || found->first != mnemonic) return std::nullopt;
    return found->second;
}

// The voice writes the R that ends one sound and begins the next twice; a dictionary once.
bool repeatsR(const std::vector<std::string_view>& phones, std::string_view next) {
    return next == "R" && !phones.empty() && (phones.back() == "R" || phones.back() == "ER");
}

bool isLatin(char32_t c) {
    return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || (c >= U'0' && c <= U'9') ||
           c == U'\'' || (c >= 0xC0 && c <= 0x24F && c != 0xD7 && c != 0xF7) ||
           (c >= 0x1E00 && c <= 0x1EFF);
}

}  // namespace

void forEachPronunciation(std::string_view dictionary,
                          const std::function<void(std::string_view, std::string_view)>& visit) {
    forEachPart(dictionary, '\n', [&visit](std::string_view line) {
        const std::size_t space = line.find(' ');
        if (space == std::string_view::npos || space == 0 || space + 1 == line.size()) return;
        const std::string_view word = line.substr(0, space);
        visit(word.substr(0, word.find('(')), line.substr(space + 1));
    });
}

std::optional<std::string> arpabetOf(std::string_view mnemonics) {
    std::vector<std::string_view> phones;
    bool isEnglish = true;
    forEachPart(mnemonics, ' ', [&](std::string_view mnemonic) {
        if (mnemonic.starts_with('(')) return;  // the language changes: "(fr)"
        const auto sounds = phonesOf(withoutStress(mnemonic));
        isEnglish = isEnglish && sounds.has_value();
        if (!isEnglish || sounds->empty()) return;
        forEachPart(*sounds, ' ', [&phones](std::string_view phone) {
            if (!repeatsR(phones, phone)) phones.push_back(phone);
        });
    });
    if (!isEnglish || phones.empty()) return std::nullopt;

    std::string text(phones.front());
    for (const std::string_view phone : std::span(phones).subspan(1)) {
        text += ' ';
        text += phone;
    }
    return text;
}

bool isSpeakable(std::string_view word) {
    std::int64_t letters = 0;
    for (std::size_t at = 0; at < word.size(); ++letters) {
        if (!isLatin(PrompterCore::Utf8::next(word, at))) return false;
    }
    return letters > 0 && letters <= longestWord;
}

std::vector<std::optional<std::string>> guessedPronunciations(std::span<const std::string> words,
                                                              const Pronouncer& pronouncer) {
    std::vector<std::optional<std::string>> guesses(words.size());
    std::vector<std::size_t> asked;
    std::string input;
    for (std::size_t word = 0; word < words.size(); ++word) {
        if (!isSpeakable(words[word])) continue;
        asked.push_back(word);
        input += words[word] + '\n';
    }
    if (asked.empty()) return guesses;

    // Each line that it reads gives one line of mnemonics.
    const auto answer =
        runProgram({pronouncer.program, "-q", "-x", "--sep= ", "-b", "1", "-v", "en-us"}, input,
                   pronouncer.timeLimit);
    if (!answer) return guesses;
    const auto lines = static_cast<std::size_t>(std::ranges::count(answer->output, '\n'));
    // Any other number of lines would give words the sound of their neighbours.
    if (lines > asked.size() || (answer->complete && lines != asked.size())) return guesses;

    std::size_t line = 0;
    forEachPart(answer->output, '\n', [&](std::string_view mnemonics) {
        if (line < lines) guesses[asked[line]] = arpabetOf(mnemonics);
        ++line;
    });
    return guesses;
}

}  // namespace Varnelle
