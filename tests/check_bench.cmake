# The search's signature against the one on file: cmake -DBENCH=... -DSIGNATURE_FILE=... -P check_bench.cmake
# The file holds the depth and the total of nodes; after a change of the search on purpose scripts/update-self-test
# writes the new total there.
file(READ "${SIGNATURE_FILE}" expected)
string(REGEX MATCH "depth ([0-9]+)" unused "${expected}")
set(depth ${CMAKE_MATCH_1})
string(REGEX MATCH "signature [0-9]+" expected "${expected}")
execute_process(COMMAND "${BENCH}" bench ${depth} OUTPUT_VARIABLE printed COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "signature [0-9]+" found "${printed}")
if(NOT found STREQUAL expected)
  message(FATAL_ERROR "bench ${depth} gives ${found}; ${SIGNATURE_FILE} has ${expected}")
endif()
