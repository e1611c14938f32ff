# Builds every model once and keeps the triangles of their primitives in res://assets/prims.bin. Run by tools/prepare.
extends SceneTree


func _initialize() -> void:
    # Not before the residents stand.
    build_all.call_deferred()


func build_all() -> void:
    for row in BotActions.model_rows():
        var node: Node3D = BotActions.model(row[0])
        if node != null:
            node.free()
    BotActions.dump_prims()
    quit()
