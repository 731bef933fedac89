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
    -DCMAKE_PREFIX_PATH=${prefix}
    -DCMAKE_CXX_FLAGS=${CXX_FLAGS})
step(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
step(${WORK_DIR}/build/vesk-consumer)

# Every installed library names its own directory as its runpath.
find_program(READELF readelf REQUIRED)
foreach(library vesk_core vesk_xml vesk_data)
    execute_process(COMMAND ${READELF} -d ${prefix}/lib/lib${library}.so.0 OUTPUT_VARIABLE dynamic)
    if(NOT dynamic MATCHES "\\(RUNPATH\\)[^\n]*\\[\\$ORIGIN\\]")
        message(FATAL_ERROR "consumer: lib${library}.so.0 has no $ORIGIN runpath")
    endif()
endforeach()

# The same program with nothing but what pkg-config says. Compiling it again
# would double the test's time for what the preprocessor already shows: the
# --cflags find every header, and the --libs link the object built above.
find_program(PKG_CONFIG pkg-config REQUIRED)
function(pkg_config out module option)
    execute_process(
        COMMAND ${CMAKE_COMMAND} -E env PKG_CONFIG_PATH=${prefix}/lib/pkgconfig
                ${PKG_CONFIG} ${option} ${module}
        OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "consumer: pkg-config does not know ${module}")
    endif()
    separate_arguments(flags UNIX_COMMAND "${flags}")
    set(${out} ${flags} PARENT_SCOPE)
endfunction()
pkg_config(pc_cflags vesk_data --cflags)
pkg_config(pc_libs vesk_data --libs)
separate_arguments(cxx_flags UNIX_COMMAND "${CXX_FLAGS}")
step(c++ -std=c++17 -fPIC -E ${pc_cflags} ${APP_SOURCE_DIR}/main.cpp -o ${WORK_DIR}/main.ii)
file(GLOB_RECURSE object ${WORK_DIR}/build/CMakeFiles/vesk-consumer.dir/main.cpp.o)
if(NOT object)
    message(FATAL_ERROR "consumer: the object of main.cpp is not where CMake builds it")
endif()
step(c++ ${cxx_flags} ${object} ${pc_libs} -Wl,-rpath,${prefix}/lib -o ${WORK_DIR}/vesk-consumer-pc)
step(${WORK_DIR}/vesk-consumer-pc)

if(WITH_WIDGETS)
    pkg_config(widget_libs vesk_widgets --libs)
    list(FIND widget_libs -lvesk_widgets found)
    if(found EQUAL -1)
        message(FATAL_ERROR "consumer: pkg-config does not link vesk_widgets")
    endif()
endif()
