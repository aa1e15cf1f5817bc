// Breaking English into lines of 60 columns: ours, a plain breaker that builds every candidate
// again, and two programs that do the like. The measure costs next to nothing here, so that what is
// timed is the breaking; building the script is not timed.
//
// The programs run in a process of their own. Their Time is the processor's, start-up and reading
// the file included (StartUpAlone is what to take off); ours to compare it with is the CPU column.
// fold breaks greedily as we do and gives the same lines. fmt looks ahead for an even margin, so
// its lines differ and only its time is given.

#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

#include "PrompterCore/prompter/LineBreaker.h"
#include "benchmarks/support/OtherProgram.h"
#include "tests/reference/PlainLineBreaker.h"

namespace PrompterCore {
namespace {

using Benchmarks::ScratchFile;
using Benchmarks::secondsOf;

constexpr int columns = 60;

// A blank behind every paragraph: fold counts the one behind a word among the columns, so all words
// have one and its width is a column more.
const std::string_view paragraphs =
    "Good evening, and thank you for coming out on such a cold night. When my brother and I bought "
    "the old ferry in 2009, everybody said it couldn't be done; the engine hadn't turned in eleven "
    "years, and there were 340 rivets missing from the hull. \n"
    "\n"
    "We're not engineers. We'd never welded anything, let alone a ship! But we had time, a "
    "borrowed crane and about $1,500 between us. \n"
    "So we began with what we knew: lists. \n"
    "\n";

std::string english(std::int64_t bytes) {
    std::string text;
    while (static_cast<std::int64_t>(text.size()) < bytes)
        text += paragraphs;
    return text;
}

double asciiColumnsOf(std::string_view text) { return static_cast<double>(text.size()); }

std::vector<PromptLine> ourLines(const Script& script) {
    return LineBreaker{.width = columns, .measure = asciiColumnsOf}.linesFor(script);
}

std::vector<std::string> foldCommand(const ScratchFile& file) {
    return {"fold", "-s", "-w", std::to_string(columns + 1), file.path()};
}

void sizes(benchmark::internal::Benchmark* bench) {
    bench->Arg(20'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
}

void finish(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
}

template <class LinesFor>
void breakLines(benchmark::State& state, LinesFor linesFor) {
    const std::string text = english(state.range(0));
    const Script script{Text(text)};
    if (ourLines(script) != Plain::linesFor(script, columns, asciiColumnsOf)) {
        state.SkipWithError("the two break different lines");
        return;
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(linesFor(script));
    finish(state, text.size());
}

void ours(benchmark::State& state) { breakLines(state, ourLines); }

void plain(benchmark::State& state) {
    breakLines(state, [](const Script& script) {
        return Plain::linesFor(script, columns, asciiColumnsOf);
    });
}

// The same lines, but for the blank that fold leaves behind each and blank lines at the end.
bool foldGivesOurLines(const std::string& text, const ScratchFile& file) {
    const ScratchFile output("");
    if (!secondsOf(foldCommand(file), output.path())) return false;
    std::ifstream folded(output.path());
    for (const PromptLine& line : ourLines(Script(Text(text)))) {
        std::string other;
        if (!std::getline(folded, other)) return false;
        if (!other.empty() && other.back() == ' ') other.pop_back();
        if (other != line.text.utf8()) return false;
    }
    for (std::string other; std::getline(folded, other);)
        if (!other.empty()) return false;
    return true;
}

void timeProgram(benchmark::State& state, const std::vector<std::string>& command,
                 std::size_t bytes) {
    for (auto _ : state) {
        const auto seconds = secondsOf(command, "/dev/null");
        if (!seconds) {
            state.SkipWithError("the program did not run");
            return;
        }
        state.SetIterationTime(*seconds);
    }
    if (bytes > 0) finish(state, bytes);
}

void fold(benchmark::State& state) {
    const std::string text = english(state.range(0));
    const ScratchFile file(text);
    if (!foldGivesOurLines(text, file)) {
        state.SkipWithError("fold gives other lines");
        return;
    }
    timeProgram(state, foldCommand(file), text.size());
}

void fmt(benchmark::State& state) {
    const std::string text = english(state.range(0));
    const ScratchFile file(text);
    timeProgram(state, {"fmt", "-w", std::to_string(columns), file.path()}, text.size());
}

void startUpAlone(benchmark::State& state) { timeProgram(state, {"true"}, 0); }

BENCHMARK(ours)->Name("LineBreaking/Ours")->Apply(sizes);
BENCHMARK(plain)->Name("LineBreaking/Plain")->Apply(sizes);
BENCHMARK(fold)->Name("LineBreaking/FoldProcess")->Apply(sizes)->UseManualTime();
BENCHMARK(fmt)->Name("LineBreaking/FmtProcess")->Apply(sizes)->UseManualTime();
BENCHMARK(startUpAlone)
    ->Name("LineBreaking/StartUpAlone")
    ->Unit(benchmark::kMicrosecond)
    ->UseManualTime();

}  // namespace
}  // namespace PrompterCore
