# Goes through the title and the settings with the pointer and the keys, as a person would: name, play, pause, language,
# volume, save, back to the title, a new farm, delete it with two presses, continue. Needs xdotool and a display.
extends "../../tools/game_script.gd"

const LIMIT_SECONDS := 100.0

var clock := 0.0
var ended := false


func _initialize() -> void:
    start()
    play.call_deferred()


func _process(delta: float) -> bool:
    clock += delta
    if clock > LIMIT_SECONDS and not ended:
        finish("not done in time")
    return false


func finish(problem: String) -> void:
    ended = true
    print("TITLE ok" if problem == "" else "TITLE FAILED: " + problem)
    if problem != "":
        root.get_texture().get_image().save_png("user://failed.png")
    quit(0 if problem == "" else 1)


func save() -> Node:
    return root.get_node("Save")


func find(test: Callable, node: Node = null) -> Control:
    node = main if node == null else node
    if node is Control and node.is_visible_in_tree() and not node.is_queued_for_deletion() and test.call(node):
        return node
    for child in node.get_children():
        var found := find(test, child)
        if found != null:
            return found
    return null


func button(text: String) -> Control:
    return find(func(c: Control) -> bool: return c is Button and c.text == text and not c.disabled)


# Waits until the test gives something; the run ends when it does not.
func wait(what: String, test: Callable) -> Variant:
    var until := clock + 25.0
    while not ended:
        var got: Variant = test.call()
        if got:
            return got
        if clock > until:
            finish("waited in vain for " + what)
        await process_frame
    return null


func pause(seconds: float) -> void:
    var until := clock + seconds
    while clock < until:
        await process_frame


# A real click in the middle of a control, or at a share of its width.
func click_at(control: Control, share := 0.5) -> void:
    var rect := control.get_global_rect()
    var at := root.get_final_transform() * Vector2(rect.position.x + rect.size.x * share, rect.get_center().y)
    OS.execute("xdotool", ["mousemove", str(int(at.x)), str(int(at.y))])
    await pause(0.1)
    OS.execute("xdotool", ["mousedown", "1"])
    await pause(0.1)
    OS.execute("xdotool", ["mouseup", "1"])
    await pause(0.15)


func click(text: String) -> void:
    var control: Variant = await wait("button " + text, func() -> Variant: return button(text))
    if ended:
        return
    await pause(0.45) # what it stands on has come to rest
    control = button(text)
    var scroll: Node = control
    while scroll != null and not scroll is ScrollContainer:
        scroll = scroll.get_parent()
    if scroll != null:
        scroll.ensure_control_visible(control)
        await pause(0.1)
    await click_at(control)


func expect(holds: bool, what: String) -> void:
    if not holds and not ended:
        finish(what)


func key(name: String) -> void:
    OS.execute("xdotool", ["key", name])
    await pause(0.15)


func farm_ready() -> bool:
    var farm := of_class("World")
    return farm != null and not farm.get_building() and of_class("Loading") == null


func play() -> void:
    # A first start asks for the name; it is typed, and the button saves it.
    var edit: Control = await wait("the name", func() -> Variant: return find(func(c: Control) -> bool: return c is LineEdit))
    await pause(0.7)
    await click_at(edit)
    OS.execute("xdotool", ["type", "--delay", "30", "Salma of the long green valley"])
    await pause(0.3)
    await click("SAVE")
    expect(save().get_player_name() == "Salma of the lon", "kept the name as \"%s\"" % save().get_player_name())
    await click("PLAY")
    await wait("the farm", farm_ready)
    var farm := of_class("World")
    var hud: Node = farm.get_hud()
    var first_farm := farm.get_instance_id()

    # ESC pauses; the language changes under the open panel; the volume is dragged down; the game is saved.
    await key("Escape")
    await wait("the pause", func() -> bool: return hud.panel_open() and paused)
    await click("العربية")
    await wait("Arabic, chosen and kept", func() -> bool: return Lang.arabic() and save().get_lang() == "ar")
    await click("ENGLISH")
    await wait("English again", func() -> bool: return not Lang.arabic() and save().get_lang() == "en")
    var bar := find(func(c: Control) -> bool: return c.has_meta("keys"))
    await click_at(bar, 0.32)
    await wait("a lower volume", func() -> bool: return absf(save().get_vol_music() - 0.3) < 0.11)
    farm.set_money(777)
    await click("SAVE GAME")
    await wait("the sum in the file", func() -> bool: return FileAccess.get_file_as_string(save().get("path")).contains("777"))
    await click("SAVE & MENU")

    # Back at the title: a second farm, thrown away again with two presses, and the first one goes on.
    await click("MY FARMS")
    await click("NEW FARM")
    await wait("the new farm", func() -> bool: return farm_ready() and of_class("World").get_instance_id() != first_farm)
    expect(of_class("World").get_money() != 777 and save().get_farms().size() == 2, "the new farm is not new")
    await key("Escape")
    await click("SAVE & MENU")
    await click("MY FARMS")
    await wait("two rows", func() -> Variant: return button("PLAYING"))
    var crosses := []
    await pause(0.5)
    find(func(c: Control) -> bool:
        if c is Button and c.text == "X":
            crosses.append(c)
        return false)
    expect(crosses.size() == 2, "%d farms can be deleted" % crosses.size())
    await click_at(crosses[1])
    expect(save().get_farms().size() == 2, "one press deleted a farm")
    await click("SURE?")
    await wait("one farm", func() -> bool: return save().get_farms().size() == 1)
    expect(save().get_data().get("money", 0) == 777, "the wrong farm went")
    await click("CLOSE")
    # Keys alone from here: the ring is on the first button, ENTER presses it.
    await key("Down")
    await wait("a focused button", func() -> Variant: return root.gui_get_focus_owner())
    expect(root.gui_get_focus_owner().text == "CONTINUE", "keys begin at " + str(root.gui_get_focus_owner()))
    await key("Return")
    await wait("the first farm", farm_ready)
    expect(of_class("World").get_money() == 777, "came back with %d" % of_class("World").get_money())
    if not ended:
        finish("")
