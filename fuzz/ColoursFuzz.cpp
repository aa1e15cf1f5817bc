// Colours, identifiers and presets as any program, or a hand, may write them: reading gives a value
// or none, and what was read is written so that it reads back the same. Behind a list of presets
// that can be read, names are given to it.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "PrompterCore/colour/ColourPresetLibrary.h"
#include "PrompterCore/colour/EyeLineColour.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore {
namespace {

using Presets = std::vector<ColourPreset>;

void readColour(const Text& text) {
    const auto colour = RGBA::fromHex(text);
    if (!colour) return;
    require(RGBA::fromHex(colour->hex()) == colour, "a colour's digits read back");
    const RGBA seen = EyeLineColour::automatic(*colour, *colour);
    require(seen.contrastWith(*colour) >= 3, "the eye line can be seen");
}

void readId(const Text& text) {
    const auto id = UUID::fromText(text);
    require(!id || UUID::fromText(id->text()) == id, "an identifier reads back");
}

bool isNameOf(const Presets& presets, const Text& name) {
    return std::ranges::find(presets, name, &ColourPreset::name) != presets.end();
}

void giveName(const Presets& presets, const Text& name) {
    const RGBA black(0, 0, 0, 1);
    const UUID id{UUID::Bytes{}};
    const Presets more = ColourPresetLibrary::adding(name, black, black, std::nullopt, presets, id);
    require(more.size() <= presets.size() + 1, "one is added or none");
    require(more.size() == presets.size() || !isNameOf(presets, more.back().name),
            "no name is given twice");
    if (presets.empty()) return;
    const Presets renamed = ColourPresetLibrary::renaming(presets[0].id, name, presets);
    require(renamed.size() == presets.size(), "renaming adds and removes none");
}

void readPresets(const std::string& json) {
    try {
        const Presets presets = fromJson<Presets>(json);
        const std::string written = toJson(presets);
        require(toJson(fromJson<Presets>(written)) == written, "presets read back");
        giveName(presets, presets.empty() ? Text(json) : presets.back().name);
    } catch (const RecordFailure& failure) {
        require(!failure.problem().empty(), "it says what is wrong");
    }
}

}  // namespace
}  // namespace PrompterCore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace PrompterCore;
    const std::string bytes(data, data + size);
    readColour(bytes);
    readId(bytes);
    giveName({}, bytes);
    readPresets(bytes);
    return 0;
}
