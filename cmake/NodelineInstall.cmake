# Install rules: per library a set of exported targets, its headers and a pkg-config file. Headers
# go below one folder of their own, which is the include root, so that <nodeline/model/graph.h>
# and <paintcore/painter.h> are found in an installed copy as they are in this tree.

include(CMakePackageConfigHelpers)

set(header_root "${CMAKE_INSTALL_INCLUDEDIR}/nodeline")
set(package_folder "${CMAKE_INSTALL_LIBDIR}/cmake/nodeline")
set(pkgconfig_folder "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# A .pc file says where things are relative to itself, so that an installed tree can be moved.
file(RELATIVE_PATH NODELINE_PC_PREFIX "/${pkgconfig_folder}" "/")
string(REGEX REPLACE "/$" "" NODELINE_PC_PREFIX "${NODELINE_PC_PREFIX}")

function(nodeline_install_library name component)
    install(TARGETS ${name} ${name}_static EXPORT ${component}
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
            COMPONENT runtime NAMELINK_COMPONENT development
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT development)
    install(EXPORT ${component}
        NAMESPACE nodeline::
        FILE nodeline-${component}-targets.cmake
        DESTINATION "${package_folder}"
        COMPONENT development)
endfunction()

function(nodeline_install_headers folder destination)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/${folder}/"
        DESTINATION "${header_root}/${destination}"
        COMPONENT development
        FILES_MATCHING PATTERN "*.h" PATTERN "internal" EXCLUDE)
endfunction()

function(nodeline_install_pkgconfig name description requires requires_private)
    set(NODELINE_PC_NAME "${name}")
    set(NODELINE_PC_DESCRIPTION "${description}")
    set(NODELINE_PC_REQUIRES "${requires}")
    set(NODELINE_PC_REQUIRES_PRIVATE "${requires_private}")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/nodeline.pc.in" "${PROJECT_BINARY_DIR}/${name}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${name}.pc"
        DESTINATION "${pkgconfig_folder}" COMPONENT development)
endfunction()

nodeline_install_library(nodeline core)
nodeline_install_headers(nodeline nodeline)
nodeline_install_headers(platform "")
nodeline_install_pkgconfig(nodeline "${PROJECT_DESCRIPTION}" "" "")

if(NODELINE_HEADLESS)
    nodeline_install_library(nodeline_headless headless)
    nodeline_install_headers(backends/headless backends/headless)
    nodeline_install_pkgconfig(nodeline-headless
        "Recording painter and scripted windows for nodeline" "nodeline" "")
endif()

if(NODELINE_WITH_CAIRO)
    nodeline_install_library(nodeline_cairo cairo)
    nodeline_install_headers(backends/cairo backends/cairo)
    nodeline_install_pkgconfig(nodeline-cairo
        "SVG, PDF and PNG pictures of nodeline graphs" "nodeline" "pangocairo cairo-svg cairo-pdf")
endif()

if(NODELINE_WITH_QT)
    # Where there is the Cairo backend, the widgets write their pictures with it.
    set(qt_uses nodeline)
    if(NODELINE_WITH_CAIRO)
        set(qt_uses nodeline-cairo)
    endif()
    nodeline_install_library(nodeline_qt qt)
    nodeline_install_headers(backends/qt backends/qt)
    nodeline_install_pkgconfig(nodeline-qt
        "Qt widgets that show nodeline graphs" "${qt_uses} Qt6Widgets" "")
endif()

if(TARGET nodeline_cli)
    install(TARGETS nodeline_cli
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT programs)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/man/nodeline.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT programs)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/completion/nodeline"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT programs)
endif()

if(TARGET nodeline_viewer)
    install(TARGETS nodeline_viewer
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT programs)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/viewer/nodeline-viewer.desktop"
        DESTINATION "${CMAKE_INSTALL_DATADIR}/applications" COMPONENT programs)
    install(FILES "${PROJECT_SOURCE_DIR}/apps/man/nodeline-viewer.1"
        DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT programs)
endif()

configure_package_config_file(
    "${PROJECT_SOURCE_DIR}/cmake/nodelineConfig.cmake.in"
    "${PROJECT_BINARY_DIR}/nodelineConfig.cmake"
    INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/nodelineConfigVersion.cmake"
    COMPATIBILITY SameMinorVersion)
install(FILES
    "${PROJECT_BINARY_DIR}/nodelineConfig.cmake"
    "${PROJECT_BINARY_DIR}/nodelineConfigVersion.cmake"
    DESTINATION "${package_folder}"
    COMPONENT development)
