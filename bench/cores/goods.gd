# Times the goods cores beside the same loops as engine scripts, in one run:
#   tools/godot --headless --fixed-fps 60 --path project --script ../bench/cores/goods.gd
# (without --fixed-fps the headless engine sleeps between frames)
# Prints one markdown row a case: microseconds of the core, of the script, and their ratio (medians).
extends SceneTree

const ScriptGoods := preload("script_goods.gd")

var top: Node3D


func _initialize() -> void:
	Engine.max_fps = 0
	OS.low_processor_usage_mode = false
	run.call_deferred()


func median(values: Array) -> float:
	values.sort()
	return values[values.size() / 2]


# Median time of a frame, microseconds.
func frame_time(frames: int) -> float:
	var times := []
	for _i in 20:
		await process_frame
	for _i in frames:
		var from := Time.get_ticks_usec()
		await process_frame
		times.append(Time.get_ticks_usec() - from)
	return median(times)


# Median time of one call among `rounds` batches of `calls`, microseconds.
func call_time(rounds: int, calls: int, body: Callable) -> float:
	var times := []
	for _i in rounds:
		var from := Time.get_ticks_usec()
		for _j in calls:
			body.call()
		times.append(float(Time.get_ticks_usec() - from) / calls)
	return median(times)


func row(name: String, core: float, script: float) -> void:
	print("| %s | %.2f | %.2f | %.1f |" % [name, core, script, script / maxf(core, 0.001)])


func fresh() -> void:
	if top:
		root.remove_child(top)
		top.free()
	top = Node3D.new()
	root.add_child(top)


func core_good(mesh: Mesh, at: Vector3) -> Node3D:
	var it: Node3D = ItemCore.new()
	var shape := MeshInstance3D.new()
	shape.mesh = mesh
	it.add_child(shape)
	it.mesh_node = shape
	it.kind = "egg"
	it.top_level = true
	top.add_child(it)
	it.place(at)
	return it


func core_batch() -> Node3D:
	var batch: Node3D = ItemBatchCore.new()
	top.add_child(batch)
	return batch


func run() -> void:
	Glebworks.set_view(Rect2(-50, -50, 100, 100))
	var mesh := BoxMesh.new()
	print("| case | core us | script us | script / core |")
	print("|---|---|---|---|")

	fresh()
	core_batch()
	var empty := await frame_time(300)
	for i in 10000:
		core_good(mesh, Vector3(i % 100 - 50, 0, i / 100 - 50))
	for _i in 10:
		await process_frame
	var resting := await frame_time(300)
	fresh()
	for i in 10000:
		var good := ScriptGoods.Good.new()
		top.add_child(good)
		good.set_process(false)
	var script_resting := await frame_time(300)
	row("frame with nothing", empty, empty)
	row("frame with 10,000 resting goods", resting, script_resting)

	fresh()
	var batch := core_batch()
	for i in 2000:
		core_good(mesh, Vector3(i % 40, 0, i / 50)).fly_to(Vector3(20, 0, -20), 100000.0)
	process_frame.connect(batch.push)
	var flying := await frame_time(200)
	process_frame.disconnect(batch.push)
	fresh()
	var script_batch := ScriptGoods.Batch.new()
	top.add_child(script_batch)
	for i in 2000:
		var good := ScriptGoods.Good.new()
		top.add_child(good)
		good.global_position = Vector3(i % 40, 0, i / 50)
		good.fly_to(Vector3(20, 0, -20), 100000.0)
		script_batch.join(good)
	var script_flying := await frame_time(200)
	row("frame with 2,000 flying goods", flying - empty, script_flying - empty)

	fresh()
	core_batch()
	var pile: Node3D = PileCore.new()
	pile.cols = 4
	pile.rows = 2
	pile.show_limit = 8
	top.add_child(pile)
	var script_pile := ScriptGoods.GoodsPile.new()
	top.add_child(script_pile)
	for i in 24:
		pile.add(core_good(mesh, Vector3.ZERO), 0.0)
		var good := ScriptGoods.Good.new()
		top.add_child(good)
		script_pile.add(good, 0.0)
	var core_pile_time := call_time(50, 1000, func() -> void: pile.add(pile.take(""), 0.3))
	var script_pile_time := call_time(50, 1000, func() -> void: script_pile.add(script_pile.take(""), 0.3))
	row("pile: take and add one of 24", core_pile_time, script_pile_time)

	fresh()
	var list := ScriptGoods.SlowList.new()
	for i in 500:
		var it := core_good(mesh, Vector3.ZERO)
		it.fly_to(Vector3(20, 0, -20), 100000.0)
		Glebworks.slow_add(it)
		var good := ScriptGoods.Good.new()
		top.add_child(good)
		good.fly_to(Vector3(20, 0, -20), 100000.0)
		list.add(good)
	var tick := func() -> void: Glebworks.slow_tick(1.0 / 60.0)
	var slow := call_time(50, 100, tick)
	var script_slow := call_time(50, 100, func() -> void: list.tick(1.0 / 60.0))
	row("slow list of 500, one tick", slow, script_slow)
	root.remove_child(top)
	top.free()
	quit(0)
