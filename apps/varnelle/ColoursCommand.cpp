#include "apps/varnelle/ColoursCommand.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include <fmt/format.h>

#include "PrompterCore/colour/RGBA.h"
#include "apps/varnelle/CheckColours.h"
#include "apps/varnelle/Presets.h"

namespace Varnelle {

namespace {

PrompterCore::RGBA colourOf(const std::string& hex) {
    const auto colour = PrompterCore::RGBA::fromHex(PrompterCore::Text(hex));
    if (!colour)
        throw CLI::ValidationError(PrompterCore::Text(hex).utf8() +
                                   " is no colour; write six or eight hexadecimal digits, like "
                                   "#FF8000");
    return *colour;
}

struct ColourArguments {
    std::string text;
    std::string other;  // the background, or the highlight
    std::optional<std::string> marker;
    PresetFile presets;
    std::string name;
    std::int64_t preset = 0;
    bool json = false;
};

// What is asked of `presets`: nothing else changes the file.
void addPresetVerbs(CLI::App& command, const std::shared_ptr<ColourArguments>& arguments,
                    ExitStatus& exit) {
    const auto verb = [&](const char* name, const char* example, const char* what) {
        return command.add_subcommand(
            name,
            fmt::format("Example:\n  varnelle colours presets mine.json {}\n\n{}", example, what));
    };
    const auto run = [&exit, arguments](CLI::App* verbApp, auto change) {
        verbApp->add_flag("--json", arguments->presets.json, "tell what was done as JSON");
        verbApp->callback([&exit, arguments, change] {
            if (arguments->presets.name == "-")
                throw CLI::ValidationError("presets", "standard input has no place to write to");
            exit = change(*arguments);
        });
    };
    const auto number = [&](CLI::App* verbApp) {
        verbApp->add_option("PRESET", arguments->preset, "which one, counted from 1")->required();
    };

    CLI::App* const add = verb("add", "add Studio FFFFFF FF8000 --marker 00C8FF",
                               "Adds a preset at the end; makes FILE when there is none.");
    add->add_option("NAME", arguments->name, "its name")->required();
    add->add_option("TEXT", arguments->text, "the colour of the text")->required();
    add->add_option("HIGHLIGHT", arguments->other, "the colour of the highlight")->required();
    add->add_option("--marker", arguments->marker, "the colour of the marker");
    run(add, [](const ColourArguments& asked) {
        const auto marker = asked.marker ? std::optional(colourOf(*asked.marker)) : std::nullopt;
        return addPreset(asked.presets, asked.name, colourOf(asked.text), colourOf(asked.other),
                         marker);
    });

    CLI::App* const rename = verb("rename", "rename 2 \"Blue room\"", "Gives a preset a name.");
    number(rename);
    rename->add_option("NAME", arguments->name, "its new name")->required();
    run(rename, [](const ColourArguments& asked) {
        return renamePreset(asked.presets, asked.preset, asked.name);
    });

    CLI::App* const remove = verb("remove", "remove 2", "Takes a preset out.");
    number(remove);
    run(remove,
        [](const ColourArguments& asked) { return removePreset(asked.presets, asked.preset); });
}

}  // namespace

void addColours(CLI::App& app, ExitStatus& exit) {
    const auto arguments = std::make_shared<ColourArguments>();
    arguments->presets.colours = terminalColours();
    CLI::App& command = *app.add_subcommand("colours",
                                            "Examples:\n"
                                            "  varnelle colours check FFFFFF 336699\n"
                                            "  varnelle colours presets mine.json\n\n"
                                            "Judges the prompter's colours, and keeps presets.");
    command.require_subcommand(1);

    CLI::App& check = *command.add_subcommand(
        "check",
        "Examples:\n"
        "  varnelle colours check FFFFFF 336699\n"
        "  varnelle colours check '#ffff99' '#ffffff' --json\n\n"
        "Says whether TEXT can be read on BACKGROUND: the contrast, what WCAG calls it, and the\n"
        "colour that a marker in TEXT would take beside the eye line. Opacity does not count.");
    check.add_option("TEXT", arguments->text, "a colour: six or eight hexadecimal digits")
        ->required();
    check.add_option("BACKGROUND", arguments->other, "another one")->required();
    check.add_flag("--json", arguments->json, "as JSON");
    check.callback([arguments] {
        checkColours(colourOf(arguments->text), colourOf(arguments->other), arguments->json,
                     arguments->presets.colours);
    });

    CLI::App& presets = *command.add_subcommand(
        "presets",
        "Examples:\n"
        "  varnelle colours presets mine.json\n"
        "  varnelle colours presets mine.json add Studio FFFFFF FF8000\n"
        "  varnelle colours presets mine.json rename 1 \"Blue room\"\n\n"
        "Lists the colour presets in FILE, or changes them. FILE is replaced whole or not at all.");
    presets.require_subcommand(0, 1);
    presets.add_option("FILE", arguments->presets.name, "a list of presets; - is standard input")
        ->required();
    presets.add_flag("--json", arguments->presets.json, "in the form in which they are stored");
    addPresetVerbs(presets, arguments, exit);
    presets.callback([&presets, arguments] {
        if (presets.get_subcommands().empty()) listPresets(arguments->presets);
    });
}

}  // namespace Varnelle
