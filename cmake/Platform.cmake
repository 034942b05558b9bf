# libveldrin, the drafting host: an object library for each room, all of them one shared library.

find_package(PkgConfig REQUIRED)
find_package(fmt REQUIRED)
find_package(SQLite3 REQUIRED)
pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo)

set(VELDRIN_ROOMS
    geometry system runtime lisp text ui drawing graphics files dao projects editor scripting)

# The rooms' foreign libraries. A room that is not named here does not find their headers through us.
set(VELDRIN_ROOM_graphics_LIBRARIES PkgConfig::CAIRO)
set(VELDRIN_ROOM_files_LIBRARIES SQLite::SQLite3)
set(VELDRIN_ROOM_dao_LIBRARIES SQLite::SQLite3)
set(VELDRIN_ROOM_projects_LIBRARIES SQLite::SQLite3)

set(platform_rooms)
foreach(room IN LISTS VELDRIN_ROOMS)
    file(GLOB sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/platform/${room}/*.cpp)
    if(NOT sources)
        continue()
    endif()
    add_library(room_${room} OBJECT ${sources})
    target_include_directories(room_${room} PRIVATE ${PROJECT_SOURCE_DIR}/platform)
    target_compile_definitions(room_${room} PRIVATE VELDRIN_BUILDING)
    target_link_libraries(room_${room} PRIVATE fmt::fmt ${VELDRIN_ROOM_${room}_LIBRARIES})
    list(APPEND platform_rooms room_${room})
endforeach()

add_library(platform SHARED)
set_target_properties(platform PROPERTIES
    OUTPUT_NAME veldrin
    LINKER_LANGUAGE CXX)
target_include_directories(platform INTERFACE ${PROJECT_SOURCE_DIR}/platform)
target_link_libraries(platform
    PUBLIC fmt::fmt
    PRIVATE ${platform_rooms} ${CMAKE_DL_LIBS})

install(TARGETS platform LIBRARY DESTINATION ${VELDRIN_LIB_DIR})
