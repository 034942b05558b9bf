# veldrin, the program, and the folders that it looks for beside itself.

find_package(CLI11 REQUIRED)
pkg_check_modules(EDITLINE IMPORTED_TARGET libedit)

file(GLOB cli_sources CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/app/cli/*.cpp)
if(cli_sources)
    add_executable(veldrin ${cli_sources})
    target_include_directories(veldrin PRIVATE ${PROJECT_SOURCE_DIR}/app)
    target_link_libraries(veldrin PRIVATE platform CLI11::CLI11)
    if(EDITLINE_FOUND)
        # The prompt keeps a history and edits its line; without the library it reads plain lines.
        target_compile_definitions(veldrin PRIVATE VELDRIN_EDITLINE)
        target_link_libraries(veldrin PRIVATE PkgConfig::EDITLINE)
    endif()
    # Not linked with the program but loaded by it, so its build has to ask for it.
    if(TARGET vq_plumb)
        add_dependencies(veldrin vq_plumb)
    endif()
    install(TARGETS veldrin RUNTIME DESTINATION bin)
endif()

foreach(folder lisp standards)
    if(EXISTS ${PROJECT_SOURCE_DIR}/${folder})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/${folder} ${CMAKE_BINARY_DIR}/${folder} SYMBOLIC)
        install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${VELDRIN_DATA_DIR})
    endif()
endforeach()
