# Walkers, the far list and the hauler's choice written as engine scripts: the same rules as the cores.
extends RefCounted

const SLEEP_VIEW := Rect2(-60, -60, 120, 120) # the view, widened by 10
const TURN_VIEW := Rect2(-56, -56, 112, 112)


class ScriptWalker:
	extends Node3D
	static var boost := 1.0
	var far: FarList
	var speed := 3.4
	var rest_mult := 1.0
	var cover_speed := 1.0
	var phase := 0.0
	var far_clock := 0.0
	var velocity := Vector3.ZERO
	var path: Array[Vector3] = []
	var idle := false
	var idle_count := -1
	var model: Node3D
	var body: Node3D
	var leg_l: Node3D
	var leg_r: Node3D
	var arm_l: Node3D
	var arm_r: Node3D
	var body_y := 0.0
	var carried := 0
	var asleep := false
	var listed := false
	var ticking := false
	var stamp := 0.0
	var ends: Array[Vector3] = []
	var back := false

	func build(at: Vector3) -> void:
		model = Node3D.new()
		add_child(model)
		body = Node3D.new()
		model.add_child(body)
		var limbs: Array[Node3D] = []
		for _i in 4:
			limbs.append(Node3D.new())
			body.add_child(limbs[-1])
		leg_l = limbs[0]
		leg_r = limbs[1]
		arm_l = limbs[2]
		arm_r = limbs[3]
		position = at
		ends = [at, at + Vector3(6, 0, 0), at + Vector3(6, 0, 9)]

	func _process(dt: float) -> void:
		tick(dt)

	func tick(dt: float) -> void:
		if path.is_empty():
			back = not back
			path.assign([ends[0], ends[1], ends[2]] if back else [ends[2], ends[1], ends[0]])
		dt = lod(dt)
		if dt > 0.0 and core_step(dt):
			core_animate(dt, false)

	func lod(dt: float) -> float:
		if ticking:
			return dt
		var p := global_position
		if SLEEP_VIEW.has_point(Vector2(p.x, p.z)):
			return dt
		asleep = true
		stamp = far.clock
		set_process(false)
		if not listed:
			listed = true
			far.members.append(self)
		return dt

	func core_step(dt: float) -> bool:
		var p := position
		if not SLEEP_VIEW.has_point(Vector2(p.x, p.z)):
			far_clock += dt
			if far_clock >= 0.1:
				follow_path(far_clock)
				far_clock = 0.0
			return false
		far_clock = 0.0
		var wanted := Vector3.ZERO
		if not path.is_empty():
			var way := path[0] - p
			way.y = 0.0
			var d := way.length()
			if d < 0.15:
				path.pop_front()
			else:
				wanted = way * (speed * rest_mult * cover_speed * boost / d)
		velocity = velocity.lerp(wanted, 1.0 - exp(-10.0 * dt))
		var stopped := path.is_empty() and velocity.length_squared() < 0.0004
		if stopped and idle and carried == idle_count:
			return false
		idle = stopped
		idle_count = carried
		var now := p + velocity * dt
		if not path.is_empty():
			var way := path[0] - p
			way.y = 0.0
			if (velocity * dt).length_squared() >= way.length_squared():
				now = Vector3(path[0].x, p.y, path[0].z)
		position = now
		if not TURN_VIEW.has_point(Vector2(now.x, now.z)):
			idle = false
			return false
		face(velocity, dt)
		return true

	func follow_path(dt: float) -> void:
		var budget := speed * rest_mult * cover_speed * boost * dt
		velocity = Vector3.ZERO
		idle = false
		if path.is_empty():
			return
		var p := position
		while not path.is_empty() and budget > 0.0:
			var way := path[0] - p
			way.y = 0.0
			var d := way.length()
			if d > budget:
				p += way * (budget / d)
				break
			budget -= d
			p = Vector3(path[0].x, p.y, path[0].z)
			path.pop_front()
		position = p

	func face(dir: Vector3, dt: float) -> void:
		if dir.length_squared() <= 0.0004:
			return
		var yaw := atan2(-dir.x, -dir.z)
		var turn := angle_difference(model.rotation.y, yaw)
		if absf(turn) >= 1e-5:
			model.rotation.y += turn * (1.0 - exp(-14.0 * dt))

	func core_animate(dt: float, carrying: bool) -> void:
		var s01 := minf(1.0, velocity.length() / maxf(0.1, speed))
		if s01 > 0.05:
			phase += dt * (7.0 * s01 + 4.0)
		var swing := sin(phase) * 0.7 * s01
		leg_l.rotation.x = swing
		leg_r.rotation.x = -swing
		if carrying:
			arm_l.rotation.x += (1.35 - arm_l.rotation.x) * 0.3
			arm_r.rotation.x += (1.35 - arm_r.rotation.x) * 0.3
		else:
			arm_l.rotation.x = -swing * 0.8
			arm_r.rotation.x = swing * 0.8
		body.position.y = body_y + (absf(cos(phase)) - 0.35) * 0.05 * s01
		var turn := body.rotation
		turn.z = sin(phase) * 0.045 * s01
		turn.x += (-0.09 * s01 * (0.6 if carrying else 1.0) - turn.x) * 0.15
		body.rotation = turn


