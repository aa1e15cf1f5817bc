#pragma once

// A folder that lives, with all that is in it, as long as the test that needs it.

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Varnelle::Tests {

class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = ::testing::TempDir() + "varnelleXXXXXX";
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }

    const std::filesystem::path& path() const { return path_; }
    /// The names of what is in it, in order.
    std::vector<std::string> names() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_)) {
            names.push_back(entry.path().filename().string());
        }
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path path_;
};

}  // namespace Varnelle::Tests
