#pragma once

// Laws, checked on generated values inside an ordinary GoogleTest.
//
//   TEST(Text, ComposedIsItsOwnComposedForm) {
//       Tests::forAll([](const Text& text) {
//           RC_ASSERT(text.composed().composed().utf8() == text.composed().utf8());
//       });
//   }
//
// A law's arguments come from Generators.h or RapidCheck's own; inside, use RC_ASSERT and *gen.
// The seed is fixed. A failure prints it with the shrunk example; other seeds, or more cases, are
// tried through the environment: RC_PARAMS="seed=7 max_success=10000".

#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "tests/support/Printing.h"

namespace PrompterCore::Tests {

inline constexpr std::uint64_t fixedSeed = 20260101;

/// What a law runs with: `RC_PARAMS` over the fixed seed and `cases` values.
inline rc::detail::Configuration lawConfiguration(int cases) {
    rc::detail::Configuration fixed;
    fixed.testParams.seed = fixedSeed;
    fixed.testParams.maxSuccess = cases;
    const char* chosen = std::getenv("RC_PARAMS");
    return rc::detail::configFromString(chosen != nullptr ? chosen : "", fixed);
}

/// RapidCheck's own listener prints at the end of the program; a failure here says all by itself.
class SilentListener final : public rc::detail::TestListener {
public:
    void onTestCaseFinished(const rc::detail::CaseDescription&) override {}
    void onShrinkTried(const rc::detail::CaseDescription&, bool) override {}
    void onTestFinished(const rc::detail::TestMetadata&, const rc::detail::TestResult&) override {}
};

/// Fails the current test unless `law` holds for `cases` generated values of its arguments.
template <class Law>
void forAll(Law&& law, int cases = 200) {
    const auto configuration = lawConfiguration(cases);
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    const rc::detail::TestMetadata metadata{
        std::string(test->test_suite_name()) + "." + test->name(), test->name()};
    SilentListener listener;
    const auto result =
        rc::detail::checkTestable(std::forward<Law>(law), metadata, configuration.testParams,
                                  listener, configuration.reproduce);
    if (result.template is<rc::detail::SuccessResult>()) return;
    std::ostringstream message;
    rc::detail::printResultMessage(result, message);
    ADD_FAILURE() << message.str() << "\n\nSeed: RC_PARAMS=\"seed=" << configuration.testParams.seed
                  << " max_success=" << configuration.testParams.maxSuccess << '"';
}

}  // namespace PrompterCore::Tests