class FarList:
	var members: Array[ScriptWalker] = []
	var cursor := 0
	var clock := 0.0

	func tick(dt: float) -> void:
		clock += dt
		var begin := Time.get_ticks_usec()
		var visits := mini(members.size(), ceili(dt * members.size() / 0.3) + 1)
		for _i in visits:
			if members.is_empty() or Time.get_ticks_usec() - begin >= 2500:
				break
			if cursor >= members.size():
				cursor = 0
			if not is_instance_valid(members[cursor]):
				members.remove_at(cursor)
				continue
			var w := members[cursor]
			if not w.asleep or not w.is_inside_tree():
				w.listed = false
				members.remove_at(cursor)
				continue
			var elapsed := clock - w.stamp
			w.stamp = clock
			if not w.can_process():
				cursor += 1
				continue
			var p := w.global_position
			if SLEEP_VIEW.has_point(Vector2(p.x, p.z)):
				w.asleep = false
				w.listed = false
				members.remove_at(cursor)
				w.set_process(true)
			else:
				cursor += 1
			if elapsed > 0.0:
				w.ticking = true
				w.tick(elapsed)
				w.ticking = false


class ScriptZone:
	var pos: Vector3
	var mode: String
	var counts := {} # of its pile
	var accepts := {}
	var makes := ""
	var group := ""
	var owner_group := ""
	var active := true
	var claims: Array[Dictionary] = []

	func room(kind: String) -> int:
		if not active or mode != "give" or not accepts.has(kind):
			return 0
		return accepts[kind] - counts.get(kind, 0)

	func claimed(kind: String, me: Object) -> int:
		if claims.is_empty():
			return 0
		var now := Time.get_ticks_msec()
		var sum := 0
		var i := 0
		while i < claims.size():
			var c := claims[i]
			if c.expires <= now:
				claims[i] = claims[-1]
				claims.pop_back()
				continue
			if c.kind == kind and c.claimant != me:
				sum += c.n
			i += 1
		return sum

	func release(me: Object) -> void:
		for i in range(claims.size() - 1, -1, -1):
			if claims[i].claimant == me:
				claims.remove_at(i)

	func claim(me: Object, kind: String, n: int) -> void:
		release(me)
		claims.append({"claimant": me, "kind": kind, "n": n, "expires": Time.get_ticks_msec() + 180000})


class ScriptHauler:
	const NEEDS := {"coffee_grinder": "bean", "ahwa": "coffee", "flour_mill": "wheat", "oil_press": "sunflower",
			"butcher": "calf", "poultry_plant": "hen"}
	var walker: ScriptWalker
	var capacity := 5
	var zones: Array[ScriptZone] = []
	var kinds: Array[String] = []
	var dst_group := ""
	var state := 0
	var trough_half := 20
	var source: ScriptZone
	var destination: ScriptZone
	var kind := ""
	var seen := -1
	var destinations: Array[ScriptZone] = []
	var takes: Array[ScriptZone] = []
	var feeds: Array[ScriptZone] = []
	var machines: Array[ScriptZone] = []

	func refresh() -> void:
		if zones.size() == seen:
			return
		seen = zones.size()
		destinations.clear()
		takes.clear()
		feeds.clear()
		machines.clear()
		var names := dst_group.split("|")
		for z in zones:
			var feed := z.group.ends_with("_feed")
			if (feed if dst_group == "@feed" else names.has(z.group) or (z.owner_group != "" and names.has(z.owner_group))):
				destinations.append(z)
			if z.mode == "take":
				takes.append(z)
			if feed:
				feeds.append(z)
			if NEEDS.has(z.group) or NEEDS.has(z.owner_group):
				machines.append(z)

	func tick(dt: float) -> void:
		dt = walker.lod(dt)
		if dt <= 0.0:
			return
		if state == 0:
			choose()
		if walker.core_step(dt):
			pass

	func choose() -> void:
		refresh()
		var candidates: Array[Array] = []
		for z in destinations:
			if not z.active:
				continue
			for k in kinds:
				var want := z.room(k) - z.claimed(k, self)
				if want > 0:
					candidates.append([want, z, k])
		candidates.sort_custom(func(a: Array, b: Array) -> bool: return a[0] > b[0])
		for c in candidates:
			if attempt(c[0], c[1], c[2]):
				return
		state = 5

	func attempt(want: int, to: ScriptZone, k: String) -> bool:
		var here := walker.position
		var from: ScriptZone = null
		var best := 0.0
		var available := 0
		for z in takes:
			if not z.active or z.makes != k:
				continue
			var a: int = z.counts.get(k, 0) - z.claimed(k, self)
			if a <= 0:
				continue
			var score := a - 0.15 * (here.distance_to(z.pos) + z.pos.distance_to(to.pos))
			if from == null or score > best:
				from = z
				best = score
				available = a
		var much := from != null and available >= (6 if k == "hen" or k == "calf" else 20)
		var troughs_first := feed_first(k)
		if troughs_first and not much:
			return false
		if not much and (from == null or machine_wants(k)):
			return false
		var n := mini(capacity, want)
		if troughs_first:
			n = mini(n, available - 20)
		if n < 1:
			return false
		if source:
			source.release(self)
		if destination:
			destination.release(self)
		source = from
		destination = to
		kind = k
		source.claim(self, k, n)
		destination.claim(self, k, n)
		state = 1
		var p := walker.position
		if absf(p.z - 1.2) > 0.5 and absf(p.x - source.pos.x) > 1.0:
			walker.path.assign([Vector3(p.x, 0, 1.2), Vector3(source.pos.x, 0, 1.2), source.pos])
		else:
			walker.path.assign([source.pos])
		return true

	func feed_first(k: String) -> bool:
		if dst_group == "@feed" or (k != "corn" and k != "hay"):
			return false
		for z in feeds:
			if z.active and z.room(k) > trough_half:
				return true
		return false

	func machine_wants(k: String) -> bool:
		for machine: String in NEEDS:
			if NEEDS[machine] != k or dst_group == machine:
				continue
			for z in machines:
				if z.active and (z.group == machine or z.owner_group == machine) and z.room(k) > 0:
					return true
		return false
