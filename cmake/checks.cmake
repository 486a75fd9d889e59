# The checks that are not C++ tests, as tests of the build tree that they need.
if(NOT WIN32)
  foreach(check IN ITEMS rooms pure headers format words)
    add_test(NAME lint/${check} COMMAND ${CMAKE_SOURCE_DIR}/script/lint ${check})
    set_tests_properties(lint/${check} PROPERTIES TIMEOUT 300)
  endforeach()
endif()
