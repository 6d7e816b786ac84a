# Runs a generator and fails when its output differs from the committed file.
execute_process(COMMAND ${GEN} OUTPUT_VARIABLE generated RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "generator failed: ${rc}")
endif()
file(READ ${EXPECTED} committed)
if(NOT generated STREQUAL committed)
  message(FATAL_ERROR "${EXPECTED} differs from the generator's output; regenerate it")
endif()
