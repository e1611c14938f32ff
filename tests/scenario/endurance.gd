# The bot plays a farm at fixed step; every five minutes of game time the document is saved and set aside as
# round_<n>.json. With --again, builds the farm of the save as it lies, saves it at once and compares the documents.
# Words: --minutes=N --save=NAME --again
extends "../../tools/game_script.gd"

const ROUND_SECONDS := 300.0

var minutes := 60.0
var save_name := "endurance"
var again := false
var clock := 0.0
var rounds := 0
var ended := false
var poorest := 0


func _initialize() -> void:
    minutes = float(word("minutes", "60"))
    save_name = word("save", save_name)
    again = "--again" in OS.get_cmdline_user_args()
    seed(int(word("seed", "1")))
    start()


func path() -> String:
    return "user://save_%s.json" % save_name


func farm_of(text: String) -> Dictionary:
    var doc: Dictionary = JSON.parse_string(text)
    var farm: Dictionary = doc["farms"][int(doc["active"])]["farm"]
    farm.erase("saved_at")
    return farm


func _process(delta: float) -> bool:
    var farm := world()
    if again and farm != null:
        paused = true # the farm is built while it stands still: not even a belt takes a good before it is saved
    if ended or farm == null or farm.get_building():
        return false
    if again:
        compare(farm)
        return false
    clock += delta
    poorest = mini(poorest, farm.get_money())
    if clock >= ROUND_SECONDS * (rounds + 1):
        rounds += 1
        farm.save_now()
        DirAccess.copy_absolute(ProjectSettings.globalize_path(path()),
                ProjectSettings.globalize_path("user://round_%d.json" % rounds))
        print("ENDURANCE minute %d: money %d, level %d, regions %s" % [roundi(clock / 60.0), farm.get_money(),
                farm.level(), farm.get_regions().keys()])
    if clock >= minutes * 60.0 + 1.0:
        ended = true
        var orders: Dictionary = farm_of(FileAccess.get_file_as_string("user://round_%d.json" % rounds)).get("truck_done", {})
        var shipped: int = farm.flow_total("ship:bread")
        print("ENDURANCE reached: dairy %s, mill %s, food %s, factory %d, bread shipped %d, orders %s, poorest %d" % [
                farm.get_levels().has("land_dairy"), farm.get_levels().has("land_mill"),
                farm.get_levels().has("land_food"), farm.get_levels().get("bread_factory", 0), shipped, orders, poorest])
        quit(0 if poorest >= 0 and shipped > 0 else 1)
    return false


func compare(farm: Node) -> void:
    ended = true
    var before := farm_of(FileAccess.get_file_as_string(path()))
    farm.save_now()
    var after := farm_of(FileAccess.get_file_as_string(path()))
    var wrong := 0
    wrong += differ("", before, after)
    print("ENDURANCE loaded and saved: ", "the same" if wrong == 0 else "%d differences" % wrong)
    quit(0 if wrong == 0 else 1)


func differ(at: String, a: Variant, b: Variant) -> int:
    if a is Dictionary and b is Dictionary:
        var count := 0
        for key in a:
            count += differ("%s.%s" % [at, key], a[key], b.get(key))
        for key in b:
            if not a.has(key):
                count += differ("%s.%s" % [at, key], null, b[key])
        return count
    if JSON.stringify(a, "", true, true) == JSON.stringify(b, "", true, true):
        return 0
    print("ENDURANCE %s was %s and came back as %s" % [at, a, b])
    return 1
