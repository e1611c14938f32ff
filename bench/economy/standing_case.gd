# What stands on a farm and steps by itself: `count` of a thing, timed in view and out of view. A case says what to build.
extends "bench_case.gd"

var title := ""
var count := 0


# To be written by a case: the i-th thing, loose.
func make(_i: int) -> Node3D:
	return null


# Called before each frame, uncounted: what the things need to go on working.
func feed(_things: Array[Node3D]) -> void:
	pass


func measure() -> void:
	for seen in [true, false]:
		fresh()
		Glebworks.set_view(HERE if seen else ELSEWHERE)
		var empty: float = (await frame_times(300, tick))[1]
		var things: Array[Node3D] = []
		for i in count:
			things.append(make(i))
			top.add_child(things[i])
		for i in 300:
			feed(things)
			tick()
			await tree.process_frame
		var times := await frame_times(900, tick, feed.bind(things))
		row("%d %s %s, a frame" % [count, title, "in view" if seen else "out of view"], times[1] - empty)


func tick() -> void:
	Glebworks.slow_tick(1.0 / 60.0)
	Glebworks.timed_tick(1.0 / 60.0)
	WalkerCore.tick_far(1.0 / 60.0)
