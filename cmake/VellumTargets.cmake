# Compiler settings and the few helper functions all targets share.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/lib)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "" FORCE)
endif()
# The developers' build is optimised but keeps its assertions.
set(CMAKE_CXX_FLAGS_RELWITHDEBINFO "-O2 -g1")

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
        CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

if(VELLUM_SANITIZE)
    # GCC sees uninitialised values in optionals where the sanitizers' own code is in between.
    add_compile_options(-fsanitize=${VELLUM_SANITIZE} -fno-omit-frame-pointer
        -Wno-maybe-uninitialized)
    add_link_options(-fsanitize=${VELLUM_SANITIZE})
    set(VELLUM_SANITIZER_SOURCES ${CMAKE_SOURCE_DIR}/scripts/sanitizers/keep_loaded.cpp)
endif()

if(VELLUM_QT EQUAL 6)
    find_package(Qt6 REQUIRED COMPONENTS Core Gui Widgets OpenGL OpenGLWidgets)
    set(VELLUM_QT_GL Qt6::OpenGL Qt6::OpenGLWidgets)
else()
    find_package(Qt5 5.15 REQUIRED COMPONENTS Core Gui Widgets)
    set(VELLUM_QT_GL "")
endif()
set(VELLUM_QT_CORE Qt${VELLUM_QT}::Core)
set(VELLUM_QT_GUI Qt${VELLUM_QT}::Gui)
set(VELLUM_QT_WIDGETS Qt${VELLUM_QT}::Widgets)
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY)

# What the compiler says about our own code. Errors only where VELLUM_WERROR asks for it, as the
# presets of developers do: a new compiler's new warning shall not stop those who only build.
option(VELLUM_WERROR "Warnings about our own code are errors" OFF)
function(vellum_warnings target)
    if(MSVC)
        target_compile_options(${target} PRIVATE /W4 /utf-8 $<$<BOOL:${VELLUM_WERROR}>:/WX>)
    else()
        target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow
            -Wnon-virtual-dtor $<$<BOOL:${VELLUM_WERROR}>:-Werror>)
    endif()
endfunction()

# vellum_room(NAME TYPE FOLDER LIBRARIES...): a library of all sources of one folder and of the
# folders in it.
function(vellum_room name type folder)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
    set(compiled ${sources})
    list(FILTER compiled INCLUDE REGEX "\\.cpp$")
    if(NOT compiled)
        add_library(${name} INTERFACE)
        target_link_libraries(${name} INTERFACE ${ARGN})
        return()
    endif()
    add_library(${name} ${type} ${sources})
    target_link_libraries(${name} PUBLIC ${ARGN})
    vellum_warnings(${name})
endfunction()
