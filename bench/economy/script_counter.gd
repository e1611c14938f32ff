# A counter out of sight written as an engine script: what the core is measured against. Same rules, same stock.
extends Node3D

static var patience := 1.0
static var spawn_mult := 1.0
static var rush := false

var products: Array[String] = ["egg"]
var level := 1
var stock: Node3D
var view := Rect2()
var spawn_z := 22.0
var clock := 0.0
var spawn_clock := 0.0
var swap_clock := 0.0
var pay_clock := 0.0
var slow_clock := 0.0
var ghosts: Array[Dictionary] = []
var earned := 0


func in_view(x: float, z: float, margin: float) -> bool:
	return view.grow(margin).has_point(Vector2(x, z))


func stocked() -> int:
	var sum := 0
	for k in products:
		sum += stock.count_kind(k)
	return sum


func mood(wait: float) -> float:
	return 1.0 if wait <= 30.0 * patience else 0.7 if wait <= 60.0 * patience else 0.4


func pay(n: int, vip: bool, m: float) -> void:
	earned += maxi(1, roundi((3.0 if vip else 1.0) * roundf((level - 1) * 0.35 + 1.0) * 4 * m)) * n


func spawn() -> void:
	var goods := stocked()
	var t := clampf((goods / 96.0 - 0.25) / 0.75, 0.0, 1.0)
	var gap := (0.45 if rush else 1.4) * spawn_mult * (1.0 - 0.6 * t)
	if goods == 0:
		gap *= 3.0
	spawn_clock = gap + maxf(spawn_clock, -0.3)
	ghosts.append({
		"kind": products[randi_range(0, products.size() - 1)] if products.size() > 1 else products[0],
		"n": randi_range(2, 4) + roundi(t * 4), "vip": randf() < 0.07, "wait": 0.0, "walk": false,
	})


func sell(d: float) -> void:
	for g in ghosts:
		if stock.count_kind(g.kind) < g.n:
			g.wait += d
	if ghosts.is_empty():
		return
	var head := ghosts[0]
	var need: int = head.n + (2 if head.vip else 0)
	if products.size() >= 2 and stock.count_kind(head.kind) == 0 and stocked() > 0:
		swap_clock += d
		if swap_clock > 3.0:
			swap_clock = 0.0
			head.wait += 6.0
			for k in products:
				if stock.count_kind(k) > 0:
					head.kind = k
					break
		return
	swap_clock = 0.0
	pay_clock += d
	var t := pow(0.85, level - 1) * 0.16 * need + 0.45
	if pay_clock < t:
		return
	var have: int = stock.count_kind(head.kind)
	if have < need:
		if head.wait <= 90.0 * patience:
			return
		need = have
	pay_clock -= t
	if need > 0:
		stock.drop(head.kind, need)
	pay(need, head.vip, mood(head.wait))
	ghosts.pop_front()


func step(dt: float) -> void:
	var d := dt + slow_clock
	if not in_view(position.x, position.z, 8.0) and d < 0.3:
		slow_clock = d
		return
	slow_clock = 0.0
	clock += d
	var near := in_view(position.x, position.z, 12.0) or in_view(position.x, spawn_z, 4.0)
	spawn_clock -= d
	if ghosts.size() < 5 and spawn_clock <= 0.0:
		spawn()
	if not near:
		sell(d)
