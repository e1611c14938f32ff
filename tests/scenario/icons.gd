# Asks for the picture of every good and every planned thing and looks at what the renderer made of them. Run by icons.sh,
# which also fails on an engine error in the log.
extends SceneTree

const SIDE := 128
const SMALL := 64
const SHEET_COLUMNS := 10

var into := "."
var failures := 0


func _initialize() -> void:
    for word in OS.get_cmdline_user_args():
        if word.begins_with("--into="):
            into = word.trim_prefix("--into=")
    take_all.call_deferred()


func check(good: bool, what: String) -> void:
    if not good:
        failures += 1
        print("ICONS wrong: ", what)


func studios() -> int:
    return root.find_children("*", "SubViewport", true, false).size()


func keys() -> PackedStringArray:
    var found: PackedStringArray = []
    for kind in FarmData.prices():
        found.append("item_" + kind)
    for piece in ["money_bill", "money_gold", "money_case"]:
        found.append(piece)
    for entry in FarmData.plan():
        var key := Icons.thing_key(entry.kind, entry.get("product", ""))
        if not key in found:
            found.append(key)
    return found


# Where it stands, how bright it is, whether its edges are soft.
func look_at(key: String, image: Image) -> void:
    check(image.get_size() == Vector2i(SIDE, SIDE), key + " has another size")
    var used := image.get_used_rect()
    var longer := maxi(used.size.x, used.size.y)
    check(longer >= SIDE * 0.86 and longer <= SIDE * 0.96, "%s is %d wide of %d" % [key, longer, SIDE])
    var off := Vector2(used.get_center()) - Vector2(SIDE, SIDE) * 0.5
    check(off.length() < 4.0, "%s stands %s beside the middle" % [key, off])
    check(brightness(key) > 0.12, key + " is dark")
    check(image.get_pixel(0, 0).a == 0.0 and image.get_pixel(SIDE - 1, 0).a == 0.0, key + " has a background")


func brightness(key: String) -> float:
    var image: Image = Icons.of(key).get_image()
    var light := 0.0
    var weight := 0.0
    for y in range(0, SIDE, 2):
        for x in range(0, SIDE, 2):
            var c := image.get_pixel(x, y)
            light += c.get_luminance() * c.a
            weight += c.a
    return light / maxf(weight, 1.0)


# Mean difference of two small pictures as they stand on a card.
func apart(a: Image, b: Image) -> float:
    var sum := 0.0
    for y in a.get_height():
        for x in a.get_width():
            var p := a.get_pixel(x, y)
            var q := b.get_pixel(x, y)
            sum += absf(p.a - q.a) + absf(p.r * p.a - q.r * q.a) + absf(p.g * p.a - q.g * q.a) + absf(p.b * p.a - q.b * q.a)
    return sum / (a.get_width() * a.get_height())


func sheet(title: String, all: PackedStringArray, pictures: Array, things: bool) -> void:
    var names: PackedStringArray = []
    var images: Array = []
    for i in all.size():
        if all[i].begins_with("icon_") == things:
            names.append(all[i])
            images.append(pictures[i])
    var cell := Vector2i(SIDE + 8 + SMALL + 8, SIDE + 8)
    var rows := ceili(float(names.size()) / SHEET_COLUMNS)
    var page := Image.create(cell.x * SHEET_COLUMNS, cell.y * rows, false, Image.FORMAT_RGBA8)
    page.fill(Color("ffecb3"))
    for i in names.size():
        var at := Vector2i(i % SHEET_COLUMNS * cell.x, i / SHEET_COLUMNS * cell.y)
        page.blend_rect(images[i], Rect2i(0, 0, SIDE, SIDE), at + Vector2i(4, 4))
        page.fill_rect(Rect2i(at + Vector2i(SIDE + 8, 0), Vector2i(SMALL + 8, cell.y / 2)), Color("1d2438"))
        var small: Image = images[i].duplicate()
        small.resize(SMALL, SMALL, Image.INTERPOLATE_LANCZOS)
        for half in 2:
            page.blend_rect(small, Rect2i(0, 0, SMALL, SMALL), at + Vector2i(SIDE + 12, 2 + half * cell.y / 2))
    page.save_png("%s/icons_%s.png" % [into, title])


