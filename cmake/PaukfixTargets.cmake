# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# How a floor and a test are declared. There is no global include directory: a target sees exactly the
# headers of what it links.

# paukfix_floor(NAME SOURCES... LINKS targets... [USES targets...] [FACE directory])
# What a floor LINKS its users may include too, what it USES is its own affair. A floor with a FACE shows the headers
# of that directory alone; its other headers are insides.
function(paukfix_floor name)
  cmake_parse_arguments(ARG "" "FACE" "SOURCES;LINKS;USES" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  if(ARG_FACE)
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/${ARG_FACE} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  else()
    target_include_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR})
  endif()
  target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE ${ARG_USES})
endfunction()

# paukfix_apart(ONE OTHER): stops the configuring where one of two floors that must not know each other can reach the
# other.
function(paukfix_reachable name result)
  set(found ${${result}})
  get_target_property(links ${name} LINK_LIBRARIES)
  foreach(link IN LISTS links)
    if(TARGET ${link} AND NOT link IN_LIST found AND NOT link MATCHES "::")
      list(APPEND found ${link})
      paukfix_reachable(${link} found)
    endif()
  endforeach()
  set(${result} ${found} PARENT_SCOPE)
endfunction()

function(paukfix_apart one other)
  foreach(pair "${one};${other}" "${other};${one}")
    list(GET pair 0 from)
    list(GET pair 1 to)
    set(reached)
    paukfix_reachable(${from} reached)
    if(to IN_LIST reached)
      message(FATAL_ERROR "${from} must not link ${to}, not even by way of another floor.")
    endif()
  endforeach()
endfunction()

# paukfix_tests(FOLDER CLASSES classes... [LONG classes...] [SOURCES what they share...] LINKS targets...): one program of all
# test classes of a folder, FOLDER_tests, run class by class, offscreen: CTest lists each as FOLDER.CLASS. A class stands in a
# file of its name. LONG are the longest of all, of more than 15 seconds: they begin first, so that none is left to run alone.
function(paukfix_tests folder)
  cmake_parse_arguments(ARG "" "" "CLASSES;LONG;SOURCES;LINKS" ${ARGN})
  set(program ${folder}_tests)
  set(sources ${ARG_CLASSES})
  list(TRANSFORM sources APPEND .cpp)
  add_executable(${program} ${sources} ${ARG_SOURCES} ${PROJECT_SOURCE_DIR}/tests/support/TestProgram.cpp)
  set_target_properties(${program} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
  target_include_directories(${program} PRIVATE ${PROJECT_SOURCE_DIR}/tests/support)
  target_link_libraries(${program} PRIVATE ${ARG_LINKS} Qt6::Test)
  # Tests are built more often than they run: their own code need not be fast.
  target_compile_options(${program} PRIVATE -O0 -U_FORTIFY_SOURCE)
  target_precompile_headers(${program} PRIVATE <QtCore> <QtTest>)
  foreach(class IN LISTS ARG_CLASSES)
    add_test(NAME ${folder}.${class} COMMAND ${program} ${class})
    set_tests_properties(${folder}.${class} PROPERTIES
      ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp:print_suppressions=0"
      TIMEOUT 300)
  endforeach()
  foreach(class IN LISTS ARG_LONG)
    set_tests_properties(${folder}.${class} PROPERTIES COST 100)
  endforeach()
endfunction()

# How the build runs a tool that it has just built: without a display, and leaks of Qt's own not counted.
set(PAUKFIX_RUN_TOOL ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
  LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp)
