#pragma once

// The longest common subsequence as it is defined: by recursion over the rest of both lists, each
// pair of rests worked out again and again. For lists of a few elements.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "PrompterCore/library/LCS.h"

namespace PrompterCore::Reference {

template <class Element>
std::int64_t commonLength(const std::vector<Element>& a, std::size_t i,
                          const std::vector<Element>& b, std::size_t j) {
    if (i == a.size() || j == b.size()) return 0;
    if (a[i] == b[j]) return 1 + commonLength(a, i + 1, b, j + 1);
    return std::max(commonLength(a, i + 1, b, j), commonLength(a, i, b, j + 1));
}

/// The steps, where `length(i, j)` is the common length of what follows i and j.
template <class Element, class Length>
std::vector<LCS::Step<Element>> stepsBy(const std::vector<Element>& a,
                                        const std::vector<Element>& b, Length length) {
    std::vector<LCS::Step<Element>> steps;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        if (a[i] == b[j]) {
            steps.push_back({a[i++], DiffOperation::equal});
            j++;
        } else if (length(i + 1, j) < length(i, j + 1)) {
            steps.push_back({b[j++], DiffOperation::insert});
        } else {
            steps.push_back({a[i++], DiffOperation::delete_});
        }
    }
    while (i < a.size())
        steps.push_back({a[i++], DiffOperation::delete_});
    while (j < b.size())
        steps.push_back({b[j++], DiffOperation::insert});
    return steps;
}

template <class Element>
std::vector<LCS::Step<Element>> plainDiff(const std::vector<Element>& a,
                                          const std::vector<Element>& b) {
    return stepsBy(a, b, [&](std::size_t i, std::size_t j) { return commonLength(a, i, b, j); });
}

/// The same with a table of the lengths, cell by cell, comparing the elements themselves.
template <class Element>
std::vector<LCS::Step<Element>> tabledDiff(const std::vector<Element>& a,
                                           const std::vector<Element>& b) {
    std::vector<std::vector<std::int64_t>> lengths(a.size() + 1,
                                                   std::vector<std::int64_t>(b.size() + 1, 0));
    for (std::size_t i = a.size(); i-- > 0;)
        for (std::size_t j = b.size(); j-- > 0;)
            lengths[i][j] = a[i] == b[j] ? lengths[i + 1][j + 1] + 1
                                         : std::max(lengths[i + 1][j], lengths[i][j + 1]);
    return stepsBy(a, b, [&](std::size_t i, std::size_t j) { return lengths[i][j]; });
}

}  // namespace PrompterCore::Reference
