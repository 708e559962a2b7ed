# Installs the built library into a scratch prefix and builds and runs examples/consumer
# against it with find_package(vantrel1), as another project would.
# -DBUILD=<build dir> -DSOURCE=<source dir> -DWORK=<scratch dir>
file(REMOVE_RECURSE "${WORK}")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${WORK}/prefix"
                RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "install failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} -S "${SOURCE}/examples/consumer" -B "${WORK}/build" -G Ninja
                        "-DCMAKE_PREFIX_PATH=${WORK}/prefix" RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "find_package(vantrel1) failed")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/build" RESULT_VARIABLE rc OUTPUT_QUIET)
if(rc)
  message(FATAL_ERROR "the consumer does not build")
endif()
execute_process(COMMAND "${WORK}/build/app" RESULT_VARIABLE rc OUTPUT_VARIABLE out)
message(STATUS "${out}")
if(rc OR NOT out MATCHES "9 system and 43 user line types")
  message(FATAL_ERROR "the consumer did not load the built-in table: ${out}")
endif()
file(REMOVE_RECURSE "${WORK}")
