# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# Makes a page of the handbook: cmake -DCMARK=program -DFROM=text.md -DTO=page.html -P Seite.cmake
execute_process(COMMAND ${CMARK} --unsafe --extension table ${FROM}
  OUTPUT_VARIABLE body RESULT_VARIABLE failed)
if(failed)
  message(FATAL_ERROR "${CMARK} could not read ${FROM}")
endif()
# A line as high as a picture needs no room between lines.
string(REPLACE "<p><img " "<p class=\"bild\"><img " body "${body}")
file(STRINGS ${FROM} title LIMIT_COUNT 1 ENCODING UTF-8)
string(REGEX REPLACE "^# *" "" title "${title}")
file(WRITE ${TO} "<!DOCTYPE html>
<html lang=\"de\">
<head>
<meta charset=\"utf-8\">
<meta name=\"viewport\" content=\"width=device-width\">
<link rel=\"stylesheet\" type=\"text/css\" href=\"handbuch.css\">
<title>${title}</title>
</head>
<body>
${body}</body>
</html>
")
