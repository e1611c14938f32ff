# 30 producers at level 5, fed: animals, hands, piles.
extends "standing_case.gd"

const PRODUCTS: Array[String] = ["egg", "milk", "fish", "honey", "wool", "apple"]


func _init() -> void:
	title = "producers"
	count = 30


func make(i: int) -> Node3D:
	var made := Producer.build({"id": "p%d" % i, "product": PRODUCTS[i % PRODUCTS.size()], "pos": Vector2(i * 9.0, 0)})
	made.set_level(5)
	return made


func feed(things: Array[Node3D]) -> void:
	for each in things:
		var trough: Node3D = each.get_trough()
		while trough and trough.count() < 10:
			trough.add(Item.spawn(each.feed_kind(), trough.global_position), 0.0)
