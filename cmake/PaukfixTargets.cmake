# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# How a floor and a test are declared. There is no global include directory: a target sees exactly the
# headers of what it links.

# paukfix_floor(NAME SOURCES... LINKS targets...)
function(paukfix_floor name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# paukfix_tests(FOLDER CLASSES classes... [SOURCES what they share...] LINKS targets...): one program of all test classes of
# a folder, FOLDER_tests, run class by class, offscreen: CTest lists each as FOLDER.CLASS. A class stands in a file of its
# name.
function(paukfix_tests folder)
  cmake_parse_arguments(ARG "" "" "CLASSES;SOURCES;LINKS" ${ARGN})
  set(program ${folder}_tests)
  set(sources ${ARG_CLASSES})
  list(TRANSFORM sources APPEND .cpp)
  add_executable(${program} ${sources} ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/TestProgram.cpp)
  set_target_properties(${program} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  target_link_libraries(${program} PRIVATE ${ARG_LINKS} Qt6::Test)
  # Tests are built more often than they run: their own code need not be fast.
  target_compile_options(${program} PRIVATE -O0)
  target_precompile_headers(${program} PRIVATE <QtCore> <QtTest>)
  foreach(class IN LISTS ARG_CLASSES)
    add_test(NAME ${folder}.${class} COMMAND ${program} ${class})
    set_tests_properties(${folder}.${class} PROPERTIES
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
      TIMEOUT 300)
  endforeach()
endfunction()

# How the build runs a tool that it has just built: without a display, and leaks of Qt's own not counted.
set(PAUKFIX_RUN_TOOL ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
  LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp)
