# Warnings and the sanitizer build, for every target of the project.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # The design uses Qt 5 API that Qt marks deprecated (QMatrix, QTextCodec,
    # QRegExp, QString::sprintf, QWheelEvent::pos): that warning alone is off.
    add_compile_options(-Wall -Wextra -Wno-deprecated-declarations)
endif()

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC's straight-line vectoriser (seen with GCC 12 at -O2) drops the
    # rounding to float of two doubles that are widened back into one point
    # together, as in QPointF(float(x), float(y)). The shapes' results are
    # defined by that rounding, so the pass is off.
    add_compile_options(-fno-tree-slp-vectorize)
endif()

if(KES_SANITIZE)
    set(KES_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options(${KES_SANITIZER_FLAGS})
    add_link_options(${KES_SANITIZER_FLAGS})
endif()

# The ThreadSanitizer build, for the worker thread's frame path. It cannot be
# combined with AddressSanitizer. Optimised a little, so that the stress of the
# frame path runs in minutes; the source itself tells ThreadSanitizer of the
# orderings that Qt's futex-based locks make (data/threadannotations.h).
if(KES_TSAN)
    if(KES_SANITIZE OR KES_BUILD_FUZZ)
        message(FATAL_ERROR "KES_TSAN=ON cannot be combined with KES_SANITIZE or KES_BUILD_FUZZ: "
                            "ThreadSanitizer runs alone. Use a separate build directory.")
    endif()
    set(KES_TSAN_FLAGS -fsanitize=thread -fno-omit-frame-pointer)
    add_compile_options(${KES_TSAN_FLAGS} -O1)
    add_link_options(${KES_TSAN_FLAGS})
endif()

# The fuzz build: clang's libFuzzer with AddressSanitizer and
# UndefinedBehaviorSanitizer. Every object of the project gets the coverage
# instrumentation and the sanitizers, without libFuzzer's main; the fuzz
# executables (fuzz/) link libFuzzer itself through KES_FUZZ_LINK_FLAGS. Any
# undefined behaviour stops the run, so that the fuzzer records it.
if(KES_BUILD_FUZZ)
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        message(FATAL_ERROR
            "KES_BUILD_FUZZ=ON needs clang with libFuzzer, but the C++ compiler is "
            "${CMAKE_CXX_COMPILER_ID} (${CMAKE_CXX_COMPILER}). Configure a separate build "
            "directory with clang, e.g.: CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja "
            "-DKES_BUILD_FUZZ=ON -DKES_BUILD_TESTS=OFF -DKES_BUILD_BENCH=OFF -DKES_BUILD_EXAMPLES=OFF")
    endif()
    add_compile_options(-fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
    set(KES_FUZZ_LINK_FLAGS -fsanitize=fuzzer,address,undefined)
endif()
