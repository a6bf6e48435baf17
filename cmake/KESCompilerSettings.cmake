# Warnings and the sanitizer build, for every target of the project.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
    # The design uses Qt 5 API that Qt marks deprecated (QMatrix, QTextCodec,
    # QRegExp, QString::sprintf, QWheelEvent::pos): that warning alone is off.
    add_compile_options(-Wall -Wextra -Wno-deprecated-declarations)
endif()

if(KES_SANITIZE)
    set(KES_SANITIZER_FLAGS -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    add_compile_options(${KES_SANITIZER_FLAGS})
    add_link_options(${KES_SANITIZER_FLAGS})
endif()
