#pragma once

// How many words (or other things) must be changed, added or left out to make one list the other.

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <vector>

namespace Varnelle::Tests {

template <class T>
std::size_t editDistance(const std::vector<T>& a, const std::vector<T>& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i + 1;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t changed = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({row[j] + 1, row[j + 1] + 1, changed});
        }
    }
    return row.back();
}

}  // namespace Varnelle::Tests
