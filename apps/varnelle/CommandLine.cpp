#include "apps/varnelle/CommandLine.h"

#include <cstdlib>

namespace Varnelle {

bool wantsColour() {
    const char* const refused = std::getenv("NO_COLOR");
    return refused == nullptr || *refused == '\0';
}

}  // namespace Varnelle
