# Builds and runs the scripted twins. Loops stay on this side, so that no call from outside is timed with them.
extends RefCounted

const Goods := preload("script_goods.gd")
const Staff := preload("script_staff.gd")
const STEP := 1.0 / 60.0

var goods_pile: Goods.GoodsPile
var slow_list: Goods.SlowList
var far_list: Staff.FarList
var hauler: Staff.ScriptHauler


func clear() -> void:
	goods_pile = null
	slow_list = null
	far_list = null
	if hauler:
		for z in hauler.zones:
			z.claims.clear() # they hold the hauler
	hauler = null


func resting(top: Node, n: int) -> void:
	var batch := Goods.Batch.new()
	top.add_child(batch)
	for i in n:
		var good := Goods.Good.new()
		top.add_child(good)
		good.global_position = Vector3(i % 100 - 50, 0, i / 100 - 50)
		good.set_process(false)
		batch.join(good)
	batch.set_process(false)


func flying(top: Node, n: int) -> void:
	var batch := Goods.Batch.new()
	batch.process_priority = 1000
	top.add_child(batch)
	for i in n:
		var good := Goods.Good.new()
		top.add_child(good)
		good.global_position = Vector3(i % 40, 0, i / 50)
		good.fly_to(Vector3(20, 0, -20), 100000.0)
		batch.join(good)


func pile(top: Node, n: int) -> void:
	goods_pile = Goods.GoodsPile.new()
	top.add_child(goods_pile)
	for _i in n:
		var good := Goods.Good.new()
		top.add_child(good)
		goods_pile.add(good, 0.0)


func run_pile(n: int) -> void:
	for _i in n:
		goods_pile.add(goods_pile.take(""), 0.3)


func slow(top: Node, n: int) -> void:
	slow_list = Goods.SlowList.new()
	for _i in n:
		var node := Goods.SlowNode.new()
		top.add_child(node)
		slow_list.add(node)


func run_slow(n: int) -> void:
	for _i in n:
		slow_list.tick(STEP)


func walker(top: Node, at: Vector3) -> Staff.ScriptWalker:
	var w := Staff.ScriptWalker.new()
	w.far = far_list
	w.build(at)
	top.add_child(w)
	return w


func walkers(top: Node, n: int) -> void:
	for i in n:
		walker(top, Vector3(i % 30 - 20, 0, i / 10 - 20))


func far(top: Node, n: int) -> void:
	far_list = Staff.FarList.new()
	for i in n:
		walker(top, Vector3(200 + i % 30, 0, i / 30))._process(STEP)


func run_far(n: int) -> void:
	for _i in n:
		far_list.tick(STEP)


func zone(mode: String, group: String, kind: String, level: int, goods: int, at: Vector3) -> void:
	var z := Staff.ScriptZone.new()
	z.mode = mode
	z.group = group
	z.pos = at
	z.counts[kind] = goods
	if mode == "take":
		z.makes = kind
	else:
		z.accepts[kind] = level
	hauler.zones.append(z)


func choice(top: Node) -> void:
	var kinds := ["wheat", "bean", "corn", "egg", "milk", "tomato", "apple", "hay", "hen", "honey"]
	var levels := [60, 55, 50, 40, 40, 40, 40, 40, 40, 40]
	var machines := [["flour_mill", "wheat"], ["coffee_grinder", "bean"], ["oil_press", "sunflower"],
			["butcher", "calf"], ["poultry_plant", "hen"]]
	hauler = Staff.ScriptHauler.new()
	for i in 100:
		zone("take", "tray", kinds[i % 10], 0, 4 + i % 15, Vector3(i % 25, 0, -6 - i / 25))
	for i in 120:
		zone("give", "stall_" + kinds[i % 10], kinds[i % 10], levels[i % 10], 0, Vector3(i % 25, 0, 4 + i / 25))
	for i in 20:
		zone("give", "coop_%d_feed" % i, "corn", 40, 0, Vector3(i, 0, -20))
	for i in 10:
		zone("give", machines[i % 5][0], machines[i % 5][1], 10, 0, Vector3(i, 0, -30))
	hauler.walker = walker(top, Vector3.ZERO)
	hauler.walker.set_process(false)
	hauler.kinds.assign(kinds.slice(0, 4))
	hauler.dst_group = "stall_wheat|stall_bean|stall_corn|stall_egg"


func run_choice(n: int) -> void:
	for _i in n:
		hauler.walker.position = Vector3.ZERO
		hauler.state = 0
		hauler.tick(STEP)
	if hauler.kind != "egg":
		push_error("The scripted hauler chose something else.")
