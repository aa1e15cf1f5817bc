#pragma once

// What became of a piece of text between two versions. Shared by the comparison of lines and the
// comparison of words, each of which uses the other.

#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// Which versions a piece of text is in.
enum class DiffOperation {
    equal,    ///< in both versions
    insert,   ///< only in the new one
    delete_,  ///< only in the old one
};

template <>
struct Enumeration<DiffOperation> {
    struct Row {
        DiffOperation value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {{DiffOperation::equal, "equal"},
                                   {DiffOperation::insert, "insert"},
                                   {DiffOperation::delete_, "delete"}};
};

/// A stretch of words, or of a line, that is shown in one way.
struct DiffSegment {
    Text text;                                       ///< as it is shown
    DiffOperation operation = DiffOperation::equal;  ///< how it is highlighted

    friend bool operator==(const DiffSegment&, const DiffSegment&) = default;
};

}  // namespace PrompterCore
