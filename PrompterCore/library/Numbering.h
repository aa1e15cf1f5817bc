#pragma once

// Numbers in place of values: equal elements get the same one, so that what is compared often is
// compared cheaply.
//
//   Numbering<Text> numbering;
//   numbering.numbersOf(lines);      // {0, 1, 0} for "a", "b", "a"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory_resource>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

/// Counts up from 0 with each element that equals none before. Finds equal ones through their hash
/// where they have one, and otherwise by comparing with each different element so far. Refers to
/// the elements that it was given, which must outlive it.
template <class Element>
class Numbering {
public:
    /// O(n) with a hash, O(n d) with d different elements without.
    [[nodiscard]] std::vector<std::int64_t> numbersOf(const std::vector<Element>& elements) {
        std::vector<std::int64_t> result;
        result.reserve(elements.size());
        for (const Element& element : elements) {
            result.push_back(numberOf(element));
        }
        return result;
    }

private:
    static constexpr bool isHashable = requires(const Element& element) {
        std::hash<Element>{}(element);
    };

    struct Hash {
        std::size_t operator()(const Element* element) const {
            return std::hash<Element>{}(*element);
        }
    };
    struct Equal {
        bool operator()(const Element* a, const Element* b) const { return *a == *b; }
    };

    std::int64_t numberOf(const Element& element) {
        const std::int64_t next = signedCount(known_.size());
        if constexpr (isHashable) {
            return known_.try_emplace(&element, next).first->second;
        } else {
            for (std::size_t i = 0; i < known_.size(); ++i) {
                if (*known_[i] == element) return signedCount(i);
            }
            known_.push_back(&element);
            return next;
        }
    }

    // Nothing is forgotten before the end, so what is known needs no memory of its own, one by one.
    std::pmr::monotonic_buffer_resource memory_;
    std::conditional_t<isHashable,
                       std::pmr::unordered_map<const Element*, std::int64_t, Hash, Equal>,
                       std::pmr::vector<const Element*>>
        known_{&memory_};
};

}  // namespace PrompterCore
