// Comparing two versions of a script beside: writing the table's memory once, which no comparison
// that keeps the table can undercut; the same table filled by comparing texts; and the programs
// that compare files (their time is that of a whole process). All in one run, so that ratios hold.

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "PrompterCore/library/LineDiff.h"
#include "benchmarks/support/OtherProgram.h"
#include "tests/reference/PlainLCS.h"

namespace PrompterCore {
namespace {

struct Versions {
    Text before;
    Text after;
};

// Lines as scripts have them, every tenth one edited in the new version.
Versions versions(std::int64_t lines) {
    std::string before;
    std::string after;
    for (std::int64_t i = 0; i < lines; ++i) {
        const std::string line =
            "Line " + std::to_string(i) + " of a script that a presenter reads to an audience";
        before += line + "\n";
        after += i % 10 == 4 ? "A new " + line + "\n" : line + "\n";
    }
    return {Text(before), Text(after)};
}

std::vector<Text> linesOf(const Text& text) {
    std::vector<Text> lines;
    std::size_t start = 0;
    while (start <= text.utf8().size()) {
        const std::size_t end = std::min(text.utf8().find('\n', start), text.utf8().size());
        lines.emplace_back(text.utf8().substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

void checkAnswer(benchmark::State& state, const Versions& texts) {
    const DiffSummary summary = LineDiff::summary(LineDiff::between(texts.before, texts.after));
    if (summary != DiffSummary{state.range(0) / 10, state.range(0) / 10})
        state.SkipWithError("the comparison is wrong");
}

void ours(benchmark::State& state) {
    const Versions texts = versions(state.range(0));
    checkAnswer(state, texts);
    for (auto _ : state) {
        benchmark::DoNotOptimize(LineDiff::between(texts.before, texts.after));
    }
}

void tableWrittenOnce(benchmark::State& state) {
    const auto cells = static_cast<std::size_t>((state.range(0) + 2) * (state.range(0) + 2));
    for (auto _ : state) {
        const auto table = std::make_unique_for_overwrite<std::int64_t[]>(cells);
        std::fill_n(table.get(), cells, std::int64_t{1});
        benchmark::DoNotOptimize(table.get());
        benchmark::ClobberMemory();
    }
}

void plainTableOfTexts(benchmark::State& state) {
    const Versions texts = versions(state.range(0));
    const std::vector<Text> before = linesOf(texts.before);
    const std::vector<Text> after = linesOf(texts.after);
    if (Reference::tabledDiff(before, after) != LCS::diff(before, after))
        state.SkipWithError("the plain table differs");
    for (auto _ : state) {
        benchmark::DoNotOptimize(Reference::tabledDiff(before, after));
    }
}

// The processor's time, start-up included. Programs that compare say "different" by their status.
void program(benchmark::State& state, const std::string& command) {
    const Versions texts = versions(state.range(0));
    const Benchmarks::ScratchFile before(texts.before.utf8());
    const Benchmarks::ScratchFile after(texts.after.utf8());
    const std::string compare =
        command + " " + before.path() + " " + after.path() + "; test $? -le 1";
    for (auto _ : state) {
        const auto seconds = Benchmarks::secondsOf({"sh", "-c", compare}, "/dev/null");
        if (!seconds) {
            state.SkipWithError("the program cannot be run");
            return;
        }
        state.SetIterationTime(*seconds);
    }
}

const std::string difflib =
    "python3 -c 'import difflib,sys;a,b=[open(f).readlines() for f in sys.argv[1:]];"
    "sys.stdout.writelines(difflib.unified_diff(a,b))'";

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(1000)->Arg(3000)->Arg(5000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(ours)->Name("LineDiff::between")->Apply(sizes);
BENCHMARK(tableWrittenOnce)->Name("table written once")->Apply(sizes);
BENCHMARK(plainTableOfTexts)->Name("plain table of texts")->Apply(sizes);
BENCHMARK_CAPTURE(program, gnu, "diff")->Name("GNU diff, a process")->Apply(sizes)->UseManualTime();
BENCHMARK_CAPTURE(program, git, "git diff --no-index")
    ->Name("git diff, a process")
    ->Apply(sizes)
    ->UseManualTime();
BENCHMARK_CAPTURE(program, python, difflib)
    ->Name("Python difflib, a process")
    ->Apply(sizes)
    ->UseManualTime();

}  // namespace
}  // namespace PrompterCore
