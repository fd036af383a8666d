# What can be switched, and the flags that every target of ours is compiled with.
option(QUILLO_BUILD_DESKTOP "Build the desktop program (needs Qt 6); without it there is the command alone" ON)
option(QUILLO_BUILD_TESTS "Build the tests" ON)
option(QUILLO_BUILD_BENCHMARKS "Build the benchmarks (bench/)" OFF)
option(QUILLO_BUILD_FUZZERS "Build the libFuzzer targets (clang only)" OFF)
option(QUILLO_WARNINGS_AS_ERRORS "Let no warning pass (for developing; compilers to come may warn of more)" OFF)
option(QUILLO_CLANG_TIDY "Run clang-tidy beside the compiler" OFF)
set(QUILLO_SANITIZE "" CACHE STRING "Comma-separated sanitizers for every target, for example address,undefined")

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

# Headers, Qt's and the test library's above all, are most of what a compiler reads, so several files are compiled at a
# time; not for clang-tidy, which is to see each as it is, and not in the modules of which a shipped program takes only
# some files.
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
if(QUILLO_CLANG_TIDY)
  set(QUILLO_UNITY OFF)
else()
  set(QUILLO_UNITY ON)
endif()
if(NOT CMAKE_BUILD_TYPE STREQUAL "Release")
  set(CMAKE_UNITY_BUILD ${QUILLO_UNITY})
endif()

# The same source makes the same program wherever it lies, and another checkout finds it compiled (scripts/lib.sh).
add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

find_program(QUILLO_CCACHE ccache)
if(QUILLO_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${QUILLO_CCACHE}")
endif()

add_library(quillo_flags INTERFACE)
target_compile_options(quillo_flags INTERFACE -Wall -Wextra -Wpedantic)
if(QUILLO_WARNINGS_AS_ERRORS)
  target_compile_options(quillo_flags INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # Nobody replaces our functions at run time, so that they may be inlined also where the windows' library shares them.
  target_compile_options(quillo_flags INTERFACE -fno-semantic-interposition)
  # Where several files are compiled at a time, GCC takes them for headers, which it then warns of.
  target_compile_options(quillo_flags INTERFACE -Wno-subobject-linkage)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # False alarms about std::string in optimised builds: https://gcc.gnu.org/bugzilla/show_bug.cgi?id=105651
  target_compile_options(quillo_flags INTERFACE -Wno-restrict)
endif()
if(QUILLO_SANITIZE)
  add_compile_options(-fsanitize=${QUILLO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # RapidJSON adds to a null pointer before its first allocation, which clang reports and GCC does not.
    add_compile_options(-fno-sanitize=pointer-overflow)
  endif()
  add_link_options(-fsanitize=${QUILLO_SANITIZE})
endif()
if(QUILLO_BUILD_FUZZERS)
  # Coverage feedback is wanted in every module, the fuzzer's own main only in the targets (tests/fuzz).
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(QUILLO_CLANG_TIDY)
  find_program(QUILLO_CLANG_TIDY_PROGRAM clang-tidy REQUIRED)
endif()
