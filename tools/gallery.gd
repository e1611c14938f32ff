# Pictures every key of the model table and lays the pictures out on sheets. Run by tools/gallery; leaves
# sheet_<class>_<pixels>.png and sheet_<class>_grey.png in the folder after --into=.
extends SceneTree

const CELL := 160
const SMALL := 64
const MOST := 70 # cells on one sheet

var into := "."
var starts: PackedStringArray = []
var studio: SubViewport
var camera: Camera3D


func _initialize() -> void:
    for word in OS.get_cmdline_user_args():
        if word.begins_with("--into="):
            into = word.trim_prefix("--into=")
        else:
            starts.append(word)
    take_all.call_deferred()


func build_studio() -> void:
    studio = SubViewport.new()
    studio.size = Vector2i(CELL, CELL) * 2
    studio.own_world_3d = true
    studio.render_target_update_mode = SubViewport.UPDATE_ALWAYS
    studio.msaa_3d = Viewport.MSAA_2X
    root.add_child(studio)
    var env := Environment.new()
    env.background_mode = Environment.BG_COLOR
    env.background_color = Color("9fc3a0")
    env.ambient_light_source = Environment.AMBIENT_SOURCE_COLOR
    env.ambient_light_color = Color("a9b4dd")
    env.ambient_light_energy = 0.55
    var world := WorldEnvironment.new()
    world.environment = env
    studio.add_child(world)
    var sun := DirectionalLight3D.new()
    sun.rotation_degrees = Vector3(-50, 35, 0)
    sun.light_color = Color("fff0d8")
    sun.light_energy = 0.75
    studio.add_child(sun)
    camera = Camera3D.new()
    camera.projection = Camera3D.PROJECTION_ORTHOGONAL
    studio.add_child(camera)


# The box of all that is drawn below `node`.
func box_of(node: Node3D) -> AABB:
    var whole := AABB()
    var first := true
    for part in [node] + node.find_children("*", "GeometryInstance3D", true, false):
        if not part is MeshInstance3D and not part is MultiMeshInstance3D:
            continue
        var mesh: Mesh = part.mesh if part is MeshInstance3D else part.multimesh.mesh
        if mesh == null or mesh.get_surface_count() == 0:
            continue
        var box: AABB = part.global_transform * mesh.get_aabb()
        whole = box if first else whole.merge(box)
        first = false
    return whole


# All corners of the box, seen from the camera, fit into the picture.
func aim(box: AABB) -> void:
    camera.rotation_degrees = Vector3(-28, 26, 0)
    var seen := AABB()
    for i in 8:
        var corner := camera.basis.inverse() * (box.get_endpoint(i) - box.get_center())
        seen = AABB(corner, Vector3.ZERO) if i == 0 else seen.expand(corner)
    camera.size = maxf(0.05, maxf(seen.size.x, seen.size.y) * 1.12)
    camera.position = box.get_center() + camera.basis * Vector3(seen.get_center().x, seen.get_center().y, 20)
    camera.far = 60


func picture(key: String, faces_away: bool) -> Image:
    var node: Node3D = BotActions.model(key)
    if node == null:
        return null
    studio.add_child(node)
    if faces_away:
        node.rotation_degrees.y = 180
    aim(box_of(node))
    await process_frame
    await process_frame
    var image := studio.get_texture().get_image()
    node.queue_free()
    return image


func face(avatar: String) -> Image:
    var page := SubViewport.new()
    page.size = Vector2i(CELL, CELL)
    page.disable_3d = true
    page.render_target_update_mode = SubViewport.UPDATE_ALWAYS
    root.add_child(page)
    var back := ColorRect.new()
    back.color = Color("9fc3a0")
    back.size = page.size
    page.add_child(back)
    var canvas := Control.new()
    canvas.size = page.size
    canvas.draw.connect(func(): BotActions.draw_face(canvas, avatar))
    page.add_child(canvas)
    await process_frame
    await process_frame
    var image := page.get_texture().get_image()
    page.queue_free()
    return image


func sheet(name: String, keys: PackedStringArray, images: Array, cell: int, grey: bool) -> void:
    var columns := 10 if cell == CELL else 16
    var line := 18 if cell == CELL else 12
    var rows := ceili(float(keys.size()) / columns)
    var page := SubViewport.new()
    page.size = Vector2i(columns * cell, rows * (cell + line))
    page.disable_3d = true
    page.render_target_update_mode = SubViewport.UPDATE_ALWAYS
    root.add_child(page)
    var back := ColorRect.new()
    back.color = Color("2b2630")
    back.size = page.size
    page.add_child(back)
    for i in keys.size():
        var at := Vector2(i % columns * cell, i / columns * (cell + line))
        var image: Image = images[i].duplicate()
        image.resize(cell, cell, Image.INTERPOLATE_LANCZOS)
        if grey:
            image.convert(Image.FORMAT_L8)
        var tile := TextureRect.new()
        tile.texture = ImageTexture.create_from_image(image)
        tile.position = at
        page.add_child(tile)
        var label := Label.new()
        label.text = keys[i]
        label.position = at + Vector2(2, cell)
        label.size = Vector2(cell - 4, line)
        label.clip_text = true
        label.add_theme_font_size_override("font_size", 12 if cell == CELL else 8)
        label.add_theme_constant_override("line_spacing", 0)
        page.add_child(label)
    await process_frame
    await process_frame
    var path := "%s/sheet_%s_%s.png" % [into, name, "grey" if grey else str(cell)]
    page.get_texture().get_image().save_png(path)
    page.queue_free()


func wanted(key: String) -> bool:
    if starts.is_empty():
        return true
    for start in starts:
        if key.begins_with(start):
            return true
    return false


func take_all() -> void:
    build_studio()
    var classes := {}
    var missing: PackedStringArray = []
    for row in BotActions.model_rows():
        if not wanted(row[0]):
            continue
        if not row[2]:
            missing.append(row[0])
            continue
        var image: Image = await picture(row[0], row[1] in ["people", "animals"])
        if not classes.has(row[1]):
            classes[row[1]] = []
        classes[row[1]].append([row[0], image])
        if row[0].begins_with("look_avatar_"):
            if not classes.has("faces"):
                classes["faces"] = []
            classes["faces"].append([row[0], await face(row[0].trim_prefix("look_avatar_"))])
    for name in classes:
        var all: Array = classes[name]
        for first in range(0, all.size(), MOST):
            var part: Array = all.slice(first, first + MOST)
            var keys := PackedStringArray(part.map(func(r): return r[0]))
            var images: Array = part.map(func(r): return r[1])
            var title: String = name if all.size() <= MOST else "%s%d" % [name, first / MOST + 1]
            await sheet(title, keys, images, CELL, false)
            await sheet(title, keys, images, SMALL, false)
            await sheet(title, keys, images, SMALL, true)
        print("GALLERY %s %d" % [name, all.size()])
    print("GALLERY to come: ", ", ".join(missing))
    quit()
