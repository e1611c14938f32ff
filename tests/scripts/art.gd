extends SceneTree
# What of the models' machinery an engine script may call: each static by name, with its arguments and what it returns.

var bad := 0


func check(good: bool, what: String) -> void:
	if not good:
		bad += 1
		print("FAILED: ", what)


func _initialize() -> void:
	run.call_deferred()


func run() -> void:
	var store := PrimStore.new()
	check(store is Resource and store.shapes == {}, "a fresh store is empty")
	store.shapes = {"b1": [1, 2]}
	check(store.get_shapes() == {"b1": [1, 2]}, "shapes, get_shapes")
	store.set_shapes({"c": []})
	check(store.shapes == {"c": []}, "set_shapes")
	check(ResourceSaver.save(store, "user://store.res", 0) == OK, "a store is saved")
	check((ResourceLoader.load("user://store.res", "", ResourceLoader.CACHE_MODE_IGNORE) as PrimStore).shapes == {"c": []},
			"and read")

	for name in ["Models", "AddonModels", "AvatarModels", "Buildings", "CanteenModels", "CoffeeModels", "Decor",
			"FarmhouseModel", "HomeModels", "IconModels", "PetModels", "ServiceModels"]:
		check(ClassDB.class_exists(name) and ClassDB.get_parent_class(name) == "RefCounted", name)
		check(ClassDB.class_get_method_list(name, true).is_empty(), name + " offers scripts nothing")

	poses()
	clusters()
	check(bad == 0, "%d wrong" % bad)
	print("art statics: %d wrong" % bad)
	quit(0 if bad == 0 else 1)


func poses() -> void:
	var person := Node3D.new()
	root.add_child(person)
	var body := Node3D.new()
	person.add_child(body)
	var limb := Node3D.new()
	body.add_child(limb)
	var mm := MultiMesh.new()
	mm.transform_format = MultiMesh.TRANSFORM_3D
	mm.use_custom_data = true
	mm.mesh = BoxMesh.new()
	mm.instance_count = 2
	Glebworks.pose_add(person, body, [limb, null, "none"], mm)
	Glebworks.sync_poses()
	Glebworks.push_moving(mm, [person, null, body, limb])
	check(mm.visible_instance_count == 2, "push_moving takes what there is room for")
	limb.free()
	Glebworks.sync_poses()
	person.free()
	for i in 11:
		Glebworks.sync_poses()


func clusters() -> void:
	var points: PackedVector3Array = [Vector3(0, 0, 0), Vector3(8, 0, 0), Vector3(3.2, 0, 0), Vector3(3.8, 0, 0)]
	var up: PackedVector3Array = []
	var white: PackedColorArray = []
	for p in points:
		up.append(Vector3.UP)
		white.append(Color.WHITE)
	var out: Array = Glebworks.cluster(points, up, white, PackedInt32Array([0, 1, 2, 0, 2, 3]), 8)
	check(out.size() == 4 and out[0].size() == 3, "two of four points are one cluster")
	check(out[0][2].is_equal_approx(Vector3(3.5, 0, 0)), "in their middle")
	check(out[3] == PackedInt32Array([0, 1, 2]), "the triangle within it is gone")
	check(Glebworks.cluster(points, up, white, PackedInt32Array([0, 1, 2]), 0)[0] == points, "no grid, no change")
	var empty: Array = Glebworks.cluster(PackedVector3Array(), PackedVector3Array(), PackedColorArray(), PackedInt32Array(), 8)
	check(empty[0].is_empty(), "nothing gives nothing")
