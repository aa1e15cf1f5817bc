# How our own targets are compiled: language level, arithmetic, warnings, sanitizers. It is one
# interface target, so that nothing of it leaks to whoever embeds the library.

add_library(promptercore_ours INTERFACE)
target_compile_features(promptercore_ours INTERFACE cxx_std_20)
# The same input gives the same bits: no fused multiply-add, no reordering of sums.
target_compile_options(promptercore_ours INTERFACE
  -ffp-contract=off
  -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast)
if(CMAKE_UNITY_BUILD)
  # Files that are compiled as one may hide each other's names; by itself each of them is checked.
  target_compile_options(promptercore_ours INTERFACE -Wno-shadow)
endif()
if(PROMPTERCORE_STRICT)
  target_compile_options(promptercore_ours INTERFACE -Werror)
endif()
if(PROMPTERCORE_SANITIZE)
  target_compile_options(promptercore_ours INTERFACE
    -fsanitize=${PROMPTERCORE_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(promptercore_ours INTERFACE -fsanitize=${PROMPTERCORE_SANITIZE})
endif()
if(PROMPTERCORE_BUILD_FUZZERS)
  # What a fuzzer is to explore reports where it has been.
  target_compile_options(promptercore_ours INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(promptercore_ours INTERFACE -fsanitize=fuzzer-no-link)
endif()

# promptercore_use_ours(target): compiles `target` our way without exporting any of it.
function(promptercore_use_ours target)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:promptercore_ours>)
endfunction()

# promptercore_test(room sources...): one test program a room, run once by ctest. What tests include
# and instantiate takes far longer to compile than to run, so they share its parsing and are
# optimised less.
function(promptercore_test room)
  add_executable(test-${room} ${ARGN})
  promptercore_use_ours(test-${room})
  # GCC 12 at -O1 sees std::string overrun its own buffer where it does not.
  target_compile_options(test-${room} PRIVATE -O1
    "$<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds;-Wno-stringop-overflow>")
  if(room STREQUAL support)
    target_precompile_headers(test-${room} PRIVATE <gtest/gtest.h> <rapidcheck.h>)
  else()
    target_precompile_headers(test-${room} REUSE_FROM test-support)
  endif()
  target_link_libraries(test-${room} PRIVATE
    PrompterCore::PrompterCore promptercore_test_support GTest::gtest_main)
  add_test(NAME ${room} COMMAND test-${room} --gtest_brief=1)
endfunction()
