#include "apps/varnelle/DiffCommand.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>

#include <fmt/format.h>
#include <unistd.h>

#include "PrompterCore/library/WordDiff.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Utf8.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Pager.h"
#include "apps/varnelle/ShowDiff.h"
#include "apps/varnelle/TerminalColours.h"
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
    return isTerminal() && terminalColours() != TerminalColours::none;
}

double linesIn(std::string_view text) {
    return 1 + static_cast<double>(std::count(text.begin(), text.end(), '\n'));
}

// A few too many where a mark stands on a blank.
double wordsIn(std::string_view text) {
    double words = 0;
    bool inWord = false;
    for (std::size_t at = 0; at < text.size();) {
        const bool wasInWord = inWord;
        inWord = !CharacterClasses::isWhiteSpace(Utf8::next(text, at));
        if (inWord && !wasInWord) ++words;
    }
    return words;
}

double mostWordsInALine(std::string_view text) {
    double most = 0;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        most = std::max(most, wordsIn(text.substr(start, end - start)));
        start = end + 1;
    }
    return most;
}

// Empty without any.
std::string_view lineBreaksIn(std::string_view text) {
    std::size_t all = 0, ofTwo = 0;  // CR LF
    for (std::size_t at = text.find('\n'); at != std::string_view::npos;
         at = text.find('\n', at + 1)) {
        ++all;
        if (at > 0 && text[at - 1] == '\r') ++ofTwo;
    }
    if (all == 0) return "";
    return ofTwo == 0 ? "LF" : ofTwo == all ? "CR LF" : "mixed";
}

// Empty when they did not change: then every line that differs shows why.
std::string lineBreaksChanged(std::string_view before, std::string_view after) {
    const std::string_view were = lineBreaksIn(before), are = lineBreaksIn(after);
    if (were == are || were.empty() || are.empty()) return "";
    return fmt::format("line breaks were {} and are {}", were, are);
}

// A comparison keeps a table of all pairs of its parts. One that the machine has no memory for
// would bring the machine down before it failed.
void refuseTooMuch(double before, double after) {
    const double needed = (1 + before) * (1 + after) * sizeof(std::int64_t);
    const double memory =
        static_cast<double>(sysconf(_SC_PHYS_PAGES)) * static_cast<double>(sysconf(_SC_PAGESIZE));
    if (needed > memory / 2)
        throw BadData(fmt::format("comparing these takes {:.0f} GB of memory, more than there is",
                                  needed / 1e9));
}

DiffStyle styleOf(const Arguments& arguments) {
    return {.marks = showsColours(arguments) ? DiffMarks::colours : DiffMarks::brackets,
            .context = arguments.all ? std::nullopt : std::optional(arguments.context)};
}

ExitStatus compareWords(const Text& before, const Text& after, const Arguments& arguments) {
    refuseTooMuch(wordsIn(before.utf8()), wordsIn(after.utf8()));
    const auto segments = WordDiff::between(before, after);
    const bool differ = std::ranges::any_of(segments, [](const DiffSegment& segment) {
        return segment.operation != DiffOperation::equal;
    });
    try {
        if (arguments.json) {
            Output output;
            writeWordDiffJson(segments, output);
        } else {
            showPaged(wordDiffAsShown(segments, styleOf(arguments)));
        }
    } catch (const OutputClosed&) {
        // Whoever has seen enough is still told by the status.
    }
    return differ ? different : same;
}

ExitStatus compareLines(const Text& before, const Text& after, const Arguments& arguments) {
    refuseTooMuch(linesIn(before.utf8()), linesIn(after.utf8()));
    refuseTooMuch(mostWordsInALine(before.utf8()), mostWordsInALine(after.utf8()));
    const auto lines = LineDiff::between(before, after);
    const bool differ = std::ranges::any_of(
        lines, [](const DiffLine& line) { return line.change != LineChange::context; });
    try {
        DiffStyle style = styleOf(arguments);
        style.note = lineBreaksChanged(before.utf8(), after.utf8());
        if (arguments.json) {
            Output output;
            writeLineDiffJson(lines, output);
        } else {
            showPaged(lineDiffAsShown(lines, style));
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
    auto* const words =
        command.add_flag("--words", arguments->words, "word by word, without regard to lines");
    auto* const context =
        command.add_option("--context", arguments->context, "unchanged lines shown around changes")
            ->check(numberBetween<std::int64_t>(0, 1'000'000'000))
            ->excludes(words)
            ->capture_default_str();
    command.add_flag("--all", arguments->all, "all unchanged lines")
        ->excludes(context)
        ->excludes(words);
    command.add_flag("--json", arguments->json, "as JSON, with all unchanged lines");
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
