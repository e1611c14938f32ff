# The loops of bindings_bench.cpp as an engine script, and the table of both. Run by bench/run bindings.
extends SceneTree

# Upper bounds that the layer is held to, nanoseconds (the last: microseconds a frame).
const FIGURES := {
	"set_position": 10.0, "get_global_position": 16.0, "dictionary, prepared key": 40.0,
	"dictionary, literal key": 65.0, "call by prepared name": 116.0, "call by literal name": 140.0,
	"node made and freed": 221.0, "10,000 nodes processed (us)": 310.0,
}
const ROUNDS := 9
const CALLS := 20000


class Target extends Node3D:
	signal rang(by: int)
	var count := 0

	func bump(by: int) -> int:
		count += by
		return count

	func heard(by: int) -> void:
		count += by


class Processed extends Node3D:
	var time := 0.0

	func _process(delta: float) -> void:
		time += delta


func _initialize() -> void:
	run.call_deferred()


func median(values: Array) -> float:
	values.sort()
	return values[values.size() / 2]


# `body` runs one batch of CALLS.
func time(body: Callable) -> float:
	var rounds := []
	for _r in ROUNDS:
		var from := Time.get_ticks_usec()
		body.call()
		rounds.append((Time.get_ticks_usec() - from) * 1000.0 / CALLS)
	return median(rounds)


func script_times(node: Node3D) -> Dictionary:
	var target := Target.new()
	node.add_child(target)
	var plain := Node3D.new()
	var prices := {}
	for i in 100:
		prices["good_" + str(i)] = i
	var key := "good_42"
	var list := []
	list.resize(100)
	list.fill(1)
	var good := "good_"
	var turn := Transform3D(Basis(Vector3.UP, 0.01), Vector3.ZERO)
	target.rang.connect(target.heard)
	var out := {}
	out["set_position"] = time(func() -> void:
		for i in CALLS:
			plain.set_position(Vector3(i, 0, 0)))
	out["get_global_position"] = time(func() -> void:
		var sink := 0.0
		for i in CALLS:
			sink += target.get_global_position().x)
	out["dictionary, prepared key"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += prices[key])
	out["dictionary, literal key"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += prices["good_42"])
	out["call by prepared name"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += target.call(&"bump", 1))
	out["call by literal name"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += target.call("bump", 1))
	out["node made and freed"] = time(func() -> void:
		for i in CALLS:
			Node3D.new().free())
	out["own node made and freed"] = time(func() -> void:
		for i in CALLS:
			Target.new().free())
	out["signal to a method"] = time(func() -> void:
		for i in CALLS:
			target.rang.emit(1))
	out["get_child and cast"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += int((node.get_child(0) as Target) != null))
	out["array of 100 summed"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			for v in list:
				sink += v)
	out["text joined and compared"] = time(func() -> void:
		var sink := 0
		for i in CALLS:
			sink += int((good + "42") == "good_42"))
	out["transform multiplied"] = time(func() -> void:
		var all := Transform3D()
		for i in CALLS:
			all = all * turn)
	plain.free()
	target.free()
	return out


# Microseconds a frame that 10,000 such nodes add.
func processed(make: Callable) -> float:
	var idle := await frame_time()
	var top := Node.new()
	for _i in 10000:
		top.add_child(make.call())
	root.add_child(top)
	var busy := await frame_time()
	top.free()
	return busy - idle


func frame_time() -> float:
	var times := []
	for _i in 10:
		await process_frame
	for _i in 100:
		var from := Time.get_ticks_usec()
		await process_frame
		times.append(float(Time.get_ticks_usec() - from))
	return median(times)


func run() -> void:
	var node := Node3D.new()
	root.add_child(node)
	var ours: Dictionary = ClassDB.instantiate(&"BindingsBench").run(node)
	var scripts := script_times(node)
	ours["10,000 nodes processed (us)"] = await processed(func() -> Node: return ClassDB.instantiate(&"BenchProcessed"))
	scripts["10,000 nodes processed (us)"] = await processed(func() -> Node: return Processed.new())
	print("| case | ours, ns | script, ns | ratio | at most |")
	print("|---|---|---|---|---|")
	for name: String in ours:
		if scripts.has(name):
			print("| %s | %.1f | %.1f | %.1f | %s |" % [name, ours[name], scripts[name],
					scripts[name] / maxf(ours[name], 0.1), FIGURES.get(name, "")])
	quit(0)
