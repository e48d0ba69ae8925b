# These functions make every target of the tree. All targets share one set of flags, and each one
# can include only headers of its own folder and of the libraries that it links.

add_library(kestrel_flags INTERFACE)
target_compile_options(kestrel_flags INTERFACE -Wall -Wextra -Wconversion)
if(KESTREL_WERROR)
  target_compile_options(kestrel_flags INTERFACE -Werror)
endif()
# GCC takes the sources of a batch for headers, and warns of classes there that have members or bases
# from anonymous namespaces.
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(kestrel_flags INTERFACE -Wno-subobject-linkage)
endif()
# The fuzzers need to see the branches of the code under test.
if(KESTREL_FUZZ)
  target_compile_options(kestrel_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(KESTREL_COVERAGE)
  target_compile_options(kestrel_flags INTERFACE -fprofile-instr-generate -fcoverage-mapping)
  target_link_options(kestrel_flags INTERFACE -fprofile-instr-generate)
endif()
if(KESTREL_SANITIZE)
  target_compile_options(
    kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE} -fno-sanitize-recover=all
                            -fno-omit-frame-pointer)
  target_link_options(kestrel_flags INTERFACE -fsanitize=${KESTREL_SANITIZE})
  # GCC gives these warnings for paths that cannot happen when the sanitizers are built in.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    target_compile_options(kestrel_flags INTERFACE -Wno-maybe-uninitialized -Wno-stringop-overflow)
  endif()
endif()

# Lets a target include the headers of one folder of the tree as "folder/Header.h". With PUBLIC, the
# targets that link it can include them too. The build has an include root for each folder, which
# contains links to the headers of that folder only.
function(kestrel_reach target visibility folder)
  string(REPLACE "/" "-" root ${folder})
  set(root ${CMAKE_BINARY_DIR}/reach/${root})
  file(REMOVE_RECURSE ${root})
  file(MAKE_DIRECTORY ${root}/${folder})
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
  foreach(header ${headers})
    cmake_path(GET header FILENAME name)
    file(CREATE_LINK ${header} ${root}/${folder}/${name} SYMBOLIC)
  endforeach()
  target_include_directories(${target} ${visibility} ${root})
endfunction()

# Adds a library for the folder that calls this function. The caller declares its dependencies with
# target_link_libraries.
function(kestrel_library name)
  add_library(${name} STATIC ${ARGN})
  target_link_libraries(${name} PUBLIC kestrel_flags)
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  kestrel_reach(${name} PUBLIC ${folder})
endfunction()

# Adds a library of headers without sources.
function(kestrel_headers name)
  add_library(${name} INTERFACE)
  target_link_libraries(${name} INTERFACE kestrel_flags)
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  kestrel_reach(${name} INTERFACE ${folder})
endfunction()

function(kestrel_program name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE kestrel_flags)
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  kestrel_reach(${name} PRIVATE ${folder})
endfunction()

# This target builds everything that the tests with the label "unit" need, and nothing else.
add_custom_target(unit-tests)

# Tests of JACK get shared memory of their own where the kernel permits it, and run side by side.
# Elsewhere they take turns: the clients of all servers share one registry.
if(KESTREL_TESTS AND NOT APPLE)
  set(KESTREL_OWN_MEMORY ${CMAKE_SOURCE_DIR}/tests/support/own-shared-memory)
  execute_process(
    COMMAND ${KESTREL_OWN_MEMORY} true
    RESULT_VARIABLE KESTREL_OWN_MEMORY_REFUSED
    OUTPUT_QUIET ERROR_QUIET)
  if(KESTREL_OWN_MEMORY_REFUSED)
    message(STATUS "Tests that need JACK take turns, as no namespaces are permitted here")
    set(KESTREL_JACK_TEST RESOURCE_LOCK jack)
  endif()
endif()

# Makes the tests of a program run in shared memory of their own. Call it before the tests are added.
# Their properties need ${KESTREL_JACK_TEST}.
function(kestrel_runs_jack name)
  if(NOT KESTREL_OWN_MEMORY_REFUSED)
    set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR ${KESTREL_OWN_MEMORY})
  endif()
endfunction()

# Adds a GoogleTest program. Every test in it becomes a test of ctest.
#   kestrel_test(name SOURCES … LIBRARIES … [LABEL label] [PREFIX prefix] [PROPERTIES …] [JACK])
# The prefix tells the tests apart when several programs hold the same ones. JACK is for tests that
# start a JACK server.
function(kestrel_test name)
  cmake_parse_arguments(T "JACK" "LABEL;PREFIX" "SOURCES;LIBRARIES;PROPERTIES" ${ARGN})
  kestrel_program(${name} ${T_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${T_LIBRARIES} GTest::gmock GTest::gtest)
  if(NOT T_LABEL)
    set(T_LABEL unit)
  endif()
  if(T_LABEL MATCHES "unit")
    add_dependencies(unit-tests ${name})
  endif()
  if(T_JACK)
    kestrel_runs_jack(${name})
    list(APPEND T_PROPERTIES ${KESTREL_JACK_TEST})
  endif()
  gtest_discover_tests(
    ${name} DISCOVERY_TIMEOUT 60 TEST_PREFIX "${T_PREFIX}"
    PROPERTIES LABELS ${T_LABEL} TIMEOUT 300 ENVIRONMENT "QT_QPA_PLATFORM=offscreen"
               ${T_PROPERTIES})
endfunction()
