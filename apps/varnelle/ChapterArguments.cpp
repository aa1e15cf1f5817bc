// The arguments of `varnelle chapters` with its verbs.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "apps/varnelle/Chapters.h"
#include "apps/varnelle/CommandLine.h"

namespace Varnelle {

namespace {

struct ChapterArguments {
    EditedScript script;
    std::string title;
    std::optional<std::string> text;
    std::optional<std::int64_t> before;
    std::int64_t chapter = 0;
    std::int64_t destination = 0;
    bool keepText = false;
    bool json = false;
};

}  // namespace

void addChapters(CLI::App& app, ExitStatus& exit) {
    const auto arguments = std::make_shared<ChapterArguments>();
    const auto anyChapter = numberBetween<std::int64_t>(1, std::int64_t{1} << 60);
    CLI::App& command =
        *app.add_subcommand("chapters",
                            "Examples:\n"
                            "  varnelle chapters talk.txt\n"
                            "  varnelle chapters talk.txt move 3 1 > moved.txt\n"
                            "  varnelle chapters talk.txt rename 2 \"The Keeper\" --in-place\n\n"
                            "Lists the chapters of SCRIPT, or edits one of them. Chapters count "
                            "from 1; the edited text\n"
                            "goes to standard output unless it is written back.");
    command.require_subcommand(0, 1);
    command.add_option("SCRIPT", arguments->script.file, "the script; - is standard input")
        ->required();
    auto* const json = command.add_flag("--json", arguments->json, "the list as JSON");

    const auto verb = [&](const char* name, const char* example, const char* what) {
        return command.add_subcommand(
            name, fmt::format("Example:\n  varnelle chapters talk.txt {}\n\n{}", example, what));
    };
    const auto number = [&](CLI::App* verbApp, const char* name, std::int64_t& value,
                            const char* what) {
        verbApp->add_option(name, value, what)->required()->check(anyChapter);
    };
    const auto inPlace = [&](CLI::App* verbApp) {
        verbApp->add_flag("--in-place", arguments->script.isInPlace,
                          "write SCRIPT anew instead, all of it or nothing");
    };
    // What is asked for, when the arguments make sense.
    const auto run = [&exit, arguments, json](CLI::App* verbApp, auto edit) {
        verbApp->callback([&exit, arguments, json, edit] {
            const ChapterArguments& asked = *arguments;
            if (json->count() > 0)
                throw CLI::ValidationError("chapters", "--json is for the list of chapters");
            if (asked.script.file == "-" && asked.script.isInPlace)
                throw CLI::ValidationError("chapters", "standard input has no place to write to");
            if (asked.script.file == "-" && asked.text == "-")
                throw CLI::ValidationError("chapters",
                                           "only one thing can be read from standard input");
            exit = edit(asked);
        });
    };

    CLI::App* const add =
        verb("add", "add \"The End\" --text end.txt", "Makes a chapter at the end.");
    add->add_option("TITLE", arguments->title, "its title")->required();
    add->add_option("--text", arguments->text, "a file with its text; - is standard input");
    add->add_option("--before", arguments->before, "in front of this chapter instead")
        ->check(anyChapter);
    inPlace(add);
    run(add, [](const ChapterArguments& asked) {
        return addChapter(asked.script, asked.title, asked.text, asked.before);
    });

    CLI::App* const rename = verb("rename", "rename 2 \"The Keeper\"", "Gives a chapter a title.");
    number(rename, "CHAPTER", arguments->chapter, "which one");
    rename->add_option("TITLE", arguments->title, "its new title")->required();
    inPlace(rename);
    run(rename, [](const ChapterArguments& asked) {
        return renameChapter(asked.script, asked.chapter, asked.title);
    });

    CLI::App* const remove = verb("remove", "remove 2 --keep-text", "Takes a chapter out.");
    number(remove, "CHAPTER", arguments->chapter, "which one");
    remove->add_flag("--keep-text", arguments->keepText,
                     "only its heading; the text joins the chapter before");
    inPlace(remove);
    run(remove, [](const ChapterArguments& asked) {
        return removeChapter(asked.script, asked.chapter, asked.keepText);
    });

    CLI::App* const move = verb("move", "move 3 1", "Moves a chapter to another place.");
    number(move, "CHAPTER", arguments->chapter, "which one");
    number(move, "PLACE", arguments->destination, "the number that it has then");
    inPlace(move);
    run(move, [](const ChapterArguments& asked) {
        return moveChapter(asked.script, asked.chapter, asked.destination);
    });

    CLI::App* const replace =
        verb("replace", "replace 2 keeper.txt", "Gives a chapter another text.");
    number(replace, "CHAPTER", arguments->chapter, "which one");
    replace->add_option("TEXT", arguments->text, "a file with its text; - is standard input")
        ->required();
    inPlace(replace);
    run(replace, [](const ChapterArguments& asked) {
        return replaceChapter(asked.script, asked.chapter, *asked.text);
    });

    CLI::App* const excerpt =
        verb("excerpt", "excerpt 2", "Cuts a chapter out, to be prompted by itself.");
    number(excerpt, "CHAPTER", arguments->chapter, "which one");
    run(excerpt, [](const ChapterArguments& asked) {
        return excerptChapter(asked.script.file, asked.chapter);
    });

    command.callback([&command, arguments] {
        if (command.get_subcommands().empty())
            listChapters(arguments->script.file, arguments->json);
    });
}

}  // namespace Varnelle
