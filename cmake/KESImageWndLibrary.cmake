# The image window library, libKESImageWnd, from the subsystem folders.

set(KES_PUBLIC_HEADERS
    frame/KESImageWnd.h
    data/vorimagewnd_global.h
    data/geometryhelpers.h
    data/datainterface.h
    data/imageconversion.h
)
set(KES_SOURCES
    data/geometryhelpers.cpp
    data/datainterface.cpp
    data/imageconversion.cpp

    frame/KESImageWnd.cpp
    frame/MainWindow.h
    frame/MainWindow.cpp
    frame/eventthread.h
    frame/eventthread.cpp

    view/imagectrlview.h
    view/imagectrlview.cpp
    view/imagectrlscene.h
    view/imagectrlscene.cpp
    view/ImageLayer.h
    view/ImageLayer.cpp
    view/qimagectrlscrollbar.h
    view/qimagectrlscrollbar.cpp

    shapes/odshape.h
    shapes/odshape.cpp
    shapes/odshapewatcher.h
    shapes/odshapewatcher.cpp
    shapes/boxhandles.h
    shapes/boxhandles.cpp
    shapes/odrect1.h
    shapes/odrect1.cpp
    shapes/odrect2.h
    shapes/odrect2.cpp
    shapes/odellipse.h
    shapes/odellipse.cpp
    shapes/searchline.h
    shapes/searchline.cpp
    shapes/HandleItem.h
    shapes/HandleItem.cpp
    shapes/GraphicsHandleItem.h
    shapes/GraphicsHandleItem.cpp
    shapes/Rect1HandleItem.h
    shapes/Rect1HandleItem.cpp
    shapes/Rect2HandleItem.h
    shapes/Rect2HandleItem.cpp
    shapes/CircleHandleItem.h
    shapes/CircleHandleItem.cpp

    tools/odshapetool.h
    tools/odshapetool.cpp
    tools/oddrawtool.h
    tools/odselecttool.h
    tools/odselecttool.cpp
    tools/odshapetoolmanage.h
    tools/odshapetoolmanage.cpp

    layers/odshapelayer.h
    layers/odshapelayer.cpp
    layers/ShapeLayer.h
    layers/ShapeLayer.cpp

    furniture/buttontoolbar.h
    furniture/buttontoolbar.cpp
    furniture/statusbar.h
    furniture/statusbar.cpp
    furniture/FloatAreaWidget.h
    furniture/FloatAreaWidget.cpp
    furniture/ui_FloatAreaWidget.h
    furniture/ui_FloatAreaWidget.cpp

    res/res.qrc
)

add_library(KESImageWnd SHARED ${KES_PUBLIC_HEADERS} ${KES_SOURCES})
add_library(KESImageWnd::KESImageWnd ALIAS KESImageWnd)
generate_export_header(KESImageWnd BASE_NAME KESImageWnd EXPORT_FILE_NAME kesimagewnd_export.h)

set(KES_SOURCE_FOLDERS data frame view shapes tools layers furniture)
foreach(_folder IN LISTS KES_SOURCE_FOLDERS)
    target_include_directories(KESImageWnd PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}/${_folder}")
endforeach()
target_include_directories(KESImageWnd PUBLIC
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/frame>"
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_SOURCE_DIR}/data>"
    "$<BUILD_INTERFACE:${CMAKE_CURRENT_BINARY_DIR}>"
    "$<INSTALL_INTERFACE:${KES_INSTALL_INCLUDEDIR}>")
# The window itself links OpenCV core alone (through VorData).
target_link_libraries(KESImageWnd PUBLIC Qt5::Core Qt5::Gui Qt5::Widgets VorData VorDataConvert)
# Hosts see the facade and the data types; the internal classes keep default
# visibility so that the test suite can reach them through the same library.
set_target_properties(KESImageWnd PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    EXPORT_NAME KESImageWnd
    CXX_VISIBILITY_PRESET default
    VISIBILITY_INLINES_HIDDEN OFF)

# The include folders of the internal classes, for the test suite.
add_library(KESImageWndInternals INTERFACE)
foreach(_folder IN LISTS KES_SOURCE_FOLDERS)
    target_include_directories(KESImageWndInternals INTERFACE "${CMAKE_CURRENT_SOURCE_DIR}/${_folder}")
endforeach()
target_link_libraries(KESImageWndInternals INTERFACE KESImageWnd)

install(TARGETS KESImageWnd EXPORT KESImageWndTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${KES_PUBLIC_HEADERS} "${CMAKE_CURRENT_BINARY_DIR}/kesimagewnd_export.h"
    DESTINATION ${KES_INSTALL_INCLUDEDIR})
