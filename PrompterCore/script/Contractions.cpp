#include "PrompterCore/script/Contractions.h"

#include <algorithm>
#include <array>

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

}  // namespace

std::span<const Contraction> contractions() noexcept { return table; }

std::optional<Contraction> contractionFor(std::string_view key) noexcept {
    const auto* const found = std::ranges::lower_bound(table, key, {}, &Contraction::key);
    if (found == table.end() || found->key != key) return std::nullopt;
    return *found;
}

}  // namespace PrompterCore
