# One interface target with the flags that every target of the product and its tests shares.
option(VELORA_SANITIZE "Address and undefined-behaviour sanitizers (native only)" OFF)
option(VELORA_FUZZ "Build the libFuzzer targets (clang, native only)" OFF)
option(VELORA_WERROR "Treat warnings as errors" OFF)

add_library(velora_flags INTERFACE)
target_compile_features(velora_flags INTERFACE cxx_std_20)
target_include_directories(velora_flags INTERFACE ${CMAKE_SOURCE_DIR})
# lrint is one instruction only where it need not set errno.
target_compile_options(velora_flags INTERFACE -Wall -Wextra -Wshadow -fno-math-errno)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # Version 12 sees overlaps in every inlined string operator+ that are not there.
  target_compile_options(velora_flags INTERFACE -Wno-restrict)
endif()
if(VELORA_WERROR)
  target_compile_options(velora_flags INTERFACE -Werror)
endif()

if(WIN32)
  target_compile_definitions(velora_flags INTERFACE
    UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX STRICT
    WINVER=0x0501 _WIN32_WINNT=0x0501 _WIN32_IE=0x0600)
  # SSE2 arithmetic: x87 rounds some gradient values differently. Windows calls back with a stack
  # aligned to 4 bytes: a function that keeps SSE values on it has to align it itself, and one that does
  # not (nearly all) need not, which makes the program 7 % smaller.
  target_compile_options(velora_flags INTERFACE
    -march=pentium4 -mtune=generic -msse2 -mfpmath=sse -mincoming-stack-boundary=2 -mpreferred-stack-boundary=2
    -ffunction-sections -fdata-sections)
  # The header of every module asks for Windows 5.1 (XP) and marks no build time, so that two builds
  # of the same source are the same file.
  target_link_options(velora_flags INTERFACE
    -static -Wl,--gc-sections -Wl,--no-insert-timestamp
    -Wl,--major-os-version=5,--minor-os-version=1
    -Wl,--major-subsystem-version=5,--minor-subsystem-version=1)
  if(CMAKE_BUILD_TYPE STREQUAL "Release")
    target_link_options(velora_flags INTERFACE -s)
  endif()
elseif(VELORA_SANITIZE)
  target_compile_options(velora_flags INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1)
  target_link_options(velora_flags INTERFACE -fsanitize=address,undefined)
elseif(VELORA_FUZZ)
  target_compile_options(velora_flags INTERFACE
    -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -O1)
  target_link_options(velora_flags INTERFACE -fsanitize=address,undefined)
endif()

find_program(CCACHE ccache)
if(CCACHE)
  # Paths below the checkout count as relative, so that checkouts share what one of them compiled.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
    CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE})
endif()
