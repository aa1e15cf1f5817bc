#include "apps/varnelle/DiffCommand.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>

#include <fmt/format.h>
#include <unistd.h>

#include "PrompterCore/library/WordDiff.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Pager.h"
#include "apps/varnelle/ShowDiff.h"
#include "host/Failures.h"
#include "host/TextFile.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT

struct Arguments {
    std::string before;
    std::string after;
    std::string colour = "auto";
    std::int64_t context = 3;
    bool all = false;
    bool words = false;
    bool json = false;
};

constexpr ExitStatus same{0};
constexpr ExitStatus different{1};
constexpr ExitStatus trouble{2};

bool showsColours(const Arguments& arguments) {
    if (arguments.colour != "auto") return arguments.colour == "always";
    return isTerminal() && wantsColour();
}

// The comparison keeps a table of all pairs of lines. One that the machine has no memory for would
// bring the machine down before it failed.
void refuseTooMuch(const Text& before, const Text& after) {
    const auto lines = [](const Text& text) {
        return 2.0 + static_cast<double>(std::count(text.utf8().begin(), text.utf8().end(), '\n'));
    };
    const double needed = lines(before) * lines(after) * sizeof(std::int64_t);
    const double memory =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    if (needed > memory / 2)
        throw BadData(fmt::format("comparing these takes {:.0f} GB of memory, more than there is",
                                  needed / 1e9));
}

DiffStyle style(const Arguments& arguments, bool colours) {
    return {.marks = colours ? DiffMarks::colours : DiffMarks::brackets,
            .context = arguments.all ? std::nullopt : std::optional(arguments.context)};
}

ExitStatus compareWords(const Text& before, const Text& after, const Arguments& arguments) {
    const auto segments = WordDiff::between(before, after);
    const bool differ = std::ranges::any_of(segments, [](const DiffSegment& segment) {
        return segment.operation != DiffOperation::equal;
    });
    try {
        const bool colours = showsColours(arguments);
        Output output;
        if (arguments.json) {
            writeWordDiffJson(segments, output);
        } else {
            Pager pager;
            showWordDiff(segments, style(arguments, colours), output);
        }
    } catch (const OutputClosed&) {
        // Whoever has seen enough is still told by the status.
    }
    return differ ? different : same;
}

ExitStatus compareLines(const Text& before, const Text& after, const Arguments& arguments) {
    refuseTooMuch(before, after);
    const auto lines = LineDiff::between(before, after);
    const bool differ = std::ranges::any_of(
        lines, [](const DiffLine& line) { return line.change != LineChange::context; });
    try {
        const bool colours = showsColours(arguments);
        Output output;
        if (arguments.json) {
            writeLineDiffJson(lines, output);
        } else {
            Pager pager;
            showLineDiff(lines, style(arguments, colours), output);
        }
    } catch (const OutputClosed&) {
    }
    return differ ? different : same;
}

// Whatever fails is trouble here: the other statuses say how the versions compare.
ExitStatus compare(const Arguments& arguments) {
    try {
        const Text before = readText(arguments.before);
        const Text after = readText(arguments.after);
        return arguments.words ? compareWords(before, after, arguments)
                               : compareLines(before, after, arguments);
    } catch (const std::bad_alloc&) {
        complain("comparing these takes more memory than there is");
    } catch (const std::exception& failure) {
        complain(failure.what());
    }
    return trouble;
}

}  // namespace

void addDiffCommand(CLI::App& app, ExitStatus& exit) {
    const auto arguments = std::make_shared<Arguments>();
    CLI::App& command = *app.add_subcommand(
        "diff",
        "Examples:\n"
        "  varnelle diff old.txt new.txt\n"
        "  varnelle diff --words old.txt new.txt\n"
        "  git show HEAD:talk.txt | varnelle diff - talk.txt\n\n"
        "Shows how two versions of a script differ, line by line, with the words that changed\n"
        "in an edited line.");
    command.footer("Exit status: 0 the same, 1 different, 2 trouble.");
    command.add_option("OLD", arguments->before, "the old version; - is standard input")
        ->required();
    command.add_option("NEW", arguments->after, "the new version; - is standard input")->required();
    command.add_flag("--words", arguments->words, "word by word, without regard to lines");
    auto* const context =
        command.add_option("--context", arguments->context, "unchanged lines shown around changes")
            ->check(CLI::Range(std::int64_t{0}, std::int64_t{1'000'000'000}))
            ->capture_default_str();
    command.add_flag("--all", arguments->all, "all unchanged lines")->excludes(context);
    command.add_flag("--json", arguments->json, "as JSON");
    command.add_option("--colour", arguments->colour, "auto, always or never")
        ->check(CLI::IsMember({"auto", "always", "never"}))
        ->capture_default_str();
    command.callback([arguments, &exit] {
        if (arguments->before == "-" && arguments->after == "-")
            throw CLI::ValidationError("diff", "only one version can come from standard input");
        exit = compare(*arguments);
    });
}

}  // namespace Varnelle
