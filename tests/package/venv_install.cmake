# pip install of the Python package into a fresh virtual environment, with
# no network: --system-site-packages lets the venv see Debian's setuptools
# (for the build, hence --no-build-isolation) and pytest. The package's
# sources are removed after the install, so the tests can only import the
# installed copy.
# -DPYTHON -DSOURCE (python/) -DWORK
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${WORK})
file(COPY ${SOURCE}/ DESTINATION ${WORK}/src PATTERN __pycache__ EXCLUDE PATTERN "*.egg-info" EXCLUDE
     PATTERN build EXCLUDE)

function(run)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK} RESULT_VARIABLE rc OUTPUT_VARIABLE out
                  ERROR_VARIABLE err)
  message(STATUS "${ARGN}\n${out}")
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}):\n${err}")
  endif()
  set(out "${out}" PARENT_SCOPE)
endfunction()

run(${PYTHON} -m venv --system-site-packages ${WORK}/venv)
set(py ${WORK}/venv/bin/python)
run(${py} -m pip install --no-index --no-build-isolation --disable-pip-version-check ${WORK}/src)
file(REMOVE_RECURSE ${WORK}/src/kvxlib ${WORK}/src/build)
run(${py} -c "print(__import__('kvxlib').__file__)")
if(NOT out MATCHES "^${WORK}/venv/lib/")
  message(FATAL_ERROR "kvxlib imported from ${out}, not from the virtual environment")
endif()
run(${py} -m pytest -q -p no:cacheprovider ${WORK}/src/tests)
