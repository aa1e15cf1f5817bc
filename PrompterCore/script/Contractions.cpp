#include "PrompterCore/script/Contractions.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace PrompterCore {

namespace {

constexpr auto table = std::to_array<Contraction>({
    {"arent", "are", "not"},   {"cant", "cannot", ""},      {"couldnt", "could", "not"},
    {"didnt", "did", "not"},   {"doesnt", "does", "not"},   {"dont", "do", "not"},
    {"hasnt", "has", "not"},   {"havent", "have", "not"},   {"hes", "he", "is"},
    {"id", "i", "would"},      {"ill", "i", "will"},        {"im", "i", "am"},
    {"isnt", "is", "not"},     {"its", "it", "is"},         {"ive", "i", "have"},
    {"lets", "let", "us"},     {"shes", "she", "is"},       {"shouldnt", "should", "not"},
    {"thats", "that", "is"},   {"theres", "there", "is"},   {"theyre", "they", "are"},
    {"wasnt", "was", "not"},   {"wed", "we", "would"},      {"were", "we", "are"},
    {"werent", "were", "not"}, {"weve", "we", "have"},      {"whats", "what", "is"},
    {"wont", "will", "not"},   {"wouldnt", "would", "not"}, {"youre", "you", "are"},
    {"youve", "you", "have"},
});

static_assert(table.size() == 31);
static_assert(std::ranges::is_sorted(table, {}, &Contraction::key));

// Where the keys with each first letter begin, and behind "z" the table's end: every word is looked
// up, and hardly any has more than two keys to be compared with.
constexpr std::array<std::size_t, 27> firstWithLetter = [] {
    std::array<std::size_t, 27> first{};
    for (std::size_t letter = 0; letter < first.size(); ++letter) {
        while (first[letter] < table.size() &&
               static_cast<std::size_t>(table[first[letter]].key.front() - 'a') < letter) {
            ++first[letter];
        }
    }
    return first;
}();

// For each first letter a bit for every length that a key with it has: most words end here.
constexpr std::array<unsigned, 26> lengthsWithLetter = [] {
    std::array<unsigned, 26> lengths{};
    for (const Contraction& contraction : table)
        lengths[static_cast<std::size_t>(contraction.key.front() - 'a')] |=
            1U << contraction.key.size();
    return lengths;
}();

}  // namespace

std::span<const Contraction> contractions() noexcept { return table; }

std::optional<Contraction> contractionFor(std::string_view key) noexcept {
    if (key.empty() || key.size() > 8 || key.front() < 'a' || key.front() > 'z')
        return std::nullopt;
    const auto letter = static_cast<std::size_t>(key.front() - 'a');
    if ((lengthsWithLetter[letter] >> key.size() & 1U) == 0) return std::nullopt;
    for (std::size_t i = firstWithLetter[letter]; i < firstWithLetter[letter + 1]; ++i) {
        if (table[i].key == key) return table[i];
    }
    return std::nullopt;
}

}  // namespace PrompterCore
