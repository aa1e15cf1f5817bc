#pragma once

// A file that lives as long as the test that needs it.

#include <cstdlib>
#include <string>
#include <string_view>

#include <gtest/gtest.h>
#include <unistd.h>

namespace Varnelle::Tests {

class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view bytes)
        : name_(::testing::TempDir() + "varnelleXXXXXX") {
        const int descriptor = mkstemp(name_.data());
        const ssize_t written = write(descriptor, bytes.data(), bytes.size());
        EXPECT_EQ(written, static_cast<ssize_t>(bytes.size()));
        close(descriptor);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { unlink(name_.c_str()); }

    const std::string& name() const { return name_; }

private:
    std::string name_;
};

}  // namespace Varnelle::Tests
