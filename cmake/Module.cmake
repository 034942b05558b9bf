# vq_plumb.arx, the plumbing module. Its objects are linked into the module and into its unit tests, never
# both in one process.

file(GLOB_RECURSE module_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/module/*.cpp)
if(NOT module_sources)
    return()
endif()

add_library(module_objects OBJECT ${module_sources})
target_include_directories(module_objects PUBLIC ${PROJECT_SOURCE_DIR}/module)
target_link_libraries(module_objects PUBLIC platform)

add_library(vq_plumb MODULE)
set_target_properties(vq_plumb PROPERTIES
    PREFIX ""
    SUFFIX ".arx"
    LINKER_LANGUAGE CXX)
target_link_libraries(vq_plumb PRIVATE module_objects)

install(TARGETS vq_plumb LIBRARY DESTINATION ${VELDRIN_LIB_DIR})
