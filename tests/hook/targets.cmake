# The second processes of the hook tests: a small AOL, and a companion that can be killed.
if(WIN32)
  add_executable(velora_hook_helper ${CMAKE_CURRENT_LIST_DIR}/helper/main.cpp
    ${CMAKE_CURRENT_LIST_DIR}/helper/smallAol.cpp ${CMAKE_CURRENT_LIST_DIR}/helper/companion.cpp)
  target_include_directories(velora_hook_helper PRIVATE ${CMAKE_CURRENT_LIST_DIR}/..)
  target_link_libraries(velora_hook_helper PRIVATE velora_hook gdi32)
  add_dependencies(velora_tests velora_hook_helper dwspy36)
endif()
