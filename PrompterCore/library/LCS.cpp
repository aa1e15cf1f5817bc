#include "PrompterCore/library/LCS.h"

#include <algorithm>
#include <memory>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore::LCS {

namespace {

// Row i, column j: the length of the longest common subsequence of what follows i and j.
class Table {
public:
    Table(std::span<const std::int64_t> before, std::span<const std::int64_t> after)
        : width_(after.size() + 1),
          // Every cell is written below: clearing them first would write all memory twice.
          cells_(std::make_unique_for_overwrite<std::int64_t[]>(static_cast<std::size_t>(
              checkedMultiply(checkedAdd(signedCount(before.size()), 1),
                              checkedAdd(signedCount(after.size()), 1))))) {
        std::fill_n(row(before.size()), width_, std::int64_t{0});
        for (std::size_t i = before.size(); i-- > 0;) {
            fill(row(i), row(i + 1), before[i], after);
        }
    }

    [[nodiscard]] const std::int64_t* row(std::size_t i) const { return &cells_[i * width_]; }

private:
    std::int64_t* row(std::size_t i) { return &cells_[i * width_]; }

    // The cell to the right never exceeds the diagonal's by more than one, so that an equal pair
    // can take the larger of both as well: what is left to wait for is one comparison a cell.
    static void fill(std::int64_t* cells, const std::int64_t* below, std::int64_t element,
                     std::span<const std::int64_t> after) {
        std::int64_t right = 0;
        cells[after.size()] = right;
        for (std::size_t j = after.size(); j-- > 0;) {
            const std::int64_t own = element == after[j] ? below[j + 1] + 1 : below[j];
            right = std::max(own, right);
            cells[j] = right;
        }
    }

    std::size_t width_;
    std::unique_ptr<std::int64_t[]> cells_;
};

}  // namespace

std::vector<DiffOperation> operations(std::span<const std::int64_t> before,
                                      std::span<const std::int64_t> after) {
    std::vector<DiffOperation> result;
    result.reserve(before.size() + after.size());
    std::size_t i = 0;
    std::size_t j = 0;
    if (!before.empty() && !after.empty()) {
        const Table table(before, after);
        while (i < before.size() && j < after.size()) {
            if (before[i] == after[j]) {
                result.push_back(DiffOperation::equal);
                ++i;
                ++j;
            } else if (table.row(i + 1)[j] < table.row(i)[j + 1]) {
                result.push_back(DiffOperation::insert);
                ++j;
            } else {
                result.push_back(DiffOperation::delete_);
                ++i;
            }
        }
    }
    result.insert(result.end(), before.size() - i, DiffOperation::delete_);
    result.insert(result.end(), after.size() - j, DiffOperation::insert);
    return result;
}

}  // namespace PrompterCore::LCS
