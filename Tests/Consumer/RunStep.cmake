# run(WHAT COMMAND…): a step of a test. What it printed is left in `output`; the test ends with it when the step fails.
function(run what)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} failed:\n${output}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()
