extends SceneTree
# Loads a save, says what it holds, and saves again and again until it is killed. Each line is out before the next save;
# the word at its end tells a whole line from one that was cut in two.

func _initialize() -> void:
	var save: Node = ClassDB.instantiate("Save")
	save.path = "user://crash.json"
	save.read()
	var n: int = save.data.get("money", 0)
	if save.farms.size() > 0 and n > 0 and save.data.get("filler", {}).size() != 4000:
		print("TORN ", n, " end")
		quit(1)
		return
	print("LOADED ", n, " end")
	while save.farms.size() < 6:
		save.new_farm()
	save.switch_farm(0)
	# Large enough that many a kill lands inside a write.
	var filler := {}
	for i in 4000:
		filler["entry_%d" % i] = i * 7
	while true:
		n += 1
		save.data = {"money": n, "filler": filler}
		save.write()
		print("SAVED ", n, " end")
