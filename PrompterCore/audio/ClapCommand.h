#pragma once

// What two claps tell the take controller.
//
//   const bool recording = true;
//   clapCommandFor(2, recording);   // ClapCommand::stop
//   clapCommandFor(3, recording);   // absent: applause is no command

#include <cstdint>
#include <optional>
#include <string_view>

#include "PrompterCore/support/Enumeration.h"

namespace PrompterCore {

/// What a gesture asks of the take.
enum class ClapCommand { start, stop };

template <>
struct Enumeration<ClapCommand> {
    struct Row {
        ClapCommand value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {{ClapCommand::start, "start"}, {ClapCommand::stop, "stop"}};
};

/// `stop` while a take is being recorded, `start` while none is. Absent unless there were exactly
/// two claps. Never allocates.
[[nodiscard]] std::optional<ClapCommand> clapCommandFor(std::int64_t claps,
                                                        bool recording) noexcept;

}  // namespace PrompterCore
