# libveldrin-window.so, the windows on the display: a library that the program loads when it is to show some.
# Without Qt everything else is built all the same.

find_package(Qt6 6.4 QUIET COMPONENTS Widgets)
if(NOT Qt6_FOUND)
    message(STATUS "Windows are not built: there is no Qt 6")
    return()
endif()

file(GLOB window_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/app/window/*.cpp)
add_library(window_objects OBJECT ${window_sources})
target_include_directories(window_objects PUBLIC ${PROJECT_SOURCE_DIR}/app)
target_link_libraries(window_objects PUBLIC platform Qt6::Widgets)

add_library(veldrin_window MODULE)
set_target_properties(veldrin_window PROPERTIES
    OUTPUT_NAME veldrin-window
    LINKER_LANGUAGE CXX)
target_link_libraries(veldrin_window PRIVATE window_objects)
add_dependencies(veldrin veldrin_window)
install(TARGETS veldrin_window LIBRARY DESTINATION ${VELDRIN_LIB_DIR})
