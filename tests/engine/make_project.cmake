# Makes the project in which the engine tests run: the game's own settings and assets, with the test runner in the place
# of the boot scene and without the resident nodes. Usage: cmake -DSOURCE=<root> -DOUT=<folder> -DLIBRARY=<file> -P
file(MAKE_DIRECTORY ${OUT}/.godot)
file(READ ${SOURCE}/project/project.godot settings)
string(REPLACE "res://boot.tscn" "res://runner.tscn" settings "${settings}")
string(REGEX REPLACE "\\[autoload\\][^[]*" "" settings "${settings}")
file(WRITE ${OUT}/project.godot "${settings}")
file(WRITE ${OUT}/runner.tscn "[gd_scene format=3]\n\n[node name=\"TestRunner\" type=\"TestRunner\"]\n")
file(WRITE ${OUT}/tests.gdextension "[configuration]\n\nentry_symbol = \"tilmarch_tests_init\"\n"
    "compatibility_minimum = \"4.4\"\nreloadable = false\n\n[libraries]\n\nlinux = \"${LIBRARY}\"\n")
file(WRITE ${OUT}/.godot/extension_list.cfg "res://tests.gdextension\n")
foreach(shared assets shaders boot.tscn default_bus_layout.tres)
    if(EXISTS ${SOURCE}/project/${shared})
        file(CREATE_LINK ${SOURCE}/project/${shared} ${OUT}/${shared} SYMBOLIC)
    endif()
endforeach()
# Imported once for the game, used by both.
file(MAKE_DIRECTORY ${SOURCE}/project/.godot/imported)
file(CREATE_LINK ${SOURCE}/project/.godot/imported ${OUT}/.godot/imported SYMBOLIC)
