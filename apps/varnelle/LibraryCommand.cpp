#include "apps/varnelle/LibraryCommand.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "PrompterCore/library/LibraryTree.h"
#include "PrompterCore/script/ReadingTime.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Separator.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Json.h"
#include "apps/varnelle/Output.h"
#include "host/Failures.h"
#include "host/ScriptFolder.h"
#include "host/TextFile.h"

namespace Varnelle {

namespace {

struct Arguments {
    std::string directory;
    std::optional<std::string> search;
    bool json = false;
    std::string name;
    std::string item;
    std::optional<std::string> parent;
    bool isFolder = false;
};

// Says what cannot be read, and remembers that something was.
class Troubles {
public:
    void say(const std::string& why) {
        complain(why);
        any_ = true;
    }
    [[nodiscard]] ExitStatus status() const {
        return any_ ? ExitStatus::badData : ExitStatus::done;
    }

private:
    bool any_ = false;
};

// Absent, and said, when the script cannot be read.
std::optional<std::int64_t> wordsOf(const std::string& directory, const ScriptItem& item,
                                    Troubles& troubles) {
    try {
        const Script script(readText(std::filesystem::path(directory) / item.id.utf8()));
        return signedCount(script.words().size());
    } catch (const std::runtime_error& failure) {
        troubles.say(failure.what());
        return std::nullopt;
    }
}

void show(const std::vector<ScriptItem>& items, const Arguments& arguments, std::size_t depth,
          Troubles& troubles, Output& output) {
    for (const ScriptItem& item : items) {
        const std::string name = std::string(2 * depth, ' ') + shown(item.name.utf8());
        if (item.isFolder()) {
            output.line(name + "/");
            if (item.children) show(*item.children, arguments, depth + 1, troubles, output);
            continue;
        }
        const std::optional<std::int64_t> words = wordsOf(arguments.directory, item, troubles);
        output.line(words ? fmt::format("{}{}{}", name, separator, ReadingTime::summary(*words))
                          : name);
    }
}

Json treeAsJson(const std::vector<ScriptItem>& items, const Arguments& arguments,
                Troubles& troubles) {
    Json list = Json::array();
    for (const ScriptItem& item : items) {
        Json record = {
            {"id", item.id.utf8()}, {"name", item.name.utf8()}, {"kind", caseName(item.kind)}};
        if (item.isFolder()) {
            record["children"] =
                item.children ? treeAsJson(*item.children, arguments, troubles) : Json::array();
        } else {
            const std::optional<std::int64_t> words = wordsOf(arguments.directory, item, troubles);
            record["words"] = words ? Json(*words) : Json();
            record["readingTime"] = words ? Json(ReadingTime::summary(*words)) : Json();
        }
        list.push_back(std::move(record));
    }
    return list;
}

// What an argument must be to become, or to be in, a name.
Text utf8Argument(const std::string& argument) {
    std::optional<Text> text = Text::fromUtf8(argument);
    if (!text) throw CLI::ValidationError("library", "a name is UTF-8");
    return *std::move(text);
}

// What could not be read may have been what was searched for.
ExitStatus statusOf(const Troubles& troubles, bool isSearch, bool foundAny) {
    if (troubles.status() != ExitStatus::done) return troubles.status();
    return isSearch && !foundAny ? ExitStatus::nothingFound : ExitStatus::done;
}

ExitStatus showLibrary(const Arguments& arguments) {
    Troubles troubles;
    const Text search = utf8Argument(arguments.search.value_or(""));
    const ScriptFolder folder = ScriptFolder::read(arguments.directory);
    for (const std::string& complaint : folder.complaints) {
        troubles.say(complaint);
    }
    const std::vector<ScriptItem> items = LibraryTree::filtered(folder.items, search);
    Output output;
    if (arguments.json) {
        output.line(Json{{"items", treeAsJson(items, arguments, troubles)}}.dump());
    } else {
        show(items, arguments, 0, troubles, output);
    }
    output.flush();
    return statusOf(troubles, arguments.search.has_value(), !items.empty());
}

void say(const std::filesystem::path& place) {
    Output output;
    output.line(shown(place.string()));
    output.flush();
}

std::optional<Text> folderArgument(const Arguments& arguments) {
    return arguments.parent ? std::optional(utf8Argument(*arguments.parent)) : std::nullopt;
}

}  // namespace

void addLibraryCommand(CLI::App& app, ExitStatus& exit) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App& command = *app.add_subcommand(
        "library",
        "Examples:\n"
        "  varnelle library Scripts\n"
        "  varnelle library Scripts --search keynote\n"
        "  varnelle library Scripts new \"Town hall\" --in Talks\n"
        "  varnelle library Scripts duplicate Talks/Keynote\n"
        "  varnelle library Scripts rename Talks/Keynote \"Opening\"\n\n"
        "Lists the scripts (.txt, .md) in the folder DIR, or makes, copies and "
        "names them. Nothing is\never written over. A search that finds nothing "
        "ends with status 1.");
    command.require_subcommand(0, 1);
    command.add_option("DIR", arguments->directory, "the folder")->required();
    command.add_option("--search", arguments->search, "only what has this in its name");
    command.add_flag("--json", arguments->json, "the tree as JSON");
    command.callback([&command, &exit, arguments] {
        if (command.get_subcommands().empty()) exit = showLibrary(*arguments);
    });

    CLI::App* const create = command.add_subcommand("new", "Makes an empty script.");
    create->add_option("NAME", arguments->name, "its name; one that ends in .md makes such a file")
        ->required();
    create->add_option("--in", arguments->parent, "the folder of the library that it goes into");
    create->add_flag("--folder", arguments->isFolder, "makes a folder instead");
    create->callback([create, arguments] {
        refuseOptionsBefore(*create);
        const Text name = utf8Argument(arguments->name);
        const std::optional<Text> parent = folderArgument(*arguments);
        const ScriptFolder folder = ScriptFolder::read(arguments->directory);
        say(arguments->isFolder ? newFolder(arguments->directory, folder, parent, name)
                                : newScript(arguments->directory, folder, parent, name));
    });

    CLI::App* const copy = command.add_subcommand("duplicate", "Copies a script or a folder.");
    copy->add_option("ITEM", arguments->item, "its path inside the library")->required();
    copy->callback([copy, arguments] {
        refuseOptionsBefore(*copy);
        const ScriptFolder folder = ScriptFolder::read(arguments->directory);
        const ScriptItem item = itemOf(folder, utf8Argument(arguments->item));
        say(duplicate(arguments->directory, folder, item));
    });

    CLI::App* const naming = command.add_subcommand("rename", "Gives a script or folder a name.");
    naming->add_option("ITEM", arguments->item, "its path inside the library")->required();
    naming->add_option("NAME", arguments->name, "its new name")->required();
    naming->callback([naming, arguments] {
        refuseOptionsBefore(*naming);
        const Text name = utf8Argument(arguments->name);
        const ScriptFolder folder = ScriptFolder::read(arguments->directory);
        const ScriptItem item = itemOf(folder, utf8Argument(arguments->item));
        say(rename(arguments->directory, folder, item, name));
    });
}

}  // namespace Varnelle
