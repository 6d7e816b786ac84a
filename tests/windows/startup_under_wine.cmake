# Start-up of kvxlib.dll under wine, one process per scenario (the probe
# loads a copy of the DLL, prints what the exports report, and unloads it):
#   1. no registry values: the files beside the DLL (GetModuleFileNameA);
#   2. registry values (RegOpenKeyExA / RegQueryValueExA): the current user's
#      hide the machine's for the same value name only; the DE file opens
#      through _fsopen and its header is found with 64-bit seeks.
# -DWINE -DPROBE -DDLL -DDATA (tests/data) -DWORK
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/beside ${WORK}/alone)
set(key "Software\\Pelorin\\kvxlib\\6.0")

function(win_path path out_var)  # wine maps drive Z: to /
  string(REPLACE "/" "\\" p "${path}")
  set(${out_var} "Z:${p}" PARENT_SCOPE)
endfunction()

function(reg)
  execute_process(COMMAND ${WINE} reg ${ARGN} OUTPUT_QUIET ERROR_QUIET RESULT_VARIABLE rc)
  set(reg_rc ${rc} PARENT_SCOPE)
endfunction()

function(clear_settings)
  reg(delete "HKCU\\Software\\Pelorin" /f)
  reg(delete "HKLM\\Software\\Pelorin" /f)
endfunction()

function(set_value root name value)
  reg(add "${root}\\${key}" /v ${name} /t REG_SZ /d "${value}" /f)
  if(NOT reg_rc EQUAL 0)
    message(FATAL_ERROR "reg add ${root}\\${key} ${name} failed")
  endif()
endfunction()

function(probe dll expected)
  win_path(${dll} arg)
  execute_process(COMMAND ${WINE} ${PROBE} ${arg} OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
  string(REPLACE "\r" "" out "${out}")
  message(STATUS "probe ${arg}:\n${out}")
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "probe failed (${rc}): ${err}")
  endif()
  foreach(line IN LISTS expected ITEMS unloaded=1)
    if(NOT out MATCHES "(^|\n)${line}\n")
      message(FATAL_ERROR "expected '${line}' from the probe")
    endif()
  endforeach()
endfunction()

# 1. Beside the DLL, no settings. The JPL path is then the DLL's directory
#    itself, which does not open as a file.
clear_settings()
file(COPY ${DLL} ${DATA}/kvxjdt.dat ${DATA}/meteor.txt DESTINATION ${WORK}/beside)
probe(${WORK}/beside/kvxlib.dll "IsValidJdtFile=1;IsValidMeteorFile=1;GetJplDeVersion=-1;IsValidMoonXyzFile=0")

# 2. The DLL alone; the files come from the registry. The machine names the
#    Delta T and meteor files; the user names the DE file and a meteor file
#    that does not exist, which hides the machine's meteor file only.
file(COPY ${DLL} DESTINATION ${WORK}/alone)
win_path(${DATA}/kvxjdt.dat jdt)
win_path(${DATA}/meteor.txt meteor)
win_path(${DATA}/de405_2000.bin de)
set_value(HKLM DtUtFile "${jdt}")
set_value(HKLM MeteorFile "${meteor}")
set_value(HKCU JplEphUnixFile "${de}")
set_value(HKCU MeteorFile "Z:\\nonexistent\\meteor.txt")
probe(${WORK}/alone/kvxlib.dll "IsValidJdtFile=1;GetJplDeVersion=405;IsValidMoonXyzFile=1;IsValidMeteorFile=0")

# The machine's meteor file, once the user's value is gone.
reg(delete "HKCU\\${key}" /v MeteorFile /f)
probe(${WORK}/alone/kvxlib.dll "IsValidMeteorFile=1;GetJplDeVersion=405")
clear_settings()
