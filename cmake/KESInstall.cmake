# The CMake package KESImageWnd and the pkg-config file.

install(EXPORT KESImageWndTargets
    NAMESPACE KESImageWnd::
    FILE KESImageWndTargets.cmake
    DESTINATION ${KES_INSTALL_CMAKEDIR})

configure_package_config_file(
    "${CMAKE_CURRENT_SOURCE_DIR}/cmake/KESImageWndConfig.cmake.in"
    "${CMAKE_CURRENT_BINARY_DIR}/KESImageWndConfig.cmake"
    INSTALL_DESTINATION ${KES_INSTALL_CMAKEDIR})
write_basic_package_version_file(
    "${CMAKE_CURRENT_BINARY_DIR}/KESImageWndConfigVersion.cmake"
    COMPATIBILITY SameMajorVersion)
install(FILES
    "${CMAKE_CURRENT_BINARY_DIR}/KESImageWndConfig.cmake"
    "${CMAKE_CURRENT_BINARY_DIR}/KESImageWndConfigVersion.cmake"
    "${CMAKE_CURRENT_SOURCE_DIR}/cmake/FindOpenCVCore.cmake"
    DESTINATION ${KES_INSTALL_CMAKEDIR})

# The .pc file finds its prefix from its own place, so any install prefix works.
file(RELATIVE_PATH KES_PC_PREFIX_FROM_PCDIR
    "/prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/prefix")
configure_file(
    "${CMAKE_CURRENT_SOURCE_DIR}/cmake/KESImageWnd.pc.in"
    "${CMAKE_CURRENT_BINARY_DIR}/KESImageWnd.pc" @ONLY)
install(FILES "${CMAKE_CURRENT_BINARY_DIR}/KESImageWnd.pc"
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
