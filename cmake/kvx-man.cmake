# Writes the manual page kvx.1 from the program's own help and version text
# (cmake -DKVX=path/to/kvx -DOUT=kvx.1 -P kvx-man.cmake).
#
# The help text is laid out for this: a first line "kvx: summary", then
# sections, each a heading line ending in ':' followed by lines indented by
# two spaces. "usage" becomes SYNOPSIS, one command per line; the other
# sections keep their heading, in capitals, and their text.
cmake_policy(SET CMP0007 NEW)  # keep empty lines of the help text as list elements

# The library may report missing data files on stderr while it loads: not part of the page.
execute_process(COMMAND ${KVX} --help OUTPUT_VARIABLE help RESULT_VARIABLE rc_help ERROR_QUIET)
execute_process(COMMAND ${KVX} --version OUTPUT_VARIABLE version RESULT_VARIABLE rc_version ERROR_QUIET
                OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT rc_help EQUAL 0 OR NOT rc_version EQUAL 0)
  message(FATAL_ERROR "${KVX} --help / --version failed")
endif()

# roff: backslashes first, then hyphens as minus signs, and no line may
# start with a control character.
function(kvx_roff_escape text out_var)
  string(REPLACE "\\" "\\e" text "${text}")
  string(REPLACE "-" "\\-" text "${text}")
  string(REGEX REPLACE "^([.'])" "\\\\&\\1" text "${text}")
  set(${out_var} "${text}" PARENT_SCOPE)
endfunction()

string(REPLACE ";" "\\;" help "${help}")
string(REPLACE "\n" ";" lines "${help}")
list(POP_FRONT lines first)
if(NOT first MATCHES "^kvx: (.+)$")
  message(FATAL_ERROR "help text does not start with 'kvx: summary': ${first}")
endif()
kvx_roff_escape("${CMAKE_MATCH_1}" summary)
string(REGEX REPLACE "^kvx " "" version_number "${version}")

set(page ".TH KVX 1 \"\" \"kvx ${version_number}\" \"User Commands\"\n")
string(APPEND page ".SH NAME\nkvx \\- ${summary}\n")
set(section "")
foreach(line IN LISTS lines)
  if(line STREQUAL "")
    continue()
  endif()
  if(line MATCHES "^([a-z][a-z ]*):$")
    set(section "${CMAKE_MATCH_1}")
    if(section STREQUAL "usage")
      string(APPEND page ".SH SYNOPSIS\n")
    else()
      string(TOUPPER "${section}" heading)
      string(APPEND page ".SH ${heading}\n")
    endif()
    continue()
  endif()
  string(REGEX REPLACE "^  " "" text "${line}")
  kvx_roff_escape("${text}" text)
  if(section STREQUAL "usage")
    string(REGEX REPLACE "^kvx" "\\\\fBkvx\\\\fR" text "${text}")
    string(APPEND page ".PP\n${text}\n")
  else()
    string(APPEND page "${text}\n")
  endif()
endforeach()
string(APPEND page ".SH SEE ALSO\nThe C interface: kvxlib.h; the Python binding: the kvxlib package.\n")
file(WRITE ${OUT} "${page}")
