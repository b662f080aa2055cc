# Which headers a room sees is a matter of its include path, so that the compiler refuses what the
# order of the rooms forbids.
include_guard(GLOBAL)

# vellum_room_includes(NAME ROOT FOLDER [LOWER...])
#
# Makes the interface library NAME. What links it may include the headers of ROOT/FOLDER, spelled
# from ROOT ("FOLDER/Header.h"), and those of the rooms LOWER, interface libraries made here
# before, with all that these may include; nothing else of ROOT is found. Folders within FOLDER are
# part of the room.
#
#   vellum_room_includes(host_script_headers ${root} script host_foundation_headers)
#   target_link_libraries(host_script PUBLIC host_script_headers)
#
# The room's include path is a folder of the build tree that holds one symbolic link to the room,
# at the place FOLDER names. Nothing is copied: compilers, dependencies and editors end at the
# source itself. Where links cannot be made, as on Windows without the right to, the include path
# is ROOT: everything builds, and the order is checked elsewhere.
function(vellum_room_includes name root folder)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE ${ARGN})
    set(base ${CMAKE_BINARY_DIR}/rooms/${name})
    set(link ${base}/${folder})
    set(target "")
    if(IS_SYMLINK ${link})
        file(READ_SYMLINK ${link} target)
    endif()
    if(NOT target STREQUAL "${root}/${folder}")
        # Also takes away what an earlier place of the room has left.
        file(REMOVE_RECURSE ${base})
        get_filename_component(parent ${link} DIRECTORY)
        file(MAKE_DIRECTORY ${parent})
        file(CREATE_LINK ${root}/${folder} ${link} RESULT problem SYMBOLIC)
        if(NOT problem STREQUAL "0")
            message(STATUS "${name}: no symbolic link (${problem}); it sees all of ${root}")
            set(base ${root})
        endif()
    endif()
    target_include_directories(${name} INTERFACE ${base})
endfunction()
