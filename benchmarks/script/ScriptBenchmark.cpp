// Building a script, beside the plain way and beside the Unicode library's own pipeline. Each row's
// answer is checked before it is timed. Bytes per second of the text as UTF-8.
//
// Half of the time of a megabyte's script is the system's, which hands out and takes back its
// memory at every round. To see the building alone, let the program keep its memory:
//   GLIBC_TUNABLES=glibc.malloc.mmap_threshold=1073741824:glibc.malloc.trim_threshold=2000000000

#include <cstddef>
#include <string>

#include <benchmark/benchmark.h>

#include "PrompterCore/script/ChapterEdits.h"
#include "PrompterCore/script/Script.h"
#include "PrompterCore/support/Integers.h"
#include "benchmarks/script/IcuPipeline.h"
#include "benchmarks/script/Samples.h"
#include "tests/reference/PlainScript.h"

namespace PrompterCore {

namespace {

using Samples::Sample;

void count(benchmark::State& state, const std::string& text) {
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

void product(benchmark::State& state, const Sample& sample, std::size_t size) {
    const std::string text = Samples::text(sample, size);
    const std::string some = Samples::text(sample, 20'000);
    const Plain::PlainScript expected = Plain::build(Plain::Unicode(), some);
    const Script built{Text(some)};
    if (built.tokens() != expected.tokens || built.words() != expected.words ||
        built.headings() != expected.headings || built.utf16Offsets() != expected.utf16Offsets)
        return state.SkipWithError("the script differs from the plain one");
    for (auto _ : state) {
        Text given(text);
        benchmark::DoNotOptimize(Script(std::move(given)));
    }
    count(state, text);
}

void icuLibrary(benchmark::State& state, const Sample& sample, std::size_t size) {
    const std::string text = Samples::text(sample, size);
    const auto characters = static_cast<std::size_t>(Script{Text(text)}.characters().count());
    if (icuPipeline(text).boundaries.size() != characters + 1)
        return state.SkipWithError("the pipeline finds other characters");
    for (auto _ : state)
        benchmark::DoNotOptimize(icuPipeline(text));
    count(state, text);
}

void plain(benchmark::State& state, const Sample& sample, std::size_t size) {
    const std::string text = Samples::text(sample, size);
    const Plain::Unicode unicode;
    for (auto _ : state)
        benchmark::DoNotOptimize(Plain::build(unicode, text));
    count(state, text);
}

// What a host waits for when a chapter is moved: the edit, the edited text, the script anew. Beside
// it "script", the building alone.
void moveChapter(benchmark::State& state, const Sample& sample, std::size_t size) {
    const std::string half = Samples::text(sample, size / 2);
    const std::string text = "# One\n" + half + "\n# Two\n" + half;
    const Script script{Text(text)};
    const auto last = signedCount(script.headings().size()) - 1;
    const auto there = ChapterEdits::move(0, last, script);
    if (!there || Script(there->appliedTo(script.text())).headings().back().title != "One")
        return state.SkipWithError("the chapter was not moved");
    for (auto _ : state)
        benchmark::DoNotOptimize(
            Script(ChapterEdits::move(0, last, script)->appliedTo(script.text())));
    count(state, text);
}

std::string sizeName(std::size_t size) {
    return size >= 1'000'000 ? std::to_string(size / 1'000'000) + "MB"
                             : std::to_string(size / 1'000) + "kB";
}

using Run = void (*)(benchmark::State&, const Sample&, std::size_t);

void add(const char* what, Run run, const Sample& sample, std::size_t size) {
    const std::string name =
        std::string(sample.name) + "/" + sizeName(size) + "/" + std::string(what);
    benchmark::RegisterBenchmark(name.c_str(), [run, sample, size](benchmark::State& state) {
        run(state, sample, size);
    })->Unit(benchmark::kMicrosecond);
}

const bool added = [] {
    for (const Sample& sample : Samples::samples()) {
        for (const std::size_t size : {std::size_t{20'000}, std::size_t{1'000'000}}) {
            add("script", product, sample, size);
            add("icu", icuLibrary, sample, size);
            add("move", moveChapter, sample, size);
            if (size < 1'000'000) add("plain", plain, sample, size);
        }
    }
    const Sample& english = Samples::samples().front();
    add("script", product, english, 10'000'000);
    add("icu", icuLibrary, english, 10'000'000);
    return true;
}();

}  // namespace

}  // namespace PrompterCore
