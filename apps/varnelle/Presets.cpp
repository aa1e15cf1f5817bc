#include "apps/varnelle/Presets.h"

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/colour/ColourPresetLibrary.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/Trims.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/Swatch.h"
#include "host/Failures.h"
#include "host/FolderLock.h"
#include "host/FreshUUID.h"
#include "host/TextFile.h"
#include "host/WriteFile.h"

namespace Varnelle {

namespace {

namespace ColourPresetLibrary = PrompterCore::ColourPresetLibrary;
using PrompterCore::ColourPreset;
using PrompterCore::RGBA;
using PrompterCore::Text;
using Presets = std::vector<ColourPreset>;

[[noreturn]] void isNoList(const PresetFile& file, const std::string& why) {
    throw BadData(fmt::format("{} is no list of presets: {}", shownName(file.name), why));
}

// With each id once, so that what is changed is the preset that was meant.
Presets read(const PresetFile& file) {
    const std::string bytes = readFile(file.name);
    try {
        Presets presets = PrompterCore::fromJson<Presets>(bytes);
        for (auto preset = presets.begin(); preset != presets.end(); preset++) {
            if (std::ranges::count(presets.begin(), preset, preset->id, &ColourPreset::id) > 0)
                isNoList(file, "two have the id " + preset->id.text());
        }
        return presets;
    } catch (const PrompterCore::RecordFailure& failure) {
        isNoList(file, failure.what());
    }
}

bool isThere(const PresetFile& file) {
    std::error_code error;
    return std::filesystem::status(file.name, error).type() !=
           std::filesystem::file_type::not_found;
}

ExitStatus refused(const std::string& why) {
    complain(why);
    return ExitStatus::usage;
}

ExitStatus refusedName() { return refused("a name is UTF-8 text that is not only white space"); }

std::string swatch(const RGBA& colour, const PresetFile& file) {
    const std::string hex = visible(colour).hex();
    if (file.colours == TerminalColours::none || !isTerminal()) return hex;
    return coloured("  ", colour, colour, file.colours) + " " + hex;
}

// Number, name and colours; names take `columns`.
std::string lineOf(const ColourPreset& preset, std::size_t index, std::int64_t columns,
                   const PresetFile& file) {
    const std::string name = shown(preset.name.utf8());
    const auto padding = static_cast<std::size_t>(
        std::max<std::int64_t>(columns - PrompterCore::columnsOf(name), 0));
    std::string line =
        fmt::format("{:>3}  {}{}  {}  {}", index + 1, name, std::string(padding, ' '),
                    swatch(preset.text, file), swatch(preset.highlight, file));
    return preset.marker ? line + "  marker " + swatch(*preset.marker, file) : line;
}

std::int64_t columnsOfNames(const Presets& presets) {
    std::int64_t columns = 0;
    for (const ColourPreset& preset : presets)
        columns = std::max(columns, PrompterCore::columnsOf(shown(preset.name.utf8())));
    return columns;
}

void print(const PresetFile& file, const Presets& presets, std::size_t index) {
    Output output;
    output.line(file.json ? PrompterCore::toJson(presets[index])
                          : lineOf(presets[index], index, 0, file));
    output.flush();
}

void write(const PresetFile& file, const Presets& presets) {
    writeFile(file.name, PrompterCore::toJson(presets) + "\n");
}

// Absent when there is no such preset; that is then said.
std::optional<std::size_t> indexOf(std::int64_t preset, const PresetFile& file,
                                   const Presets& presets) {
    const std::int64_t count = PrompterCore::signedCount(presets.size());
    if (1 <= preset && preset <= count) return static_cast<std::size_t>(preset - 1);
    const std::string there = count == 0   ? "it has none"
                              : count == 1 ? "it has only preset 1"
                                           : fmt::format("it has presets 1 to {}", count);
    complain(fmt::format("{}: there is no preset {}; {}", file.name, preset, there));
    return std::nullopt;
}

}  // namespace

void listPresets(const PresetFile& file) {
    const Presets presets = read(file);
    Output output;
    if (file.json) {
        output.line(PrompterCore::toJson(presets));
    } else {
        const std::int64_t columns = columnsOfNames(presets);
        for (std::size_t i = 0; i < presets.size(); i++)
            output.line(lineOf(presets[i], i, columns, file));
    }
    output.flush();
}

ExitStatus addPreset(const PresetFile& file, const std::string& name, const RGBA& text,
                     const RGBA& highlight, const std::optional<RGBA>& marker) {
    const std::optional<Text> wanted = Text::fromUtf8(name);
    if (!wanted) return refusedName();
    const FolderLock lock(file.name);
    const Presets before = isThere(file) ? read(file) : Presets();
    const Presets presets =
        ColourPresetLibrary::adding(*wanted, text, highlight, marker, before, freshUUID());
    if (presets.size() == before.size()) return refusedName();
    write(file, presets);
    print(file, presets, presets.size() - 1);
    return ExitStatus::done;
}

ExitStatus renamePreset(const PresetFile& file, std::int64_t preset, const std::string& name) {
    const std::optional<Text> wanted = Text::fromUtf8(name);
    if (!wanted || PrompterCore::trimmedOfWhiteSpace(wanted->utf8()).empty()) return refusedName();
    const FolderLock lock(file.name);
    const Presets before = read(file);
    const auto index = indexOf(preset, file, before);
    if (!index) return ExitStatus::usage;
    const Presets presets = ColourPresetLibrary::renaming(before[*index].id, *wanted, before);
    write(file, presets);
    print(file, presets, *index);
    return ExitStatus::done;
}

ExitStatus removePreset(const PresetFile& file, std::int64_t preset) {
    const FolderLock lock(file.name);
    const Presets before = read(file);
    const auto index = indexOf(preset, file, before);
    if (!index) return ExitStatus::usage;
    write(file, ColourPresetLibrary::removing(before[*index].id, before));
    print(file, before, *index);
    return ExitStatus::done;
}

}  // namespace Varnelle
