# Finds the OpenCV modules this project uses (core, imgproc, imgcodecs) from
# Debian's per-module -dev packages, which ship no OpenCVConfig.cmake.
#
# Defines the imported targets OpenCV::core, OpenCV::imgproc and
# OpenCV::imgcodecs (each when found) and OpenCVCore_FOUND.

find_path(OpenCVCore_INCLUDE_DIR
    NAMES opencv2/core.hpp
    PATH_SUFFIXES opencv4)

set(_kes_opencv_modules core imgproc imgcodecs)
foreach(_module IN LISTS _kes_opencv_modules)
    find_library(OpenCVCore_${_module}_LIBRARY NAMES opencv_${_module})
    if(OpenCVCore_INCLUDE_DIR AND OpenCVCore_${_module}_LIBRARY AND NOT TARGET OpenCV::${_module})
        add_library(OpenCV::${_module} SHARED IMPORTED)
        set_target_properties(OpenCV::${_module} PROPERTIES
            IMPORTED_LOCATION "${OpenCVCore_${_module}_LIBRARY}"
            INTERFACE_INCLUDE_DIRECTORIES "${OpenCVCore_INCLUDE_DIR}")
    endif()
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVCore
    REQUIRED_VARS OpenCVCore_INCLUDE_DIR OpenCVCore_core_LIBRARY)
mark_as_advanced(OpenCVCore_INCLUDE_DIR)
