# Warnings are errors in the project's own code.
set(VESK_WARNINGS -Wall -Wextra -Werror)

# vesk_add_library(<target> <alias> <BUILD_DEFINE> SOURCES ... HEADERS ... INCLUDE_DIRS ... LINK ...)
# A shared library with hidden visibility, an SONAME and its public headers
# reachable by their bare names, both in the build tree and once installed.
function(vesk_add_library target alias build_define)
    cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;INCLUDE_DIRS;LINK" ${ARGN})
    add_library(${target} SHARED ${ARG_SOURCES} ${ARG_HEADERS})
    add_library(${alias} ALIAS ${target})
    target_compile_definitions(${target} PRIVATE ${build_define}
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII)
    target_compile_options(${target} PRIVATE ${VESK_WARNINGS})
    foreach(dir IN LISTS ARG_INCLUDE_DIRS)
        target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${dir}>)
    endforeach()
    target_include_directories(${target} PUBLIC
        $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/vesk>)
    target_link_libraries(${target} PUBLIC ${ARG_LINK})
    # Installed side by side, the libraries find each other through their
    # own location, wherever the package is installed: a program's runpath
    # serves only the libraries it links itself, not their dependencies.
    if(APPLE)
        set(origin "@loader_path")
    else()
        set(origin "$ORIGIN")
    endif()
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "${origin}")
    string(REPLACE "Vesk::" "" export_name ${alias})
    set_target_properties(${target} PROPERTIES EXPORT_NAME ${export_name})
    install(TARGETS ${target} EXPORT VeskTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${ARG_HEADERS} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/vesk)
endfunction()
