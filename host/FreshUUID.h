#pragma once

// New identifiers, out of the system's source of randomness: the library has none.
//
//   const PrompterCore::UUID id = freshUUID();

#include "PrompterCore/colour/UUID.h"

namespace Varnelle {

/// An identifier that nobody else has. Throws Unavailable when the system gives no randomness.
[[nodiscard]] PrompterCore::UUID freshUUID();

}  // namespace Varnelle
