# Writes a manual page from its template: cmake -DREADME=... -DTEMPLATE=...
# -DOUTPUT=... -DVERSION=... -P write_page.cmake
#
# README.md is the one source of the option, exit status, environment and
# host statement tables.  A template line
#   @README <section>: <first header cell>[ except|only <key> ...]@
# stands for the table of README's "## <section>" whose header row starts
# with that cell, as a list of tagged paragraphs (.TP): all its rows, or all
# but or only those whose first cell's code span is one of the keys.  A
# marker whose table or rows aren't there is an error, so a renamed heading
# or column stops the build.

cmake_minimum_required(VERSION 3.16)

# Markdown cell text as roff: code spans bold, their hyphens minus signs.
function(roff_text text out)
  string(REPLACE "\\" "\\e" text "${text}")
  while(text MATCHES "`([^`]*)`")
    set(code "${CMAKE_MATCH_1}")
    string(REPLACE "-" "\\-" bold "${code}")
    string(REPLACE "`${code}`" "\\fB${bold}\\fR" text "${text}")
  endwhile()
  if(text MATCHES "^[.']")
    set(text "\\&${text}")
  endif()
  set(${out} "${text}" PARENT_SCOPE)
endfunction()

# The table's rows as tagged paragraphs.  README cells hold ";" and
# brackets, which CMake lists treat specially, so the rows are taken apart
# by regular expressions, not as lists.
function(table_roff readme section header filter keys out)
  set(heading "\n## ${section}\n")
  string(FIND "${readme}" "${heading}" start)
  if(start EQUAL -1)
    message(FATAL_ERROR "${TEMPLATE}: README.md has no section \"${section}\"")
  endif()
  string(LENGTH "${heading}" skip)
  math(EXPR start "${start} + ${skip}")
  string(SUBSTRING "${readme}" ${start} -1 body)
  string(FIND "${body}" "\n## " end)
  string(SUBSTRING "${body}" 0 ${end} body)
  if(NOT "${body}\n" MATCHES "\n\\| ${header} \\|[^\n]*\n\\|[-|]+\\|\n(.*)")
    message(FATAL_ERROR "${TEMPLATE}: README.md's section \"${section}\" has no table headed \"${header}\"")
  endif()
  set(rows "${CMAKE_MATCH_1}")
  set(roff "")
  while(rows MATCHES "^\\| ([^|\n]*) \\| ([^\n]*) \\|\n(.*)")
    set(key "${CMAKE_MATCH_1}")
    set(meaning "${CMAKE_MATCH_2}")
    set(rows "${CMAKE_MATCH_3}")
    string(REGEX REPLACE "^`([^`]*)`.*" "\\1" bare "${key}")
    set(keep TRUE)
    if(filter STREQUAL "except" AND bare IN_LIST keys)
      set(keep FALSE)
    elseif(filter STREQUAL "only" AND NOT bare IN_LIST keys)
      set(keep FALSE)
    endif()
    if(keep)
      roff_text("${key}" key)
      roff_text("${meaning}" meaning)
      string(APPEND roff ".TP\n${key}\n${meaning}\n")
    endif()
  endwhile()
  if(roff STREQUAL "")
    message(FATAL_ERROR "${TEMPLATE}: no rows of README.md's table \"${section}: ${header}\" are chosen")
  endif()
  set(${out} "${roff}" PARENT_SCOPE)
endfunction()

file(READ "${README}" readme)
file(READ "${TEMPLATE}" page)
string(REPLACE "@VERSION@" "${VERSION}" page "${page}")
string(REGEX MATCHALL "@README [^@\n]*@" markers "${page}")
foreach(marker IN LISTS markers)
  if(NOT marker MATCHES "^@README ([^:]+): ([^ @]+)( (except|only) ([^@]+))?@$")
    message(FATAL_ERROR "${TEMPLATE}: bad table marker ${marker}")
  endif()
  set(section "${CMAKE_MATCH_1}")
  set(header "${CMAKE_MATCH_2}")
  set(filter "${CMAKE_MATCH_4}")
  string(REPLACE " " ";" keys "${CMAKE_MATCH_5}")
  table_roff("${readme}" "${section}" "${header}" "${filter}" "${keys}" roff)
  string(REPLACE "${marker}\n" "${roff}" page "${page}")
endforeach()
file(WRITE "${OUTPUT}" "${page}")
