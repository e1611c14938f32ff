extends SceneTree
# Reads the whole plan as an engine script does and compares it with the table given by --table=.

func _initialize() -> void:
	var table := ""
	for word in OS.get_cmdline_user_args():
		if word.begins_with("--table="):
			table = word.trim_prefix("--table=")
	var want: Array[String] = []
	for line in FileAccess.get_file_as_string(table).split("\n", false):
		if not line.begins_with("#"):
			want.append(line)
	var plan: Array = FarmData.plan()
	var bad := 0
	if want.is_empty() or plan.size() != want.size():
		print("FAILED: %d entries, %d lines" % [plan.size(), want.size()])
		bad += 1
	for i in mini(plan.size(), want.size()):
		var got := line_of(plan[i])
		if got != want[i]:
			print("FAILED: got  %s\n        want %s" % [got, want[i]])
			bad += 1
	for entry: Dictionary in plan:
		if FarmData.entry_by_id(entry.id) != entry:
			print("FAILED: %s is not found by its id" % entry.id)
			bad += 1
	print("%d entries read, %d bad" % [plan.size(), bad])
	quit(0 if bad == 0 else 1)

func line_of(e: Dictionary) -> String:
	var basic := ["id", "kind", "title", "region", "pos", "pad", "costs", "base", "req"]
	var more := PackedStringArray()
	var keys := e.keys().filter(func(key: String) -> bool: return key not in basic)
	keys.sort()
	for key: String in keys:
		more.append("%s=%s" % [key, words(e[key])])
	var pad: String = words(e.pad) if e.has("pad") else "-"
	return "\t".join([e.id, e.kind, e.title, e.region, words(e.pos), pad, spaced(e.costs), words(e.base), spaced(e.req),
			";".join(more) if more.size() > 0 else "-"])

func spaced(list: Array) -> String:
	return " ".join(list.map(words)) if not list.is_empty() else "-"

# The shortest text of a single-precision number.
func number(v: float) -> String:
	return String.num(v, 4).trim_suffix(".0")

func words(v: Variant) -> String:
	match typeof(v):
		TYPE_VECTOR2:
			return "%s,%s" % [number(v.x), number(v.y)]
		TYPE_RECT2:
			return ",".join([v.position.x, v.position.y, v.size.x, v.size.y].map(number))
		TYPE_COLOR:
			return v.to_html(false)
		TYPE_ARRAY:
			return ",".join(v.map(words))
		TYPE_DICTIONARY:
			var parts := PackedStringArray()
			for key: String in v:
				var text := words(v[key])
				parts.append(key + (":" + text if v[key] is int else "(" + text + ")"))
			return ",".join(parts)
		TYPE_BOOL:
			return "true" if v else "false"
	return str(v)
