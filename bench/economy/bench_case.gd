# What the cases share: a stage of their own, medians of frames and calls, the table's rows.
extends RefCounted

const HERE := Rect2(-50, -50, 400, 100)
const ELSEWHERE := Rect2(5000, 5000, 10, 10)

var tree: SceneTree
var top: Node3D


# To be written by a case: builds what it times and prints its rows.
func measure() -> void:
	pass


# An empty stage, on which goods and money are made too and drawn in one batch, as on a farm.
func fresh() -> void:
	clear()
	top = Node3D.new()
	tree.root.add_child(top)
	top.add_child(ItemBatch.new())
	Item.set_items_root(top)


func clear() -> void:
	if top:
		Item.set_items_root(null)
		top.free()
		top = null


func median(values: Array) -> float:
	values.sort()
	return values[values.size() / 2]


# Mean without the slowest twentieth, which belongs to the machine's other work.
func typical(values: Array) -> float:
	values.sort()
	var kept: int = values.size() * 19 / 20
	var sum := 0.0
	for i in kept:
		sum += values[i]
	return sum / kept


# Typical times in microseconds: of `step`, which runs once a frame, and of the whole frame with it. `before` runs ahead
# of each frame and is not counted.
func frame_times(frames: int, step := Callable(), before := Callable()) -> Array[float]:
	var own := []
	var whole := []
	for i in frames + 20:
		if before.is_valid():
			before.call()
		var from := Time.get_ticks_usec()
		if step.is_valid():
			step.call()
		var between := Time.get_ticks_usec()
		await tree.process_frame
		if i >= 20:
			own.append(between - from)
			whole.append(Time.get_ticks_usec() - from)
	return [typical(own), typical(whole)]


# Median time of one call in microseconds, of batches of `calls`. `between` runs before each batch and is not counted.
func call_time(batches: int, calls: int, body: Callable, between := Callable()) -> float:
	var times := []
	for _i in batches:
		if between.is_valid():
			between.call()
		var from := Time.get_ticks_usec()
		for _j in calls:
			body.call()
		times.append(float(Time.get_ticks_usec() - from) / calls)
	return median(times)


func row(name: String, ours: float, script := -1.0) -> void:
	if script < 0.0:
		print("| %s | %.2f | | |" % [name, ours])
	else:
		print("| %s | %.2f | %.2f | %.1f |" % [name, ours, script, script / maxf(ours, 0.001)])
