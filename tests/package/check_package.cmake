# Installs the build into a staging prefix, then builds and runs a consumer
# through find_package(ZelStr32) and another through pkg-config zelstr32.
# cmake -DBUILD_DIR=... -DSOURCE_DIR=... -DWORK_DIR=... -P check_package.cmake
set(stage ${WORK_DIR}/stage)
file(REMOVE_RECURSE ${WORK_DIR})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT rc EQUAL 0)
    message(FATAL_ERROR "failed (${rc}): ${ARGN}\n${out}\n${err}")
  endif()
  message(STATUS "${out}")
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${stage})

# CMake package
run(${CMAKE_COMMAND} -S ${SOURCE_DIR} -B ${WORK_DIR}/cmake -G Ninja -DCMAKE_PREFIX_PATH=${stage})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/cmake)
run(${WORK_DIR}/cmake/consumer)

# pkg-config
set(ENV{PKG_CONFIG_PATH} ${stage}/lib/pkgconfig)
execute_process(COMMAND pkg-config --cflags --libs zelstr32 OUTPUT_VARIABLE flags
                RESULT_VARIABLE rc OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "pkg-config does not know zelstr32")
endif()
separate_arguments(flags UNIX_COMMAND "${flags}")
run(c++ -std=c++20 ${SOURCE_DIR}/consumer.cpp ${flags} -Wl,-rpath,${stage}/lib
    -o ${WORK_DIR}/pc_consumer)
run(${WORK_DIR}/pc_consumer)
