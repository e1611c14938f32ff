# Farms out of damaged save files: values of other types and sizes, missing and unknown keys, cut and changed bytes. Each
# must be built, run two seconds and be saved again as a sound document; what the engine logs is judged by the caller.
# A round is made by its number alone. Words: --from=N --rounds=N --base=FILE [--save=NAME]
extends "../../tools/game_script.gd"

const RUN_FRAMES := 60
const BUILD_FRAMES := 900

var base := {}
var save_name := "fuzz"
var round_now := 0
var last_round := 0
var frame := 0
var failures := 0
var random := RandomNumberGenerator.new()
var values := [null, true, false, -1, 0, 7, 1e300, -1e300, 0.5, 9223372036854775807, -9223372036854775808, "", "-5", "egg",
        "\u202e", "land_nowhere", [], {}, [[]], [null, {}, "x"], {"egg": -3, "": 1}, {"x": {"x": {"x": []}}}]


func _initialize() -> void:
    values.append("W".repeat(5000))
    save_name = word("save", save_name)
    round_now = int(word("from", "0"))
    last_round = round_now + int(word("rounds", "40"))
    base = JSON.parse_string(FileAccess.get_file_as_string(word("base", "")))
    next_round.call_deferred()


func path() -> String:
    return "user://save_%s.json" % save_name


func next_round() -> void:
    if main != null:
        main.free()
    round_now += 1
    if round_now > last_round:
        print("FUZZ rounds done, %d failed" % failures)
        quit(1 if failures > 0 else 0)
        return
    random.seed = round_now
    var doc := base.duplicate(true)
    var told := PackedStringArray()
    for i in random.randi_range(1, 8):
        told.push_back(damage(doc["farms"] if random.randf() < 0.9 else doc))
    var bytes := JSON.stringify(doc).to_utf8_buffer()
    if random.randf() < 0.15:
        told.push_back(damage_bytes(bytes))
    var out := FileAccess.open(path(), FileAccess.WRITE)
    out.store_buffer(bytes)
    out.close()
    for leftover in [".bak", ".tmp", ".corrupt"]:
        DirAccess.remove_absolute(ProjectSettings.globalize_path(path() + leftover))
    print("FUZZ round %d: %s" % [round_now, "; ".join(told)])
    frame = 0
    root.get_node("Save").read()
    main = (load("res://boot.tscn") as PackedScene).instantiate()
    root.add_child(main)


# Changes one place below the node, each as likely as any other, and tells which.
func damage(doc: Variant) -> String:
    var places := []
    list_places(doc, "", places)
    if places.is_empty():
        return "empty"
    var place: Array = places[random.randi() % places.size()]
    var node: Variant = place[0]
    var key: Variant = place[1]
    match random.randi() % 4:
        0:
            if node is Dictionary:
                node.erase(key)
            else:
                node.remove_at(key)
            return place[2] + " gone"
        1:
            if node is Dictionary:
                node[str(key) + "_nowhere" if random.randf() < 0.5 else str(any_value()).left(40)] = node[key]
            else:
                node.append(node[key])
            return place[2] + " doubled"
        _:
            var value: Variant = any_value()
            node[key] = value
            return "%s = %s" % [place[2], str(value).left(30).c_escape()]


func any_value() -> Variant:
    var value: Variant = values[random.randi() % values.size()]
    return value.duplicate(true) if value is Array or value is Dictionary else value


func list_places(node: Variant, at: String, places: Array) -> void:
    for key in node.keys() if node is Dictionary else range(node.size()):
        var here := "%s/%s" % [at, key]
        places.push_back([node, key, here])
        if node[key] is Dictionary or node[key] is Array:
            list_places(node[key], here, places)


func damage_bytes(bytes: PackedByteArray) -> String:
    if random.randf() < 0.5:
        bytes.resize(random.randi() % bytes.size())
        return "cut to %d bytes" % bytes.size()
    for i in random.randi_range(1, 4):
        bytes[random.randi() % bytes.size()] = random.randi() % 256
    return "bytes changed"


func _process(_delta: float) -> bool:
    if main == null:
        return false
    frame += 1
    var farm := world()
    if farm == null or farm.get_building():
        if frame > BUILD_FRAMES:
            fail("the farm was never built")
            next_round.call_deferred()
            main.free()
            main = null
        return false
    if frame < BUILD_FRAMES * 2:
        frame = BUILD_FRAMES * 2
    if frame > BUILD_FRAMES * 2 + RUN_FRAMES:
        farm.save_now()
        print("FUZZ round %d: %d levels stand, $%d" % [round_now, farm.total_levels(), farm.get_money()])
        look_at_save()
        frame = -1000000
        next_round.call_deferred()
    return false


func look_at_save() -> void:
    var doc: Variant = JSON.parse_string(FileAccess.get_file_as_string(path()))
    if not doc is Dictionary or not doc.get("farms") is Array or doc["farms"].is_empty():
        fail("the saved document is not sound")
        return
    var active: int = doc["active"]
    if active < 0 or active >= doc["farms"].size():
        fail("the active farm %d is not there" % active)
        return
    var farm: Dictionary = doc["farms"][active]["farm"]
    if farm.get("money", 0) < 0 or farm.get("money", 0) > 1e18:
        fail("money %s" % farm.get("money"))
    var levels: Dictionary = farm.get("levels", {})
    for id in levels:
        if not levels[id] is float or levels[id] < 0 or levels[id] > 100000:
            fail("level of %s: %s" % [id, levels[id]])


func fail(why: String) -> void:
    failures += 1
    print("FUZZ round %d FAILED: %s" % [round_now, why])
