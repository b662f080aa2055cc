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
include_directories(${CMAKE_SOURCE_DIR})

# Floors below the interface see Maya's headers and no widgets; only the module is linked with what
# plays Maya's part.
vellum_room(vellum_base STATIC ${CMAKE_SOURCE_DIR}/plugin/base maya_api ${VELLUM_QT_GUI})
vellum_room(vellum_raster STATIC ${CMAKE_SOURCE_DIR}/tools/raster ${VELLUM_QT_GUI} ZLIB::ZLIB)
vellum_room(vellum_gestures STATIC ${CMAKE_SOURCE_DIR}/tools/gestures vellum_raster)
vellum_room(vellum_document STATIC ${CMAKE_SOURCE_DIR}/document vellum_raster vellum_base)
vellum_room(vellum_node STATIC ${CMAKE_SOURCE_DIR}/node vellum_document OpenGL::GL)
vellum_room(vellum_session STATIC ${CMAKE_SOURCE_DIR}/plugin/session vellum_node
    ${VELLUM_QT_WIDGETS})
vellum_room(vellum_interaction STATIC ${CMAKE_SOURCE_DIR}/tools/interaction vellum_session
    vellum_gestures ${vellum_pointer_library} OpenGL::GL)
vellum_room(vellum_commands STATIC ${CMAKE_SOURCE_DIR}/commands vellum_session)
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
    target_link_libraries(vellum2 PRIVATE vellum_commands vellum_interaction)
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
