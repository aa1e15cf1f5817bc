#include "apps/varnelle/CommandLine.h"

#include <cstdlib>

namespace Varnelle {

bool wantsColour() {
    const char* const refused = std::getenv("NO_COLOR");
    return refused == nullptr || *refused == '\0';
}

void refuseOptionsBefore(const CLI::App& subcommand) {
    for (const CLI::Option* const option : subcommand.get_parent()->get_options()) {
        if (option->nonpositional() && option->count() > 0)
            throw CLI::ValidationError(
                option->get_name(),
                "is not for " + subcommand.get_name() + "; the options of that stand behind it");
    }
}

}  // namespace Varnelle
