#include "PrompterCore/colour/ColourPresetLibrary.h"
#include "tests/golden/Forms.h"

namespace PrompterCore::Tests {

namespace {

constexpr RGBA white(1, 1, 1, 1);
constexpr RGBA orange(1, 0.5, 0, 1);

UUID id(std::uint8_t last) {
    return UUID({0x0F, 0x8F, 0xAD, 0x5B, 0xD9, 0xCB, 0x46, 0x9F, 0xA1, 0x65, 0x70, 0x86, 0x77, 0x28,
                 0x95, last});
}

std::vector<ColourPreset> presets() {
    using ColourPresetLibrary::adding;
    auto presets = adding("Studio", white, orange, std::nullopt, {}, id(0x0E));
    presets = adding("  Studio ", orange, white, RGBA(0, 0, 0, 0.25), presets, id(0x0F));
    presets = adding("Caf\u00E9 \"N\u00B0 1\" \\ \U0001F3A5", *RGBA::fromHex("#336699"), white,
                     std::nullopt, presets, id(0xFF));
    return presets;
}

std::string hexLines() {
    std::string lines;
    for (const RGBA& colour :
         {white, orange, RGBA(0, 0, 0, 0), RGBA(0.13, 0.14, 0.16, 1), RGBA(1, 1, 1, 0.5)})
        lines += colour.hex() + '\n';
    return lines;
}

std::string hexReadAndWritten(const std::string& file) {
    std::string lines;
    for (const std::string& line : linesOf(file))
        lines += RGBA::fromHex(line).value().hex() + '\n';
    return lines;
}

std::string listReadAndWritten(const std::string& file) {
    return toJson(fromJson<std::vector<ColourPreset>>(file));
}

}  // namespace

std::vector<Form> colourForms() {
    return {
        {"colours.jsonl",
         recordLines<RGBA>({white, orange, RGBA(1 / 3.0, 128 / 255.0, 0.1, 0),
                            RGBA::unclamped(-0.5, 1.5, 1e21, 1e-7)}),
         recordsReadAndWritten<RGBA>},
        {"colour-presets.jsonl", recordLines(presets()), recordsReadAndWritten<ColourPreset>},
        {"colour-preset-list.json", toJson(presets()), listReadAndWritten},
        {"colours-hex.txt", hexLines(), hexReadAndWritten},
    };
}

}  // namespace PrompterCore::Tests
