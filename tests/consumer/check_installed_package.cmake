# Installs the build into a fresh prefix, then configures, builds and runs the
# consumer program against the CMake package, and compiles it once more with the
# flags of the pkg-config file.
#
# Variables: BUILD_DIR, SOURCE_DIR, WORK_DIR, GENERATOR, CXX_FLAGS, CXX_COMPILER.

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")

function(run_step what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "${what} failed (${result}):\n${out}\n${err}")
    endif()
    set(last_output "${out}" PARENT_SCOPE)
endfunction()

run_step("install" "${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${prefix}")
foreach(header KESImageWnd.h VorImage.h VORMV.h vorimagewnd_global.h kesimagewnd_export.h)
    if(NOT EXISTS "${prefix}/include/KESImageWnd/${header}")
        message(FATAL_ERROR "installed headers lack ${header}")
    endif()
endforeach()

run_step("consumer configure" "${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
    "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}" "-DCMAKE_CXX_COMPILER=${CXX_COMPILER}")
run_step("consumer build" "${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run_step("consumer run" "${WORK_DIR}/build/consumer")
if(NOT last_output MATCHES "consumer ok")
    message(FATAL_ERROR "consumer printed: ${last_output}")
endif()

file(GLOB_RECURSE pc_files "${prefix}/*/KESImageWnd.pc")
list(LENGTH pc_files pc_count)
if(NOT pc_count EQUAL 1)
    message(FATAL_ERROR "expected one KESImageWnd.pc, found: ${pc_files}")
endif()
get_filename_component(pc_dir "${pc_files}" DIRECTORY)
set(ENV{PKG_CONFIG_PATH} "${pc_dir}")
run_step("pkg-config" pkg-config --cflags --libs KESImageWnd)
string(STRIP "${last_output}" pc_flags)
separate_arguments(pc_flags UNIX_COMMAND "${pc_flags}")
separate_arguments(extra_flags UNIX_COMMAND "${CXX_FLAGS}")
run_step("pkg-config compile" "${CXX_COMPILER}" -std=c++17 -fPIC ${extra_flags}
    "${SOURCE_DIR}/main.cpp" -o "${WORK_DIR}/consumer-pc" ${pc_flags} "-Wl,-rpath,${prefix}/lib")
