# How the targets of this project are made.

# Language level, warnings and floating point for a target of our own. Contraction is off because
# layouts have to be the same to the last bit on every machine.
function(nodeline_set_flags target)
    set_target_properties(${target} PROPERTIES
        CXX_STANDARD 20
        CXX_STANDARD_REQUIRED ON
        CXX_EXTENSIONS OFF)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wconversion
        $<$<BOOL:${NODELINE_WERROR}>:-Werror>
        -ffp-contract=off)
endfunction()

# nodeline_add_library(<name> SHARED_NAME <word> STATIC_NAME <word> FILE_NAME <stem>
#                      [USES <library>] [PACKAGES <target>...])
#
# One set of objects, linked as the shared library <name> and as the static library <name>_static;
# other projects know the two as nodeline::<word>. Both files are called after FILE_NAME. USES names a library made by this function: the
# shared one builds on its shared form, the static one on its static form, so that a program never
# holds two copies of it. Sources are added with nodeline_add_sources.
function(nodeline_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "SHARED_NAME;STATIC_NAME;FILE_NAME;USES" "PACKAGES")
    add_library(${name}_objects OBJECT)
    nodeline_set_flags(${name}_objects)
    set_target_properties(${name}_objects PROPERTIES
        POSITION_INDEPENDENT_CODE ON
        CXX_VISIBILITY_PRESET hidden
        VISIBILITY_INLINES_HIDDEN ON)
    # Without it, no exported function could be inlined inside the library.
    target_compile_options(${name}_objects PRIVATE -fno-semantic-interposition)
    target_include_directories(${name}_objects PRIVATE
        "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/platform")
    target_link_libraries(${name}_objects PRIVATE ${arg_PACKAGES})

    add_library(${name} SHARED $<TARGET_OBJECTS:${name}_objects>)
    add_library(${name}_static STATIC $<TARGET_OBJECTS:${name}_objects>)
    foreach(library IN ITEMS ${name} ${name}_static)
        target_compile_features(${library} PUBLIC cxx_std_20)
        target_include_directories(${library} PUBLIC
            "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
            "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/platform>"
            "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/nodeline>")
        target_link_libraries(${library} PUBLIC ${arg_PACKAGES})
        set_target_properties(${library} PROPERTIES
            OUTPUT_NAME ${arg_FILE_NAME}
            LINKER_LANGUAGE CXX)
    endforeach()
    target_compile_definitions(${name}_static PUBLIC NODELINE_STATIC)
    set_target_properties(${name} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
        EXPORT_NAME ${arg_SHARED_NAME})
    set_target_properties(${name}_static PROPERTIES EXPORT_NAME ${arg_STATIC_NAME})
    if(arg_USES)
        target_link_libraries(${name} PUBLIC ${arg_USES})
        target_link_libraries(${name}_static PUBLIC ${arg_USES}_static)
    endif()
    add_library(nodeline::${arg_SHARED_NAME} ALIAS ${name})
    add_library(nodeline::${arg_STATIC_NAME} ALIAS ${name}_static)
endfunction()

# Adds to library <name> what the patterns find under the current folder.
function(nodeline_add_sources name)
    list(TRANSFORM ARGN PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/")
    file(GLOB sources CONFIGURE_DEPENDS ${ARGN})
    target_sources(${name}_objects PRIVATE ${sources})
endfunction()

# Sets <result> to the sources among ARGN that can be built: those that include a backend are left
# out where there is none.
function(nodeline_buildable_sources result)
    set(buildable "")
    foreach(source IN LISTS ARGN)
        file(STRINGS "${source}" needs_cairo REGEX "#include <backends/cairo/" LIMIT_COUNT 1)
        file(STRINGS "${source}" needs_qt REGEX "#include <backends/qt/" LIMIT_COUNT 1)
        if((NODELINE_WITH_CAIRO OR NOT needs_cairo) AND (NODELINE_WITH_QT OR NOT needs_qt))
            list(APPEND buildable "${source}")
        endif()
    endforeach()
    set(${result} "${buildable}" PARENT_SCOPE)
endfunction()

# Links the static library and every backend without widgets to <target>, a part of a program.
function(nodeline_link_library target scope)
    target_link_libraries(${target} ${scope} nodeline_static nodeline_headless_static)
    if(NODELINE_WITH_CAIRO)
        target_link_libraries(${target} ${scope} nodeline_cairo_static)
        target_compile_definitions(${target} ${scope} NODELINE_WITH_CAIRO)
    endif()
endfunction()

# nodeline_add_program(<target> <source>...): a program of this project.
function(nodeline_add_program target)
    add_executable(${target} ${ARGN})
    nodeline_set_flags(${target})
    nodeline_link_library(${target} PRIVATE)
endfunction()
