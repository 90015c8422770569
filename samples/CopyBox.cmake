# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# cmake -DFROM=box -DTO=box -P CopyBox.cmake: copies a card file, unless somebody has learned with the one at TO.
# That is so when it is not, byte for byte, what was copied there last.
set(note ${FROM}.sha256)
if(EXISTS ${TO})
  file(SHA256 ${TO} present)
  set(copied)
  if(EXISTS ${note})
    file(READ ${note} copied)
  endif()
  if(NOT present STREQUAL copied)
    message(STATUS "${TO} has been used and stays as it is. Delete it to get the new one.")
    return()
  endif()
endif()
file(COPY_FILE ${FROM} ${TO})
file(SHA256 ${TO} present)
file(WRITE ${note} ${present})
