#include "PrompterCore/takes/TakeBarMode.h"

namespace PrompterCore {

TakeBarMode TakeBarMode::resolve(const TakeBarInputs& inputs) noexcept {
    if (inputs.recording) return recording();
    if (inputs.countdown) return countingDown(*inputs.countdown);
    if (inputs.preparingTake || inputs.startingPractice) return preparing();
    return inputs.following ? practising() : rest();
}

}  // namespace PrompterCore
