# Compiles another project's source against the library's headers with what the library's target hands on.
file(REMOVE_RECURSE ${OUT})
include(${CMAKE_CURRENT_LIST_DIR}/RunStep.cmake)
run("Configuring" ${CMAKE_COMMAND} -G Ninja -S ${ROOT}/Tests/Consumer -B ${OUT} -DQUORVANE_ROOT=${ROOT}
    -DCMAKE_CXX_COMPILER=${COMPILER})
run("Compiling" ${CMAKE_COMMAND} --build ${OUT} --target CMakeFiles/consumer.dir/consumer.cpp.o)
file(STRINGS ${OUT}/compile_commands.json commands REGEX "\"command\".*consumer\\.cpp")
if(NOT commands MATCHES "std=(c|gnu)\\+\\+20" OR commands MATCHES "-W|-fsanitize")
  message(FATAL_ERROR "Another project shall get the language standard and nothing else: ${commands}")
endif()
