# kes_add_library(<name> [CUSTOM_CONTENT_FROM_VARIABLE <variable>])
#
# One shared library of the package, made the same way for each: the target
# with no sources yet (its folders add them with target_sources), the alias
# KESImageWnd::<name>, the export header <name in lower case>_export.h in the
# current build folder (with the text of <variable> at its end), the version,
# and the install rules of the library and of that header. Symbols are hidden
# unless their declaration carries the export macro.
function(kes_add_library name)
    cmake_parse_arguments(ARG "" "CUSTOM_CONTENT_FROM_VARIABLE" "" ${ARGN})
    string(TOLOWER "${name}" _lower)
    set(_export_header "${CMAKE_CURRENT_BINARY_DIR}/${_lower}_export.h")

    add_library(${name} SHARED)
    add_library(KESImageWnd::${name} ALIAS ${name})
    if(ARG_CUSTOM_CONTENT_FROM_VARIABLE)
        generate_export_header(${name} BASE_NAME ${name} EXPORT_FILE_NAME "${_export_header}"
            CUSTOM_CONTENT_FROM_VARIABLE ${ARG_CUSTOM_CONTENT_FROM_VARIABLE})
    else()
        generate_export_header(${name} BASE_NAME ${name} EXPORT_FILE_NAME "${_export_header}")
    endif()
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>"
        "$<INSTALL_INTERFACE:${KES_INSTALL_INCLUDEDIR}>")
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
        EXPORT_NAME ${name}
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)

    install(TARGETS ${name} EXPORT KESImageWndTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES "${_export_header}" DESTINATION ${KES_INSTALL_INCLUDEDIR})
endfunction()
