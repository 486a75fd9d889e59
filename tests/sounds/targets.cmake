# The DAO of the tests: a COM server beside them, not beside the program.
if(WIN32)
  add_library(velora_daoserver MODULE ${CMAKE_CURRENT_LIST_DIR}/daoserver/daoserver.cpp
    ${CMAKE_CURRENT_LIST_DIR}/daoserver/NamedObject.cpp)
  set_target_properties(velora_daoserver PROPERTIES PREFIX "" OUTPUT_NAME daoserver SUFFIX .dll
    LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/testbin)
  target_include_directories(velora_daoserver PRIVATE ${CMAKE_CURRENT_LIST_DIR}/..)
  target_link_libraries(velora_daoserver PRIVATE velora_sounds)
  target_link_options(velora_daoserver PRIVATE -Wl,--kill-at)
  add_dependencies(velora_tests velora_daoserver)
endif()
