# One benchmark program for each side: tests/bench/<name>_bench.cpp, those that need Windows
# <name>_win_bench.cpp. The native one belongs to the bench preset (optimised, no sanitizers).
if(WIN32 OR (NOT VELORA_SANITIZE AND NOT VELORA_FUZZ))
  file(GLOB bench_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/bench/*_bench.cpp)
  if(WIN32)
    list(APPEND bench_sources ${CMAKE_CURRENT_SOURCE_DIR}/support/aolhost_win.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/support/process_win.cpp
         ${CMAKE_CURRENT_SOURCE_DIR}/support/tempdir.cpp)
    # The smallest program that shows a window: what a start costs before any line of ours runs.
    add_executable(velora_bench_empty WIN32 ${CMAKE_CURRENT_SOURCE_DIR}/bench/empty_window.cpp)
    target_link_libraries(velora_bench_empty PRIVATE velora_flags)
  else()
    list(FILTER bench_sources EXCLUDE REGEX "_win_bench\\.cpp$")
  endif()
  add_executable(velora_bench ${CMAKE_CURRENT_SOURCE_DIR}/bench/bench_main.cpp ${bench_sources})
  target_include_directories(velora_bench PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(velora_bench PRIVATE velora_im_mail)
  # The peers that only the build machine has.
  find_library(LIBRARY_mcrypt mcrypt)
  find_library(LIBRARY_tag tag)
  if(NOT WIN32 AND LIBRARY_mcrypt)
    target_compile_definitions(velora_bench PRIVATE VELORA_HAS_MCRYPT)
    target_link_libraries(velora_bench PRIVATE ${LIBRARY_mcrypt})
  endif()
  if(NOT WIN32 AND LIBRARY_tag)
    target_compile_definitions(velora_bench PRIVATE VELORA_HAS_TAGLIB)
    target_link_libraries(velora_bench PRIVATE ${LIBRARY_tag})
  endif()
endif()
