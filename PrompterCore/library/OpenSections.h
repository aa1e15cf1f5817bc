#pragma once

// Which sections of the sidebar are open, and the one line in which a host remembers that.
//
//   OpenSections sections = OpenSections::fromStored("b,,a,", {});
//   sections.toggle("b");
//   sections.stored();      // "a"

#include <optional>
#include <set>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A set of ids that a host may edit. Ids hold no comma: it separates them when they are stored.
struct OpenSections {
    std::set<Text> ids;  ///< of the sections that are open

    /// What was stored, split at the commas, the pieces as they are and empty ones left out;
    /// `defaults` when nothing has been stored yet. An empty text means that all are closed.
    [[nodiscard]] static OpenSections fromStored(const std::optional<Text>& stored,
                                                 std::set<Text> defaults);

    /// Whether `id` is open.
    [[nodiscard]] bool contains(const Text& id) const { return ids.contains(id); }
    /// Opens what is closed and closes what is open.
    void toggle(const Text& id);
    /// The ids in order, by code points, with commas between them: the same for equal sets.
    [[nodiscard]] Text stored() const;

    friend bool operator==(const OpenSections&, const OpenSections&) = default;
};

}  // namespace PrompterCore
