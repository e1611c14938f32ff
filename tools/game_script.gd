# What every script that runs the game has in common: it starts it, finds its parts and reads the words of its caller.
extends SceneTree

var main: Node


func start() -> void:
    main = (load("res://boot.tscn") as PackedScene).instantiate()
    root.add_child.call_deferred(main)


# What stands behind `--name=` on the command line.
func word(name: String, otherwise: String) -> String:
    for given in OS.get_cmdline_user_args():
        if given.begins_with("--%s=" % name):
            return given.trim_prefix("--%s=" % name)
    return otherwise


func of_class(name: String) -> Node:
    if main != null:
        for child in main.get_children():
            if child.is_class(name) and not child.is_queued_for_deletion():
                return child
    return null


# The farm, also while it is being built.
func world() -> Node:
    return of_class("World")
