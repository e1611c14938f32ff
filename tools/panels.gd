# Opens each panel in turn and takes its picture, in both languages and at two text sizes. Run by tools/panels.
extends "game_script.gd"

const SETTLE := 40 # frames until a panel has grown to its size

var into := "."
var form := "tall"


func _initialize() -> void:
    into = word("into", into)
    form = word("form", form)
    start()
    run.call_deferred()


func settle(frames := SETTLE) -> void:
    root.disable_3d = true # drawn once, for the picture
    RenderingServer.render_loop_enabled = false
    for i in frames:
        await process_frame
    root.disable_3d = false
    RenderingServer.render_loop_enabled = true
    await process_frame
    await process_frame


func shoot(name: String) -> void:
    await settle()
    while Icons.waiting() > 0: # pictures of goods, one a frame
        await process_frame
    await process_frame
    var image := root.get_texture().get_image()
    image.resize(image.get_width() / 2, image.get_height() / 2, Image.INTERPOLATE_LANCZOS)
    image.save_png("%s/%s_%s.png" % [into, form, name])


func each_look(take: Callable) -> void:
    for text in [100, 150]:
        for code in ["en", "ar"]:
            UI.set_text_size(text)
            Lang.apply(code)
            await take.call("%s_%d" % [code, text])
    UI.set_text_size(100)
    Lang.apply("en")


func pictures_of_menu(look: String) -> void:
    var menu := of_class("Menu")
    var save := root.get_node("Save")
    save.set_player_name("")
    menu._fill_card()
    await shoot("menu_name_" + look)
    save.set_player_name("SALMA")
    save.set_data({"money": 250400, "levels": {"coop_a": 4, "stall_egg": 2, "field_corn": 1}})
    save.write()
    menu._fill_card()
    await shoot("menu_card_" + look)
    menu._show_farms()
    await shoot("menu_farms_" + look)
    menu._show_update({"version": "9.1", "min": "0.1", "notes": {"en": ["NEW LANDS IN THE EAST"], "ar": ["أراضي جديدة في الشرق"]}})
    await shoot("menu_update_" + look)
    menu.close_sheet()


func pictures_of_farm(look: String) -> void:
    var hud: Node = of_class("World").get_hud()
    hud.set_level_line(12, 34)
    hud.set_mood(0.87)
    hud.set_gold(3)
    hud.show_hint(true)
    await shoot("bars_" + look)
    hud._show_pause()
    await shoot("pause_" + look)
    paused = true
    hud._show_how_to()
    await shoot("how_to_" + look)
    hud._show_build()
    await shoot("build_" + look)
    hud._show_decor()
    await shoot("decor_" + look)
    hud.show_offline(20000, 45210)
    await shoot("offline_" + look)
    hud.show_victory(88, 1234567)
    await shoot("victory_" + look)
    hud.close_panel()
    paused = false
    hud.toast("GAME SAVED!", 1)
    hud.toast("NOT ENOUGH MONEY", 0)
    hud.toast("HIRE GUARDS: A DAY AND A NIGHT GUARD FOR EVERY TWO AREAS", 2)
    hud._prompt("gift", "A GIFT IS WAITING FOR YOU", "YOUR WAREHOUSE IS FULL, COME COLLECT", "COLLECT", Callable(), Callable(), {"icon": UI.icon("gift"), "auto": false})
    await shoot("notices_" + look)
    hud.remove_prompt("gift")
    while hud.get_lane().get_child_count() > 0: # the toasts leave before the next pictures
        await settle(10)


func run() -> void:
    while of_class("Menu") == null:
        await process_frame
    await settle(20)
    await each_look(pictures_of_menu)
    main._start()
    while of_class("World") == null or of_class("World").get_building():
        await process_frame
    of_class("World").set_money(4200)
    await settle(90)
    await each_look(pictures_of_farm)
    quit(0)
