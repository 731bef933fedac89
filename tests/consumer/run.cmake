function(step)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "consumer: step failed (${result}): ${ARGN}")
    endif()
endfunction()

set(prefix ${WORK_DIR}/prefix)
file(REMOVE_RECURSE ${WORK_DIR})
step(${CMAKE_COMMAND} --install ${VESK_BUILD_DIR} --prefix ${prefix})

foreach(file include/vesk/VeskData include/vesk/VeskCore include/vesk/VeskXml
             lib/pkgconfig/vesk_data.pc lib/cmake/Vesk/VeskConfig.cmake)
    if(NOT EXISTS ${prefix}/${file})
        message(FATAL_ERROR "consumer: ${file} was not installed")
    endif()
endforeach()

step(${CMAKE_COMMAND} -S ${APP_SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
    -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
step(${WORK_DIR}/build/vesk-consumer)
