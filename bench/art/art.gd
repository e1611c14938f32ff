# Bakes every key of the model table in a process that has baked nothing yet. Run by bench/art/run.
extends SceneTree


func _initialize() -> void:
    bake_all.call_deferred()


func bake_all() -> void:
    var count := 0
    var started := Time.get_ticks_usec()
    for row in BotActions.model_rows():
        var node: Node3D = BotActions.model(row[0])
        if node != null:
            count += 1
            node.free()
    print("| %d models | %.2f s |" % [count, (Time.get_ticks_usec() - started) / 1e6])
    quit()
