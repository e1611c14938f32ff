# 20 machines that always have flour.
extends "standing_case.gd"


func _init() -> void:
	title = "machines"
	count = 20


func make(i: int) -> Node3D:
	return Machine.build({"id": "m%d" % i, "product": "bread", "title": "BAKERY", "recipe": {"flour": 1},
			"pos": Vector2(i * 9.0, 0)})


func feed(things: Array[Node3D]) -> void:
	for each in things:
		var stock: Node3D = each.get_input()
		while stock.count() < 4:
			stock.add(Item.spawn("flour", stock.global_position), 0.0)
		if each.get_output().count() > 20:
			each.get_output().take("bread").free()
