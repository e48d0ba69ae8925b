# Every target of the tree is made here, so that all share one set of flags and one include root.

add_library(kestrel_flags INTERFACE)
target_include_directories(kestrel_flags INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(kestrel_flags INTERFACE -Wall -Wextra -Wconversion)
if(KESTREL_WERROR)
  target_compile_options(kestrel_flags INTERFACE -Werror)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(
    kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all
                            -fno-omit-frame-pointer)
  target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
  # With the checks built in, the optimizer of this compiler sees paths that are none.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(kestrel_flags INTERFACE -Wno-maybe-uninitialized -Wno-stringop-overflow)
  endif()
endif()

# One library per folder. PRIVATE uses are named by the folder's own list with target_link_libraries.
function(kestrel_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC kestrel_flags)
endfunction()

function(kestrel_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kestrel_flags)
endfunction()

# Everything that the tests labelled "unit" need, and nothing else.
add_custom_target(unit-tests)

# A GoogleTest program; every test in it becomes a test of ctest.
#   kestrel_test(name SOURCES … LIBRARIES … [LABEL label])
function(kestrel_test name)
  cmake_parse_arguments(T "" "LABEL" "SOURCES;LIBRARIES;PROPERTIES" ${ARGN})
  kestrel_program(${name} ${T_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LIBRARIES} GTest::gmock GTest::gtest)
  if(NOT T_LABEL)
    set(T_LABEL unit)
  endif()
  if(T_LABEL MATCHES "unit")
    add_dependencies(unit-tests ${name})
  endif()
  gtest_discover_tests(
    ${name} DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS ${T_LABEL} TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
               ${T_PROPERTIES})
endfunction()
