#include "PrompterCore/audio/ClapCommand.h"

namespace PrompterCore {

std::optional<ClapCommand> clapCommandFor(std::int64_t claps, bool recording) noexcept {
    if (claps != 2) return std::nullopt;
    return recording ? ClapCommand::stop : ClapCommand::start;
}

}  // namespace PrompterCore
