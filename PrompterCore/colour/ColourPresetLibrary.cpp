#include "PrompterCore/colour/ColourPresetLibrary.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "PrompterCore/support/IndexRange.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore::ColourPresetLibrary {

namespace {

// Not trimmed again: a name that is cut right behind a blank keeps it.
Text normalised(const Text& name) {
    const Characters characters(withSingleBlanks(name.utf8()));
    return characters.slice(CharacterRange(0, std::min(characters.count(), nameLimit)));
}

Text unique(const Text& name, const std::unordered_set<Text>& inUse) {
    Text candidate = name;
    for (std::int64_t n = 2; inUse.contains(candidate); n = checkedAdd(n, 1))
        candidate = name.utf8() + ' ' + std::to_string(n);
    return candidate;
}

}  // namespace

std::vector<ColourPreset> adding(const Text& name, const RGBA& text, const RGBA& highlight,
                                 const std::optional<RGBA>& marker,
                                 std::vector<ColourPreset> presets, const UUID& id) {
    const Text wanted = normalised(name);
    if (wanted.isEmpty()) return presets;
    std::unordered_set<Text> inUse;
    for (const ColourPreset& preset : presets)
        inUse.insert(preset.name);
    presets.push_back({.id = id,
                       .name = unique(wanted, inUse),
                       .text = text,
                       .highlight = highlight,
                       .marker = marker});
    return presets;
}

std::vector<ColourPreset> renaming(const UUID& id, const Text& name,
                                   std::vector<ColourPreset> presets) {
    const Text wanted = normalised(name);
    const auto renamed = std::ranges::find(presets, id, &ColourPreset::id);
    if (wanted.isEmpty() || renamed == presets.end()) return presets;
    std::unordered_set<Text> inUse;
    for (auto other = presets.begin(); other != presets.end(); other++) {
        if (other != renamed) inUse.insert(other->name);
    }
    renamed->name = unique(wanted, inUse);
    return presets;
}

std::vector<ColourPreset> removing(const UUID& id, std::vector<ColourPreset> presets) {
    std::erase_if(presets, [&](const ColourPreset& preset) { return preset.id == id; });
    return presets;
}

std::optional<ColourPreset> matching(const std::optional<RGBA>& text,
                                     const std::optional<RGBA>& highlight,
                                     const std::optional<RGBA>& marker,
                                     const std::vector<ColourPreset>& presets) {
    if (!text || !highlight) return std::nullopt;
    const auto found = std::ranges::find_if(presets, [&](const ColourPreset& preset) {
        return preset.text == *text && preset.highlight == *highlight && preset.marker == marker;
    });
    return found == presets.end() ? std::nullopt : std::optional(*found);
}

}  // namespace PrompterCore::ColourPresetLibrary
