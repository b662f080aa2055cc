# The plug-in: one static library a room, arrows only upwards in this list, then the module.
find_package(OpenGL REQUIRED COMPONENTS OpenGL)
find_package(ZLIB REQUIRED)
if(UNIX AND NOT APPLE)
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb)
    set(vellum_pointer_library PkgConfig::XCB)
endif()
if(WIN32)
    set(vellum_pointer_library winmm user32)
endif()
if(NOT TARGET OpenGL::GL)
    find_package(OpenGL REQUIRED)
endif()

set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
include(VellumRooms)

# plugin_floor(NAME FOLDER [KNOWS FLOORS...] [LINKS LIBRARIES...]): the sources of one folder as the
# library vellum_NAME, which finds its own headers and those of the floors it KNOWS, with all that
# these know, and no others.
macro(plugin_floor name folder)
    cmake_parse_arguments(floor "" "" "KNOWS;LINKS" ${ARGN})
    list(TRANSFORM floor_KNOWS PREPEND vellum_)
    set(floor_headers ${floor_KNOWS})
    list(TRANSFORM floor_headers APPEND _headers)
    vellum_room_includes(vellum_${name}_headers ${CMAKE_SOURCE_DIR} ${folder} ${floor_headers})
    vellum_room(vellum_${name} STATIC ${CMAKE_SOURCE_DIR}/${folder} vellum_${name}_headers
        ${floor_KNOWS} ${floor_LINKS})
endmacro()

# From the bottom up. Floors below the session see no widgets; only the module is linked with what
# plays Maya's part.
plugin_floor(base plugin/base LINKS maya_api ${VELLUM_QT_GUI})
plugin_floor(raster tools/raster LINKS vellum_base_headers ${VELLUM_QT_GUI} ZLIB::ZLIB)
plugin_floor(gestures tools/gestures KNOWS raster)
plugin_floor(document document KNOWS raster base)
plugin_floor(node node KNOWS document LINKS OpenGL::GL)
plugin_floor(session plugin/session KNOWS node LINKS ${VELLUM_QT_WIDGETS})
plugin_floor(interaction tools/interaction KNOWS session gestures
    LINKS ${vellum_pointer_library})
plugin_floor(commands commands KNOWS session)
plugin_floor(ui ui KNOWS session)
# Pixel loops are optimised for the vectoriser whatever the configuration.
foreach(room vellum_raster vellum_document)
    get_target_property(kind ${room} TYPE)
    if(NOT kind STREQUAL "INTERFACE_LIBRARY")
        target_compile_options(${room} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-O3>)
    endif()
endforeach()

file(GLOB entry_sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/plugin/entry/*.cpp
    ${CMAKE_SOURCE_DIR}/plugin/entry/*.h ${CMAKE_SOURCE_DIR}/resources/*.qrc)
set(entry_compiled ${entry_sources})
list(FILTER entry_compiled INCLUDE REGEX "\\.cpp$")
if(entry_compiled)
    add_library(vellum2 MODULE ${entry_sources})
    vellum_room_includes(vellum_entry_headers ${CMAKE_SOURCE_DIR} plugin/entry)
    target_link_libraries(vellum2 PRIVATE vellum_entry_headers vellum_commands vellum_interaction
        vellum_ui)
    if(TARGET vellumhost)
        target_link_libraries(vellum2 PRIVATE vellumhost)
    endif()
    vellum_warnings(vellum2)
    set_target_properties(vellum2 PROPERTIES PREFIX "")
    if(WIN32)
        set_target_properties(vellum2 PROPERTIES SUFFIX ".mll")
    elseif(APPLE)
        set_target_properties(vellum2 PROPERTIES SUFFIX ".bundle")
    endif()
endif()

# The host's and the tests' own targets, made after this file, stay visible.
unset(CMAKE_CXX_VISIBILITY_PRESET)
unset(CMAKE_VISIBILITY_INLINES_HIDDEN)
