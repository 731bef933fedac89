# Programs run without LD_LIBRARY_PATH: the installed libraries must find each
# other through their own runpath.
function(step)
    execute_process(COMMAND ${CMAKE_COMMAND} -E env --unset=LD_LIBRARY_PATH ${ARGN}
        RESULT_VARIABLE result)
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

# The widgets companion, when it was built, comes with its header and .pc file.
if(WITH_WIDGETS)
    foreach(file include/vesk/VeskWidgets include/vesk/veskfieldform.h include/vesk/veskbuddymodel.h
                 lib/pkgconfig/vesk_widgets.pc)
        if(NOT EXISTS ${prefix}/${file})
            message(FATAL_ERROR "consumer: ${file} was not installed")
        endif()
    endforeach()
endif()

step(${CMAKE_COMMAND} -S ${APP_SOURCE_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_BUILD_TYPE=${BUILD_TYPE}
    -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
step(${WORK_DIR}/build/vesk-consumer)

# Every installed library names its own directory as its runpath.
foreach(library vesk_core vesk_xml vesk_data)
    file(STRINGS ${prefix}/lib/lib${library}.so.0 runpath REGEX "^\\$ORIGIN$")
    if(NOT runpath)
        message(FATAL_ERROR "consumer: lib${library}.so.0 has no $ORIGIN runpath")
    endif()
endforeach()

# The same program built with nothing but what pkg-config says.
find_program(PKG_CONFIG pkg-config REQUIRED)
execute_process(
    COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${prefix}/lib/pkgconfig
            ${PKG_CONFIG} --cflags --libs vesk_data
    OUTPUT_VARIABLE pc_flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "consumer: pkg-config does not know vesk_data")
endif()
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
separate_arguments(cxx_flags UNIX_COMMAND "${CXX_FLAGS}")
step(c++ -std=c++17 -fPIC ${cxx_flags} ${APP_SOURCE_DIR}/main.cpp ${pc_flags}
    -Wl,-rpath,${prefix}/lib -o ${WORK_DIR}/vesk-consumer-pc)
step(${WORK_DIR}/vesk-consumer-pc)

if(WITH_WIDGETS)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${prefix}/lib/pkgconfig
                ${PKG_CONFIG} --cflags --libs vesk_widgets
        OUTPUT_VARIABLE widget_flags RESULT_VARIABLE result)
    if(NOT result EQUAL 0 OR NOT widget_flags MATCHES "-lvesk_widgets")
        message(FATAL_ERROR "consumer: pkg-config does not know vesk_widgets")
    endif()
endif()
