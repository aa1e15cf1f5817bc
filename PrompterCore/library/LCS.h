#pragma once

// The longest common subsequence of two lists, as the steps that lead from the old to the new one.
//
//   LCS::diff<Text>({"a", "b"}, {"b", "a"});   // delete "a", equal "b", insert "a"
//
// The whole table of common lengths is kept, in 64-bit counts, for the time of one call: 8 bytes
// for every pair of elements. That and the rule for ties (a deletion comes before an insertion)
// make the result exact; a cleverer search, or cutting what both lists end with, would choose other
// steps.

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "PrompterCore/library/DiffOperation.h"
#include "PrompterCore/library/Numbering.h"

namespace PrompterCore::LCS {

/// One step: what happens to one element.
template <class Element>
struct Step {
    Element element;                                 ///< for `equal`, the old list's
    DiffOperation operation = DiffOperation::equal;  ///< which lists it is in

    friend bool operator==(const Step&, const Step&) = default;
};

/// The operations between two lists of numbers, in order. O(n m) in time and memory; stops the
/// program unless the table's size fits 64 bits.
[[nodiscard]] std::vector<DiffOperation> operations(std::span<const std::int64_t> before,
                                                    std::span<const std::int64_t> after);

/// The steps from `before` to `after`. Those that are `equal` or `delete_` read back to `before`,
/// those that are `equal` or `insert` to `after`. Each element is compared as often as giving equal
/// ones a number takes; the table compares the numbers. O(n m) in time and memory.
template <std::equality_comparable Element>
requires(!std::same_as<Element, bool>)  // a list of those has no elements to refer to
    [[nodiscard]] std::vector<Step<Element>> diff(const std::vector<Element>& before,
                                                  const std::vector<Element>& after) {
    Numbering<Element> numbering;
    const std::vector<std::int64_t> beforeNumbers = numbering.numbersOf(before);
    const std::vector<std::int64_t> afterNumbers = numbering.numbersOf(after);
    const std::vector<DiffOperation> operationsInOrder = operations(beforeNumbers, afterNumbers);
    std::vector<Step<Element>> steps;
    steps.reserve(operationsInOrder.size());
    std::size_t i = 0;
    std::size_t j = 0;
    for (const DiffOperation operation : operationsInOrder) {
        const bool isNew = operation == DiffOperation::insert;
        steps.push_back({isNew ? after[j] : before[i], operation});
        if (operation != DiffOperation::insert) i++;
        if (operation != DiffOperation::delete_) j++;
    }
    return steps;
}

}  // namespace PrompterCore::LCS
