# What is taken from the system. A package that is not there is named in one sentence, with the
# Debian package that brings it; ci/packages.txt lists them all with their reasons.

include(FindPackageHandleStandardArgs)

function(promptercore_missing what package)
  message(FATAL_ERROR "${what} was not found. On Debian: apt-get install ${package} "
                      "(or `make setup` for everything at once).")
endfunction()

macro(promptercore_find what package)
  find_package(${ARGN} QUIET)
  if(NOT ${ARGV2}_FOUND)
    promptercore_missing("${what}" ${package})
  endif()
endmacro()

macro(promptercore_pkg target package module)
  pkg_check_modules(${target} IMPORTED_TARGET QUIET ${module})
  if(NOT ${target}_FOUND)
    promptercore_missing(${module} ${package})
  endif()
endmacro()

find_package(PkgConfig QUIET)
if(NOT PKG_CONFIG_FOUND)
  promptercore_missing("pkg-config" pkg-config)
endif()

promptercore_find("ICU" libicu-dev ICU COMPONENTS uc i18n)
promptercore_find("nlohmann/json" nlohmann-json3-dev nlohmann_json)

if(NOT APPLE)
  promptercore_pkg(LibSecret libsecret-1-dev libsecret-1)
endif()

if(PROMPTERCORE_BUILD_HOST)
  promptercore_find("{fmt}" libfmt-dev fmt)
  promptercore_pkg(CLI11 libcli11-dev CLI11)
  promptercore_pkg(Ncursesw libncurses-dev ncursesw)
  promptercore_pkg(SndFile libsndfile1-dev sndfile)
  promptercore_pkg(SampleRate libsamplerate0-dev samplerate)
  promptercore_pkg(Pulse libpulse-dev libpulse)
  promptercore_pkg(AvFormat libavformat-dev libavformat)
  promptercore_pkg(AvCodec libavcodec-dev libavcodec)
  promptercore_pkg(AvUtil libavutil-dev libavutil)
  promptercore_pkg(PocketSphinx libpocketsphinx-dev pocketsphinx)
  promptercore_pkg(SphinxBase libsphinxbase-dev sphinxbase)
endif()

if(PROMPTERCORE_BUILD_TESTS)
  promptercore_find("GoogleTest" libgtest-dev GTest)
  promptercore_find("RapidCheck" librapidcheck-dev rapidcheck)
endif()

if(PROMPTERCORE_BUILD_BENCHMARKS)
  promptercore_find("Google Benchmark" libbenchmark-dev benchmark)
endif()
