# 7 fields that grow and are cut bare now and then.
extends "standing_case.gd"


func _init() -> void:
	title = "fields"
	count = 7


func make(i: int) -> Node3D:
	return CropField.build({"id": "f%d" % i, "crop": "corn", "rect": Rect2(i * 14.0, 0, 10, 10)})


func feed(things: Array[Node3D]) -> void:
	if Engine.get_process_frames() % 300 == 0:
		for each in things:
			each.collect_at(each.global_position, 9999, 20.0)
