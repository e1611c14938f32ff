# Draws every shader of the project once on a real display: each compiles, paints something, and offers the uniforms and
# global parameters that the module sets by name; limbs bend by their channels. Run by shaders.sh, which also fails on an engine error in the log.
extends SceneTree

const NEEDED := ["avatar_badge", "cover", "stripes", "person", "animal", "tree", "farm", "water", "ground", "ground_wet", "tuft", "lake", "icon"]
const UNIFORMS := {"farm": ["snowy"], "lake": ["half_size"], "ground": ["dry_color", "dry_amount"],
        "ground_wet": ["dry_color", "dry_amount"]}
const GLOBALS := ["farm_spring", "farm_summer", "farm_autumn", "farm_snow", "farm_wet", "farm_key", "farm_shade", "farm_rim"]
const EMPTY := Color("ff00ff")

var failures := 0


func _initialize() -> void:
    draw_all.call_deferred()


func check(good: bool, what: String) -> void:
    if not good:
        failures += 1
        print("SHADERS wrong: ", what)


func studio(of_canvas: bool) -> SubViewport:
    var page := SubViewport.new()
    page.size = Vector2i(64, 64)
    page.own_world_3d = true
    page.disable_3d = of_canvas
    page.render_target_update_mode = SubViewport.UPDATE_ALWAYS
    root.add_child(page)
    return page


# With everything on at once, so that no branch stays unread.
func scene(page: SubViewport, material: ShaderMaterial) -> void:
    var env := Environment.new()
    env.background_mode = Environment.BG_COLOR
    env.background_color = EMPTY
    env.ambient_light_source = Environment.AMBIENT_SOURCE_COLOR
    env.ambient_light_color = Color.WHITE
    env.ambient_light_energy = 0.4
    env.fog_enabled = true
    env.fog_density = 0.01
    env.fog_sky_affect = 0 # what is empty stays known
    var world := WorldEnvironment.new()
    world.environment = env
    page.add_child(world)
    var sun := DirectionalLight3D.new()
    sun.shadow_enabled = true
    sun.rotation_degrees = Vector3(-50, -40, 0)
    page.add_child(sun)
    var lamp := OmniLight3D.new()
    lamp.position = Vector3(1, 1, 1)
    page.add_child(lamp)
    var camera := Camera3D.new()
    camera.position = Vector3(0, 3, 0.2)
    camera.rotation_degrees = Vector3(-86, 0, 0)
    page.add_child(camera)
    var body := MultiMesh.new() # colours and custom data, as people have them
    body.transform_format = MultiMesh.TRANSFORM_3D
    body.use_colors = true
    body.use_custom_data = true
    var plane := PlaneMesh.new()
    plane.size = Vector2(4, 4)
    body.mesh = plane
    body.instance_count = 1
    body.set_instance_transform(0, Transform3D.IDENTITY)
    body.set_instance_color(0, Color(0.4, 0.7, 0.3))
    body.set_instance_custom_data(0, Color(0, 0, 0, 0))
    var node := MultiMeshInstance3D.new()
    node.multimesh = body
    node.material_override = material
    page.add_child(node)


func draw_one(name: String) -> void:
    var shader: Shader = load("res://shaders/%s.gdshader" % name)
    var material := ShaderMaterial.new()
    material.shader = shader
    var canvas := shader.get_mode() == Shader.MODE_CANVAS_ITEM
    var page := studio(canvas)
    if canvas:
        var back := ColorRect.new()
        back.color = EMPTY
        back.size = Vector2(64, 64)
        page.add_child(back)
        var rect := ColorRect.new()
        rect.color = Color(0.4, 0.7, 0.3)
        rect.size = Vector2(64, 64)
        rect.material = material
        page.add_child(rect)
    else:
        scene(page, material)
    for i in 3:
        await process_frame
    var seen := page.get_texture().get_image().get_pixel(32, 32)
    check(not seen.is_equal_approx(EMPTY), "%s draws nothing" % name)
    var offered := shader.get_shader_uniform_list().map(func(u): return u.name)
    for uniform in UNIFORMS.get(name, []):
        check(uniform in offered, "%s has no %s" % [name, uniform])
    page.queue_free()


