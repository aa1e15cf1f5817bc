#pragma once

// What the stand-in for CoreFoundation answers with.
//
//   StandIn::System system{.dictionary = {{"Key", "text"}}};
//   StandIn::run(system, [] { ... });   // our sources for macOS see `system` in there

#include <functional>
#include <map>
#include <string>

#include "tests/platform/macos/Objects.h"

namespace StandIn {

struct System {
    bool hasBundle = true;
    std::map<std::string, Value> dictionary = {};  ///< the main bundle's
    std::map<std::string, Value> capacities = {};  ///< by path; no other path exists
};

/// Calls `act` with `system` in place. Returns how many objects were made and not released.
int run(const System& system, const std::function<void()>& act);

}  // namespace StandIn
