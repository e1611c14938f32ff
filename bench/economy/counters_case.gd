# Stalls: a row of 28 with people in line, the same row out of sight, and one step out of sight beside a script's.
extends "bench_case.gd"

const ScriptCounter := preload("script_counter.gd")
const STALLS := 28


func pile(goods: int) -> Node3D:
	var made := Pile.new()
	made.cols = 4
	made.rows = 2
	made.show_limit = 8
	top.add_child(made)
	fill(made, goods)
	return made


func fill(stock: Node3D, goods: int) -> void:
	while stock.count() < goods:
		stock.add(Item.spawn("egg", stock.global_position), 0.0)


func stall(x: float, goods: int) -> Node3D:
	var made := SellCounter.new()
	made.set_goods("egg", [])
	made.position = Vector3(x, 0, 4.6)
	var tile := CashTile.new()
	tile.position = Vector3(x + 2.6, 0, 4.6)
	top.add_child(tile)
	made.stock = pile(goods)
	made.set_cash_tile(tile)
	made.set_world(top)
	top.add_child(made)
	return made


func row_of_stalls(view: Rect2) -> Array[Node3D]:
	fresh()
	Glebworks.set_view(view)
	var stalls: Array[Node3D] = []
	for i in STALLS:
		stalls.append(stall(i * 9.0, 60))
		stalls[i].slow_clock = 0.3 * i / STALLS # they do not all step in one frame
		stalls[i].slow_join() # the farm ticks the list once a frame
	for i in 1200: # lines fill up, walkers arrive
		refill(stalls)
		tick()
		await tree.process_frame
	return stalls


func refill(stalls: Array[Node3D]) -> void:
	for each in stalls:
		fill(each.stock, 60)


func people(stalls: Array[Node3D]) -> int:
	var sum := 0
	for each in stalls:
		sum += each.queue.size()
	return sum


func tick() -> void:
	Glebworks.slow_tick(1.0 / 60.0)
	WalkerCore.tick_far(1.0 / 60.0)


func measure() -> void:
	fresh()
	var empty: float = (await frame_times(300))[1]
	var stalls := await row_of_stalls(HERE)
	var seen := await frame_times(900, tick, refill.bind(stalls))
	row("%d stalls in view, their own steps, a frame" % STALLS, seen[0])
	row("the same with all that their %d people do" % people(stalls), seen[1] - empty)
	stalls = await row_of_stalls(ELSEWHERE)
	var unseen := await frame_times(900, tick, refill.bind(stalls))
	row("%d stalls out of view, a frame" % STALLS, unseen[0])

	fresh()
	Glebworks.set_view(ELSEWHERE)
	var core := stall(0.0, 0)
	core.slow_join() # alone in the list, it steps with each tick
	var script: Node3D = ScriptCounter.new()
	script.stock = pile(0)
	script.view = ELSEWHERE
	top.add_child(script)
	# Five wait and nothing is for sale: records are stepped, none is paid.
	var waits := func() -> void:
		script.ghosts.clear()
		while core.ghost_count() > 0:
			core.pop_ghost()
		for _i in 5:
			core.add_ghost("egg", 3, false, 0.0, false)
			script.ghosts.append({"kind": "egg", "n": 3, "vip": false, "wait": 0.0, "walk": false})
	var ours := call_time(60, 200, func() -> void: Glebworks.slow_tick(0.3), waits)
	var theirs := call_time(60, 200, func() -> void: script.step(0.3), waits)
	row("one step out of view, five waiting", ours, theirs)
	ours = call_time(60, 200, func() -> void: Glebworks.slow_tick(0.001), waits)
	theirs = call_time(60, 200, func() -> void: script.step(0.001), waits)
	row("one frame out of view between steps", ours, theirs)
	# Full shelves: each second or so somebody pays. Ours lays real money on the tile, the script only counts it.
	var sales := func() -> void:
		fill(core.stock, 96)
		fill(script.stock, 96)
	ours = call_time(60, 20, func() -> void: Glebworks.slow_tick(0.3), sales)
	theirs = call_time(60, 20, func() -> void: script.step(0.3), sales)
	row("one step out of view with sales", ours, theirs)