# A small square of limb `number` at (y 1, z 0) that turns about (y 0.25, z 0.25), seen along x, 4 high.
func limb_square(name: String, number: int, angles: Color) -> Image:
    var points: PackedVector3Array = []
    var rows := [[0.8, -0.2], [0.8, 0.2], [1.2, 0.2], [1.2, -0.2]]
    for i in [0, 1, 2, 0, 2, 3, 0, 2, 1, 0, 3, 2]: # both faces
        points.append(Vector3(0, rows[i][0], rows[i][1]))
    var arrays := []
    arrays.resize(Mesh.ARRAY_MAX)
    arrays[Mesh.ARRAY_VERTEX] = points
    var normals: PackedVector3Array = []
    var colors: PackedColorArray = []
    var pivots: PackedVector2Array = []
    var numbers: PackedVector2Array = []
    for i in points.size():
        normals.append(Vector3.RIGHT)
        colors.append(Color.WHITE)
        pivots.append(Vector2(0.25, 0.25))
        numbers.append(Vector2(number, 0))
    arrays[Mesh.ARRAY_NORMAL] = normals
    arrays[Mesh.ARRAY_COLOR] = colors
    arrays[Mesh.ARRAY_TEX_UV] = pivots
    arrays[Mesh.ARRAY_TEX_UV2] = numbers
    var mesh := ArrayMesh.new()
    mesh.add_surface_from_arrays(Mesh.PRIMITIVE_TRIANGLES, arrays)
    var material := ShaderMaterial.new()
    material.shader = load("res://shaders/%s.gdshader" % name)
    var page := studio(false)
    scene(page, material)
    var camera: Camera3D = page.find_children("*", "Camera3D", true, false)[0]
    camera.projection = Camera3D.PROJECTION_ORTHOGONAL
    camera.size = 4
    camera.position = Vector3(5, 0, 0)
    camera.rotation_degrees = Vector3(0, 90, 0)
    var many: MultiMesh = page.find_children("*", "MultiMeshInstance3D", true, false)[0].multimesh
    many.mesh = mesh
    many.set_instance_custom_data(0, angles)
    for i in 3:
        await process_frame
    var seen := page.get_texture().get_image()
    page.queue_free()
    return seen


# Each limb turns by its own channel about its pivot, the body by none.
func bend_limbs(name: String) -> void:
    var home := Vector2i(32, 16)
    var turned := Vector2i(16, 24) # (y 0.5, z 1): a quarter turn from y towards z
    for number in 5:
        for channel in 4:
            var angles := Color(0, 0, 0, 0)
            angles[channel] = PI / 2
            var seen := await limb_square(name, number, angles)
            var moves := channel == number - 1
            var what := "%s, limb %d, angle %d" % [name, number, channel]
            check((seen.get_pixelv(turned).is_equal_approx(EMPTY)) != moves, what + " where it turns to")
            check((seen.get_pixelv(home).is_equal_approx(EMPTY)) == moves, what + " where it stood")


# What the pose batch writes is what the joints say.
func pose_person() -> void:
    for key in ["look_avatar_ben", "animal_milk"]:
        var person: Node3D = BotActions.model(key)
        root.add_child(person)
        var body: Node3D = person.get_node("Body")
        var legs := body.get_children().filter(func(n): return n.name.begins_with("Leg"))
        legs[1].rotation.x = 0.5
        body.position.y = 0.25
        for i in 10:
            Glebworks.sync_poses()
        var drawn: MultiMesh = person.get_node("Mesh").multimesh
        check(absf(drawn.get_instance_custom_data(0).g - 0.5) < 0.001, key + ": its second leg's angle")
        check(absf(drawn.get_instance_custom_data(0).r) < 0.001, key + ": its first leg's angle")
        check(drawn.get_instance_transform(0).origin.is_equal_approx(Vector3(0, 0.25, 0)), key + ": its body's place")
        check(drawn.get_instance_color(0).is_equal_approx(Color.WHITE), key + ": its colour")
        legs[1].free()
        for i in 10:
            Glebworks.sync_poses()
        check(absf(drawn.get_instance_custom_data(0).g) < 0.001, key + ": a lost leg's angle")
        person.free()


# The checks above rest on knowing an empty pixel.
func see_nothing() -> void:
    var page := studio(false)
    scene(page, ShaderMaterial.new())
    page.find_children("*", "MultiMeshInstance3D", true, false)[0].visible = false
    for i in 3:
        await process_frame
    check(page.get_texture().get_image().get_pixel(32, 32).is_equal_approx(EMPTY), "an empty page is not empty")
    page.queue_free()


func draw_all() -> void:
    for name in GLOBALS:
        check(ProjectSettings.has_setting("shader_globals/" + name), "no global parameter %s" % name)
        if not name in ["farm_key", "farm_shade", "farm_rim"]:
            RenderingServer.global_shader_parameter_set(name, 0.6)
    RenderingServer.global_shader_parameter_set("farm_glow", 1.0)
    var names: PackedStringArray = []
    for file in DirAccess.get_files_at("res://shaders"):
        if file.ends_with(".gdshader"):
            names.append(file.get_basename())
    for name in NEEDED:
        check(name in names, "no %s.gdshader" % name)
    for name in names:
        await draw_one(name)
    await see_nothing()
    await bend_limbs("person")
    await bend_limbs("animal")
    pose_person()
    print("SHADERS drawn %d, wrong %d" % [names.size(), failures])
    quit(0 if failures == 0 else 1)
