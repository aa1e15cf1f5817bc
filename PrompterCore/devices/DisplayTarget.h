#pragma once

// A screen as the system reports it; picked by DisplaySelector.
//
// Units: sizes are in whatever unit the host measures its screens in.
//
//   DisplayTarget screen{.id = 2, .name = "Prompter Display", .width = 1280, .height = 800};

#include <cstdint>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// One screen, identified by its id.
struct DisplayTarget {
    std::uint32_t id = 0;        ///< the system's identifier; what a host remembers
    Text name;                   ///< as the system reports it
    double width = 0;            ///< in the host's unit
    double height = 0;           ///< in the host's unit
    bool isBuiltin = false;      ///< the computer's own screen
    std::uint32_t vendorID = 0;  ///< who made it, as the system reports it
    std::uint32_t modelID = 0;   ///< which model it is, as the system reports it

    friend bool operator==(const DisplayTarget&, const DisplayTarget&) = default;
};

}  // namespace PrompterCore
