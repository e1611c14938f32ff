# Plays the first loop of the game in a real window with real key events, the way a person would: from an empty farm to
# eggs sold. Started twice: `-- --first` plays and quits, `-- --second` comes back and compares the farm with what was
# left. Needs xdotool and a display.
extends "../../tools/game_script.gd"

const LIMIT_SECONDS := 420.0
const KEYS := {Vector2i(-1, 0): "Left", Vector2i(1, 0): "Right", Vector2i(0, -1): "Up", Vector2i(0, 1): "Down"}

var bot: Object
var held := {}
var clock := 0.0
var key_clock := 0.0
var second := false
var ended := false
var eggs_sold := false


func _initialize() -> void:
    second = "--second" in OS.get_cmdline_user_args()
    start()


func _process(delta: float) -> bool:
    if ended:
        return false
    clock += delta
    var farm := world()
    if farm == null or farm.get_building():
        if clock > 60.0:
            finish(1, "the farm was not built in time")
        return false
    if second:
        compare(farm)
        return false
    play(farm, delta)
    return false


func play(farm: Node, delta: float) -> void:
    if bot == null:
        bot = ClassDB.instantiate("BotActions")
        bot.setup(farm)
    press(bot.wish(delta))
    var levels: Dictionary = farm.get_levels()
    if levels.get("coop_a", 0) >= 1 and levels.get("stall_egg", 0) >= 1 and not eggs_sold:
        eggs_sold = farm.flow_total("sold:egg") > 0
    # Eggs are sold, and the tile of the coop's next level has come.
    if eggs_sold and farm.get_tiles().has("coop_a"):
        press(Vector2.ZERO)
        leave(farm)
    elif clock > LIMIT_SECONDS:
        finish(1, "the loop was not played in time: levels %s, money %d, doing %s" % [levels, farm.get_money(), bot.get_doing()])


# Holds the arrow keys that come nearest to the wish, by real key events.
func press(wish: Vector2) -> void:
    var want := {}
    if wish.length() > 0.1:
        if absf(wish.x) > 0.38 * wish.length():
            want[Vector2i(int(signf(wish.x)), 0)] = true
        if absf(wish.y) > 0.38 * wish.length():
            want[Vector2i(0, int(signf(wish.y)))] = true
    for way in held.keys():
        if not want.has(way):
            OS.execute("xdotool", ["keyup", KEYS[way]])
            held.erase(way)
    for way in want:
        if not held.has(way):
            OS.execute("xdotool", ["keydown", KEYS[way]])
            held[way] = true


func picture(farm: Node) -> Dictionary:
    farm.save_now()
    var doc: Dictionary = root.get_node("Save").get_data().duplicate(true)
    return {"money": doc["money"], "levels": doc["levels"], "paid": doc["paid"], "carry": doc["state"]["carry"],
            "cash": doc["state"]["cash"], "piles": doc["state"]["piles"], "px": doc["state"]["px"], "pz": doc["state"]["pz"]}


func leave(farm: Node) -> void:
    ended = true
    paused = true # nothing may move between this picture and the last save
    var left := FileAccess.open("user://left.json", FileAccess.WRITE)
    left.store_string(JSON.stringify(picture(farm), "", true, true))
    left.close()
    bot.free()
    print("LOOP played in %.0f s: money %d, levels %s" % [clock, farm.get_money(), farm.get_levels()])
    root.propagate_notification(Node.NOTIFICATION_WM_CLOSE_REQUEST)
    quit(0)


func compare(farm: Node) -> void:
    ended = true
    var text := FileAccess.get_file_as_string("user://left.json")
    var left: Dictionary = JSON.parse_string(text)
    var now: Dictionary = JSON.parse_string(JSON.stringify(picture(farm), "", true, true))
    for key in left:
        var same: bool = absf(left[key] - now[key]) < 0.02 if key in ["px", "pz"] else JSON.stringify(left[key], "", true) == JSON.stringify(now[key], "", true)
        if not same:
            finish(1, "%s was %s and came back as %s" % [key, left[key], now[key]])
            return
    finish(0, "found as left")


func finish(code: int, text: String) -> void:
    ended = true
    press(Vector2.ZERO)
    print("LOOP ", "ok: " if code == 0 else "FAILED: ", text)
    quit(code)
