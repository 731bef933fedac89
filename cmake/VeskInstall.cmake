include(CMakePackageConfigHelpers)

set(VESK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Vesk)
install(EXPORT VeskTargets NAMESPACE Vesk:: DESTINATION ${VESK_CMAKE_DIR})
configure_package_config_file(cmake/VeskConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/VeskConfig.cmake
    INSTALL_DESTINATION ${VESK_CMAKE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/VeskConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/VeskConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/VeskConfigVersion.cmake
    DESTINATION ${VESK_CMAKE_DIR})

# The .pc file finds its prefix relative to itself, so the package can be
# installed anywhere with cmake --install --prefix.
file(RELATIVE_PATH VESK_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
set(VESK_PC_QT_REQUIRES "${VESK_QT}Core ${VESK_QT}Xml")
configure_file(cmake/vesk_data.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vesk_data.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vesk_data.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

# The widgets companion, when it is built, has its own .pc file.
if(TARGET vesk_widgets)
    set(VESK_PC_WIDGETS_REQUIRES "vesk_data ${VESK_QT}Widgets")
    configure_file(cmake/vesk_widgets.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vesk_widgets.pc @ONLY)
    install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vesk_widgets.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
