# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# What the compiler puts into the program besides its code: guards against broken memory, and nothing that tells of the
# directory or the day of the build, so that two builds give the same bytes.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

# The later map is tried first: the build directory mostly lies in the source's.
add_compile_options(-ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -Wdate-time)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
check_pie_supported(LANGUAGES CXX)
add_link_options(-Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)

# The sanitizers watch the same places, and better.
if(NOT PAUKFIX_SANITIZE AND NOT PAUKFIX_FUZZ)
  add_compile_options(-fstack-protector-strong $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
  foreach(flag -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "PAUKFIX_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known}) # not every processor has them
    if(${known})
      add_compile_options(${flag})
    endif()
  endforeach()
endif()
