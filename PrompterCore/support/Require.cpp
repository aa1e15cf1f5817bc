#include "PrompterCore/support/Require.h"

#include <cstdio>
#include <cstdlib>

namespace PrompterCore {

void preconditionBroken(const char* rule, const char* file, int line) noexcept {
    std::fprintf(stderr, "%s:%d: precondition broken: %s\n", file, line, rule);
    std::abort();
}

}  // namespace PrompterCore
