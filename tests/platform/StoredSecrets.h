#pragma once

// What the session's keyring holds, asked as other programs ask.

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/RunningCommand.h"

namespace PrompterCore::Tests {

/// The items of the default keyring, of whatever program.
[[nodiscard]] inline std::size_t itemsInKeyring() {
    const auto items = runCommand(
        {"gdbus", "call", "--session", "--dest", "org.freedesktop.secrets", "--object-path",
         "/org/freedesktop/secrets/aliases/default", "--method",
         "org.freedesktop.DBus.Properties.Get", "org.freedesktop.Secret.Collection", "Items"});
    EXPECT_EQ(items.status, 0) << items.error;
    std::size_t count = 0;
    for (std::size_t at = items.out.find("/collection/"); at != std::string::npos;
         at = items.out.find("/collection/", at + 1))
        ++count;
    return count;
}

/// Another program's item of the same service, told from ours by its other attributes.
class ForeignItem {
public:
    explicit ForeignItem(const std::string& service)
        : attributes_{"service", service, "user", "somebody"} {
        const auto stored = secretTool({"store", "--label=theirs"}, "theirs");
        EXPECT_EQ(stored.status, 0) << stored.error;
    }
    [[nodiscard]] std::string value() const { return secretTool({"lookup"}).out; }

private:
    CommandResult secretTool(std::vector<std::string> arguments,
                             const std::string& input = {}) const {
        arguments.insert(arguments.begin(), "secret-tool");
        arguments.insert(arguments.end(), attributes_.begin(), attributes_.end());
        return runCommand(arguments, {.input = input});
    }

    std::vector<std::string> attributes_;
};

}  // namespace PrompterCore::Tests
