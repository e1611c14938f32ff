# The goods written as engine scripts: what the cores are measured against. Same rules, same calls to the engine.
extends RefCounted


class Batch:
	extends MultiMeshInstance3D
	var members: Array = []

	func _init() -> void:
		multimesh = MultiMesh.new()
		multimesh.transform_format = MultiMesh.TRANSFORM_3D
		multimesh.mesh = BoxMesh.new()
		multimesh.custom_aabb = AABB(Vector3(-800, -5, -60), Vector3(1600, 60, 100))

	func join(it: Node3D) -> void:
		if members.size() >= multimesh.instance_count:
			multimesh.instance_count = maxi(8, multimesh.instance_count * 2)
			for i in members.size():
				multimesh.set_instance_transform(i, members[i].global_transform)
		multimesh.set_instance_transform(members.size(), it.global_transform)
		members.append(it)
		multimesh.visible_instance_count = members.size()

	func push() -> void:
		for i in members.size():
			multimesh.set_instance_transform(i, members[i].global_transform)

	func _process(_dt: float) -> void:
		push()


class Good:
	extends Node3D
	var kind := "egg"
	var target := Vector3.ZERO
	var target_yaw := 0.0
	var follow_speed := 22.0
	var hide_on_arrival := false
	static var view := Rect2(-50, -50, 100, 100).grow(3.0)
	var fly_start := Vector3.ZERO
	var flight_t := 1.0
	var flight_time := 0.3

	func _init() -> void:
		top_level = true
		var shape := MeshInstance3D.new()
		shape.visible = false # drawn by the batch
		add_child(shape)

	func seen(p: Vector3) -> bool:
		return view.has_point(Vector2(p.x, p.z))

	func fly_to(pos: Vector3, dur: float) -> void:
		fly_start = global_position
		target = pos
		flight_time = dur
		flight_t = 0.0
		set_process(true)

	func set_target_yaw(yaw: float) -> void:
		if is_processing() or not is_equal_approx(yaw, target_yaw):
			target_yaw = yaw
			set_process(true)

	func arrive() -> void:
		global_position = target
		rotation.y = target_yaw
		flight_t = 1.0
		set_process(false)
		if hide_on_arrival:
			hide_on_arrival = false
			visible = false

	func _process(dt: float) -> void:
		var pos := global_position
		if not is_visible_in_tree() or (not seen(target) and not seen(pos)):
			arrive()
			return
		var next: Vector3
		if flight_t < 1.0:
			flight_t = minf(1.0, flight_t + dt / flight_time)
			next = fly_start.lerp(target, flight_t)
			next.y += (1.0 + 0.12 * fly_start.distance_to(target)) * sin(PI * flight_t)
		else:
			next = pos + (target - pos) * (1.0 - exp(-follow_speed * dt))
		var yaw := lerp_angle(rotation.y, target_yaw, 1.0 - exp(-12.0 * dt))
		if flight_t >= 1.0 and next.distance_squared_to(target) < 2.5e-5 and absf(angle_difference(yaw, target_yaw)) < 0.01:
			arrive()
			return
		global_position = next
		rotation.y = yaw


class GoodsPile:
	extends Node3D
	var items: Array = []
	var counts := {}
	var cols := 4
	var rows := 2
	var spacing := Vector2(0.68, 0.58)
	var layer_h := 0.34
	var show_limit := 8

	func slot_in(at: Transform3D, i: int) -> Vector3:
		var index := mini(i, show_limit - 1) if show_limit > 0 else i
		var per := cols * rows
		var r := index % per
		return at * Vector3((r % cols - (cols - 1) / 2.0) * spacing.x, (index / per) * layer_h,
				(r / cols - (rows - 1) / 2.0) * spacing.y)

	func add(it: Good, dur: float) -> void:
		var n := items.size()
		items.append(it)
		counts[it.kind] = counts.get(it.kind, 0) + 1
		var at := global_transform
		it.set_target_yaw(at.basis.get_euler().y)
		it.fly_to(slot_in(at, n), dur)
		it.follow_speed = 25.0
		it.hide_on_arrival = show_limit > 0 and n >= show_limit

	func take(kind: String) -> Good:
		for i in range(items.size() - 1, -1, -1):
			var it: Good = items[i]
			if kind == "" or it.kind == kind:
				items.remove_at(i)
				counts[it.kind] -= 1
				it.hide_on_arrival = false
				if not it.visible:
					it.visible = true
				reflow()
				return it
		return null

	func reflow() -> void:
		var at := global_transform
		for i in mini(items.size(), show_limit if show_limit > 0 else items.size()):
			var it: Good = items[i]
			it.hide_on_arrival = false
			if not it.visible:
				it.visible = true
			var slot := slot_in(at, i)
			if it.target != slot:
				it.target = slot
				it.set_process(true)


class SlowNode:
	extends Node3D
	var time := 0.0

	func _process(dt: float) -> void:
		time += dt


class SlowList:
	var nodes: Array = []
	var stamps: Array = []
	var clock := 0.0
	var cursor := 0

	func add(n: Node) -> void:
		n.set_process(false)
		nodes.append(n)
		stamps.append(clock)

	func tick(dt: float) -> void:
		clock += dt
		for _i in ceili(nodes.size() / 4.0):
			cursor = cursor % nodes.size()
			var n: Variant = nodes[cursor]
			if not is_instance_valid(n):
				nodes.remove_at(cursor)
				stamps.remove_at(cursor)
				continue
			var elapsed: float = clock - stamps[cursor]
			stamps[cursor] = clock
			cursor += 1
			if elapsed > 0.0 and n.is_inside_tree() and n.can_process():
				n._process(elapsed)
