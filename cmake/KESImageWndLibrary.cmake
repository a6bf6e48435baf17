# The image window library, libKESImageWnd: the target, its export header and
# what a host links. Each subsystem folder lists its own sources in its
# CMakeLists.txt (target_sources); the folders whose headers a host includes
# through <KESImageWnd.h> (frame/, data/) install those too.

# The internal classes carry KESIMAGEWND_TESTS_EXPORT. It exports them only in
# a build with the programs of this tree that reach inside the library: the
# tests, the benchmarks and the fuzzers. With those off, the library exports
# the facade and the data types alone.
if(KES_BUILD_TESTS OR KES_BUILD_BENCH OR KES_BUILD_FUZZ)
    set(KES_EXPORT_INTERNALS ON)
    set(_kes_tests_export "KESIMAGEWND_EXPORT")
else()
    set(KES_EXPORT_INTERNALS OFF)
    set(_kes_tests_export "")
endif()
set(KES_TESTS_EXPORT_CONTENT
"
/* Internal classes that the tests, benchmarks and fuzzers of the source tree
   reach: exported only in a build that makes those programs. */
#define KESIMAGEWND_TESTS_EXPORT ${_kes_tests_export}
")

kes_add_library(KESImageWnd CUSTOM_CONTENT_FROM_VARIABLE KES_TESTS_EXPORT_CONTENT)

set(KES_SOURCE_FOLDERS data frame view shapes tools layers furniture)
foreach(_folder IN LISTS KES_SOURCE_FOLDERS)
    add_subdirectory(${_folder})
    target_include_directories(KESImageWnd PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/${_folder}")
endforeach()
add_subdirectory(res)

target_include_directories(KESImageWnd PUBLIC
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/frame>"
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/data>")
# The window itself links OpenCV core alone (through VorData).
target_link_libraries(KESImageWnd PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets VorData VorDataConvert)

# The include folders of the internal classes, for the programs of this tree
# that reach inside; a build that exports no internal class has no such target.
if(KES_EXPORT_INTERNALS)
    add_library(KESImageWndInternals INTERFACE)
    foreach(_folder IN LISTS KES_SOURCE_FOLDERS)
        target_include_directories(KESImageWndInternals INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/${_folder}")
    endforeach()
    target_link_libraries(KESImageWndInternals INTERFACE KESImageWnd)
endif()
