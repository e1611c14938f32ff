# Runs the cases of this folder and prints a markdown row for each measurement. A case is a script <name>_case.gd that
# extends bench_case.gd; list it in CASES.
extends SceneTree

const CASES: Array[String] = ["counters", "producers", "machines", "fields"]


func _initialize() -> void:
	Engine.max_fps = 0
	OS.low_processor_usage_mode = false
	run.call_deferred()


func run() -> void:
	var here := (get_script() as Script).resource_path.get_base_dir()
	var wanted := OS.get_cmdline_user_args()
	print("| case | ours, us | script, us | script / ours |")
	print("|---|---|---|---|")
	for case_name in CASES:
		if not wanted.is_empty() and not wanted.has(case_name):
			continue
		var case: RefCounted = load(here.path_join(case_name + "_case.gd")).new()
		case.tree = self
		await case.measure()
		case.clear()
	quit(0)
