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

# paukfix_test(NAME SOURCES... LINKS targets... [LABELS ...]): one Qt Test executable, run offscreen.
function(paukfix_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 300)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON
    RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} Qt6::Test)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp"
    TIMEOUT ${ARG_TIMEOUT} LABELS "${ARG_LABELS}")
endfunction()

# How the build runs a tool that it has just built: without a display, and leaks of Qt's own not counted.
set(PAUKFIX_RUN_TOOL ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
  LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp)
