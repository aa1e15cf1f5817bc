#pragma once

// Keeps the marker beside the eye line visible on any background.
//
//   const RGBA white(1, 1, 1, 1), paleYellow(1, 1, 0.6, 1);
//   EyeLineColour::automatic(white, paleYellow);   // opaque black: pale yellow is lost on white

#include "PrompterCore/colour/RGBA.h"

namespace PrompterCore::EyeLineColour {

/// `current`, its alpha included, when its contrast to `background` is at least 3; otherwise opaque
/// white or opaque black, whichever contrasts more; black where both do alike.
[[nodiscard]] RGBA automatic(const RGBA& background, const RGBA& current) noexcept;

}  // namespace PrompterCore::EyeLineColour