func take_all() -> void:
    await process_frame
    var names := keys()
    var handed := {}
    var first := Icons.of(names[0])
    check(Icons.of(names[0]) == first and Icons.waiting() == 1, "asking twice makes two")
    check(not Icons.ready(names[0]), "it is there before a frame was drawn")
    # While nothing is drawn nothing is taken, and nothing is lost.
    await process_frame
    RenderingServer.render_loop_enabled = false
    for i in 5:
        await process_frame
    check(Icons.waiting() <= 1, "the queue grew by itself")
    RenderingServer.render_loop_enabled = true
    for key in names:
        handed[key] = Icons.of(key)
    Icons.of("item_unicorn")
    check(Icons.of("item_unicorn") == Icons.of("icon_crate"), "an unknown key is no crate")
    # Another scene in the middle, as when a farm is loaded anew.
    for i in 4:
        await process_frame
    var empty := PackedScene.new()
    var node := Node3D.new()
    empty.pack(node)
    node.free()
    change_scene_to_packed(empty)
    var frames := 0
    var began := Time.get_ticks_usec()
    var wanted := Icons.waiting()
    var most := 0
    while Icons.waiting() > 0 and frames < 1000:
        var before := Icons.waiting()
        await process_frame
        frames += 1
        most = maxi(most, before - Icons.waiting())
        check(studios() <= 1, "more than one studio")
    var each := (Time.get_ticks_usec() - began) / 1000.0 / maxi(frames, 1)
    check(Icons.waiting() == 0, "%d pictures never came" % Icons.waiting())
    check(most <= 1, "%d pictures in one frame" % most)
    await process_frame
    await process_frame
    check(studios() == 0, "the studio stays when nothing is asked for")
    check(Icons.current() != null and not Icons.current().is_processing(), "it works on without work")

    var images: Array = []
    var small: Array = []
    for key in names:
        check(Icons.ready(key) and Icons.of(key) == handed[key], key + " did not turn into its picture in place")
        var image: Image = handed[key].get_image()
        image.clear_mipmaps()
        look_at(key, image)
        images.append(image)
        var tiny: Image = image.duplicate()
        tiny.resize(32, 32, Image.INTERPOLATE_LANCZOS)
        small.append(tiny)
    for i in names.size():
        for j in i:
            if names[i].begins_with("item_") and names[j].begins_with("item_"):
                var gap := apart(small[i], small[j])
                check(gap > 0.12, "%s and %s look alike (%.3f)" % [names[i], names[j], gap])

    # A taker lost in the middle of its work is replaced; what is taken stays, what is asked for is not forgotten.
    var pet := Icons.of("pet_cat")
    while studios() == 0:
        await process_frame
    Icons.current().free()
    check(Icons.ready(names[0]) and not Icons.ready("pet_cat"), "pictures went with their taker")
    Icons.of("pet_dog")
    for i in 8:
        await process_frame
    check(Icons.ready("pet_cat") and Icons.ready("pet_dog") and Icons.current() != null, "a new taker did not come up")
    look_at("pet_cat", pet.get_image())
    # A picture taken in the darkest night is kept for the day too: the farm's light stays out of it.
    for word in ["farm_key", "farm_rim", "farm_shade"]:
        RenderingServer.global_shader_parameter_set(word, Color.BLACK)
    RenderingServer.global_shader_parameter_set("farm_snow", 1.0)
    var by_night := {"animal_egg": 0.55, "look_avatar_sara": 0.35, "item_medicine": 0.7, "tree": 0.2}
    for key in by_night:
        Icons.of(key)
    while Icons.waiting() > 0:
        await process_frame
    for key in by_night:
        check(brightness(key) > by_night[key], "%s is dark by night: %.2f" % [key, brightness(key)])
    check(brightness("tree") < 0.6, "snow lies on the tree's picture: %.2f" % brightness("tree"))
    sheet("goods", names, images, false)
    sheet("things", names, images, true)
    print("ICONS taken %d in %d frames of %d wanted, %.1f ms a frame, failures %d" % [names.size(), frames, wanted, each, failures])
    quit(1 if failures > 0 else 0)
