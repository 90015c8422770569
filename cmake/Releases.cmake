# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# paukfix_releases(RESULT): the releases of CHANGELOG.md as AppStream's metadata have them.
# A heading reads "## 1.2.3 - 2026-12-24". What is unreleased is the version that is built, on the day of
# debian/changelog's newest entry: the day of a build would give other bytes every day.
function(paukfix_releases result)
  set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md debian/changelog)
  file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md lines REGEX "^## ")
  file(STRINGS ${PROJECT_SOURCE_DIR}/debian/changelog dates REGEX "^ -- ")
  list(GET dates 0 date)
  set(months Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec)
  if(NOT date MATCHES ", ([0-9][0-9]) ([A-Z][a-z][a-z]) ([0-9][0-9][0-9][0-9]) ")
    message(FATAL_ERROR "debian/changelog: no date in \"${date}\"")
  endif()
  set(day ${CMAKE_MATCH_1})
  set(year ${CMAKE_MATCH_3})
  list(FIND months ${CMAKE_MATCH_2} month)
  math(EXPR month "${month} + 101")
  string(SUBSTRING ${month} 1 2 month)
  set(releases)
  foreach(line IN LISTS lines)
    if(line STREQUAL "## Unreleased")
      list(APPEND releases "    <release type=\"development\" version=\"${PROJECT_VERSION}\" date=\"${year}-${month}-${day}\"/>")
    elseif(line MATCHES "^## \\[?([0-9.]+)\\]? - ([0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9])$")
      list(APPEND releases "    <release version=\"${CMAKE_MATCH_1}\" date=\"${CMAKE_MATCH_2}\"/>")
    else()
      message(FATAL_ERROR "CHANGELOG.md: \"${line}\" is no release")
    endif()
  endforeach()
  list(JOIN releases "\n" releases)
  set(${result} "${releases}" PARENT_SCOPE)
endfunction()
