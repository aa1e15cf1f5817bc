// A large library sorted and searched, beside the plain way: both names folded in every comparison.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "PrompterCore/library/LibraryOrder.h"
#include "PrompterCore/library/LibraryTree.h"
#include "PrompterCore/text/Folding.h"

namespace PrompterCore {
namespace {

constexpr std::int64_t itemCount = 100'000;

// Names as people give them, in no order; one in eight with accents.
std::vector<ScriptItem> items() {
    std::vector<ScriptItem> result;
    std::uint64_t state = 42;
    for (std::int64_t i = 0; i < itemCount; ++i) {
        state = state * 6364136223846793005U + 1442695040888963407U;
        const std::string number = std::to_string(state >> 40);
        const std::string name =
            i % 8 == 0 ? "R\u00E9union d'\u00E9quipe " + number : "Weekly Talk " + number;
        result.push_back({Text(name + "/" + std::to_string(i)),
                          Text(name),
                          i % 20 == 0 ? ScriptItem::Kind::folder : ScriptItem::Kind::script,
                          {}});
    }
    return result;
}

std::vector<ScriptItem> plainlySorted(std::vector<ScriptItem> list) {
    std::stable_sort(list.begin(), list.end(), [](const ScriptItem& a, const ScriptItem& b) {
        if (a.isFolder() != b.isFolder()) return a.isFolder();
        const Text left = caseFolded(a.name);
        const Text right = caseFolded(b.name);
        return left != right ? left < right : a.id < b.id;
    });
    return list;
}

bool plainlyContains(const Text& name, const Text& query) {
    return caseFolded(name).composed().utf8().find(caseFolded(query).composed().utf8()) !=
           std::string::npos;
}

void sorting(benchmark::State& state) {
    const std::vector<ScriptItem> list = items();
    if (LibraryOrder::sorted(list) != plainlySorted(list)) state.SkipWithError("another order");
    for (auto _ : state) {
        benchmark::DoNotOptimize(LibraryOrder::sorted(list));
    }
}

void sortingPlainly(benchmark::State& state) {
    const std::vector<ScriptItem> list = items();
    for (auto _ : state) {
        benchmark::DoNotOptimize(plainlySorted(list));
    }
}

void searching(benchmark::State& state) {
    const std::vector<ScriptItem> list = items();
    for (auto _ : state) {
        benchmark::DoNotOptimize(LibraryTree::filtered(list, "TALK 123", Locale::fixed()));
    }
}

void searchingPlainly(benchmark::State& state) {
    const std::vector<ScriptItem> list = items();
    const auto search = [&] {
        std::vector<ScriptItem> kept;
        std::ranges::copy_if(list, std::back_inserter(kept), [](const ScriptItem& item) {
            return plainlyContains(item.name, "TALK 123");
        });
        return kept;
    };
    if (search() != LibraryTree::filtered(list, "TALK 123", Locale::fixed()))
        state.SkipWithError("another result");
    for (auto _ : state) {
        benchmark::DoNotOptimize(search());
    }
}

BENCHMARK(sorting)->Name("sorted, 100000 items")->Unit(benchmark::kMillisecond);
BENCHMARK(sortingPlainly)
    ->Name("sorted, both names folded each time")
    ->Unit(benchmark::kMillisecond);
BENCHMARK(searching)->Name("filtered, 100000 items")->Unit(benchmark::kMillisecond);
BENCHMARK(searchingPlainly)
    ->Name("filtered, both texts folded each time")
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace PrompterCore
