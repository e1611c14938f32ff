# Pictures of a farm: one built yard at four hours, in four seasons and in rain and snow, and a sheet of things at work as
# a player sees them. Run by tools/gallery --farm; leaves farm_<view>.png and
# work_<n>.png in the folder after --into=. `--only=work` or `--only=farm` does one half, `--only=levels` nothing but the
# same views at each level of graphics quality: levels_<view>.png.
extends "game_script.gd"

const CELL := Vector2i(270, 400)
const WORK_CELL := Vector2i(216, 288)
const WORK_COLUMNS := 6
const WORK_MOST := 24
const HOME := Vector3(4, 0, -6)
# title, hour, season, wet, snow
const HOURS := [["DAWN 6:30", 6.5, 0, 0.0, 0.0], ["NOON", 12.0, 0, 0.0, 0.0], ["DUSK 19:15", 19.25, 0, 0.0, 0.0],
        ["NIGHT 23:00", 23.0, 0, 0.0, 0.0]]
const SEASONS := [["SPRING", 12.0, 0, 0.0, 0.0], ["SUMMER", 12.0, 1, 0.0, 0.0], ["AUTUMN", 12.0, 2, 0.0, 0.0],
        ["WINTER", 12.0, 3, 0.0, 0.0]]
const WEATHER := [["RAIN", 12.0, 0, 1.0, 0.0], ["NIGHT RAIN", 23.0, 2, 1.0, 0.0], ["SNOWFALL", 12.0, 3, 0.0, 1.0],
        ["WINTER NIGHT", 23.0, 3, 0.0, 0.4]]

var into := "."
var only := ""
var begun := false


func _initialize() -> void:
    into = word("into", into)
    only = word("only", only)
    start()


func _process(_delta: float) -> bool:
    var farm := world()
    if farm != null and not farm.get_building() and not begun:
        begun = true
        take_all(farm)
    return false


func look_at_spot(farm: Node, spot: Vector3) -> void:
    # The camera looks where it is told; the farmer waits far off, so that his tower hides nothing.
    farm.get_player().position = Vector3(spot.x, 0, 40)
    for i in 40:
        farm._focus(spot, 60.0)
        await process_frame


func picture() -> Image:
    await process_frame
    await process_frame
    return root.get_viewport().get_texture().get_image()


func sheet(name: String, titles: PackedStringArray, images: Array, cell: Vector2i, columns: int) -> void:
    var page := SubViewport.new()
    page.size = Vector2i(cell.x * mini(columns, images.size()), (cell.y + 18) * ceili(float(images.size()) / columns))
    page.disable_3d = true
    page.render_target_update_mode = SubViewport.UPDATE_ALWAYS
    root.add_child(page)
    for i in images.size():
        var at := Vector2(i % columns * cell.x, i / columns * (cell.y + 18))
        var tile := TextureRect.new()
        tile.texture = ImageTexture.create_from_image(images[i])
        tile.expand_mode = TextureRect.EXPAND_IGNORE_SIZE
        tile.stretch_mode = TextureRect.STRETCH_KEEP_ASPECT_COVERED
        tile.position = at
        tile.size = cell
        page.add_child(tile)
        var label := Label.new()
        label.text = titles[i]
        label.position = at + Vector2(2, cell.y)
        label.add_theme_font_size_override("font_size", 12)
        page.add_child(label)
    await process_frame
    await process_frame
    page.get_texture().get_image().save_png("%s/%s.png" % [into, name])
    page.queue_free()


func sky(farm: Node, row: Array) -> void:
    BotActions.set_sky(farm.get_node("Light"), row[1], row[2], row[3], row[4])


func skies(farm: Node, name: String, rows: Array) -> void:
    var images := []
    var titles: PackedStringArray = []
    for row in rows:
        sky(farm, row)
        titles.append(row[0])
        images.append(await picture())
    await sheet(name, titles, images, CELL, 4)


func take_farm(farm: Node) -> void:
    await look_at_spot(farm, HOME)
    await skies(farm, "farm_hours", HOURS)
    await skies(farm, "farm_seasons", SEASONS)
    await skies(farm, "farm_weather", WEATHER)
    await look_at_spot(farm, Vector3(9, 0, -16))
    await skies(farm, "farm_home", HOURS)
    await look_at_spot(farm, Vector3(3, 0, 5))
    await skies(farm, "farm_market", [HOURS[1], HOURS[3], SEASONS[2], SEASONS[3]])
    await look_at_spot(farm, Vector3(1, 0, -32))
    await skies(farm, "farm_back", [HOURS[1], HOURS[2], SEASONS[3], WEATHER[0]])


func take_work(farm: Node) -> void:
    sky(farm, HOURS[1])
    var images := []
    var titles: PackedStringArray = []
    var seen := {}
    for entry in FarmData.plan():
        var kind: String = entry.kind
        if not kind in ["producer", "field", "machine", "factory", "stall", "dock", "restaurant", "depot"]:
            continue
        var of: String = kind + str(entry.get("product", entry.get("crop", entry.id)))
        if kind in ["stall", "dock", "depot"]:
            of = kind
        if seen.has(of) or farm.level_of(entry.id) == 0 or farm.get_nodes().get(entry.id) == null:
            continue
        seen[of] = true
        var at: Vector2 = entry.pos
        if entry.has("rect"):
            at = (entry.rect as Rect2).get_center()
        await look_at_spot(farm, Vector3(at.x, 0, at.y + 1.5))
        titles.append(entry.id)
        images.append(await picture())
        if images.size() == WORK_MOST:
            await sheet("work_%d" % (seen.size() / WORK_MOST), titles, images, WORK_CELL, WORK_COLUMNS)
            images.clear()
            titles.clear()
    if not images.is_empty():
        await sheet("work_%d" % (seen.size() / WORK_MOST + 1), titles, images, WORK_CELL, WORK_COLUMNS)


func take_levels(farm: Node) -> void:
    var watcher: Node = farm.get_children().filter(func(c): return c.is_class("AutoQuality"))[0]
    var settings: Node = root.get_node("Save")
    for view in [["yard", HOME], ["home", Vector3(9, 0, -16)], ["market", Vector3(3, 0, 5)]]:
        await look_at_spot(farm, view[1])
        var images := []
        var titles: PackedStringArray = []
        for row in [HOURS[1], HOURS[3]]:
            sky(farm, row)
            for level in 4:
                settings.quality = level
                watcher.apply()
                titles.append("%s, LEVEL %d" % [row[0], level])
                images.append(await picture())
        await sheet("levels_" + view[0], titles, images, CELL, 4)


func take_all(farm: Node) -> void:
    farm.get_hud().visible = false
    if only == "levels":
        await take_levels(farm)
        print("GALLERY levels done")
        quit()
        return
    if only != "work":
        await take_farm(farm)
    if only != "farm":
        await take_work(farm)
    print("GALLERY farm done")
    quit()
