# The full farm, headless at fixed step: how long it takes to build, what a frame costs, and where the time goes.
# Run by `bench/run farm`. Words: --frames=N (10,000 by default)
extends "../../tools/game_script.gd"

const SETTLE_FRAMES := 600
const GROUP_FRAMES := 900
const GROUPS := ["SellCounter", "Customer", "Producer", "FarmHand", "MachineCore", "Hauler", "Worker", "Harvester",
        "FieldCore", "TruckCore", "ConveyorCore", "PetCore", "ItemCore", "Hud", "World"]

var frames := 10000
var started := 0
var last := 0
var last_work := 0
var longest_build := 0
var longest_work := 0
var note := "boot"
var built_at := -1
var frame := 0
var times := PackedInt64Array()
var group := -1
var group_times := PackedInt64Array()
var frozen: Array[Node] = []
var base_mean := 0.0


func _initialize() -> void:
    frames = int(word("frames", "10000"))
    started = Time.get_ticks_usec()
    last = started
    start()


func _process(_delta: float) -> bool:
    var now := Time.get_ticks_usec()
    var took := now - last
    last = now
    var farm := world()
    if built_at < 0:
        # The frame's own work beside its time: other programs' turns on the machine do not count.
        var work_now := work_done()
        var work := work_now - last_work
        last_work = work_now
        var next := "menu or warm-up" if farm == null else str(farm.build_note())
        if note != "boot":
            longest_build = maxi(longest_build, took)
            longest_work = maxi(longest_work, work)
            if work > 25000:
                print("| long build frame, from %s to %s | %.1f ms |" % [note, next, work / 1e3])
        note = next
    if farm == null or farm.get_building():
        return false
    if built_at < 0:
        built_at = now - started
        print("| building the farm | %.2f s |" % (built_at / 1e6))
        print("| longest frame of the build | %.1f ms |" % (longest_build / 1e3))
        print("| most work of a frame of the build | %.1f ms |" % (longest_work / 1e3))
    frame += 1
    if frame <= SETTLE_FRAMES:
        return false
    if group < 0:
        times.push_back(took)
        if times.size() >= frames:
            tell()
            next_group()
        return false
    group_times.push_back(took)
    if group_times.size() >= GROUP_FRAMES:
        var mean := mean_of(group_times)
        group_times.clear()
        if frozen.is_empty():
            base_mean = mean # just before: the farm goes on changing
            freeze(GROUPS[group])
            if frozen.is_empty():
                next_group() # all of them left meanwhile
        else:
            print("| %s (%d nodes) | %.0f us |" % [GROUPS[group], frozen.size(), base_mean - mean])
            thaw()
            next_group()
    return false


func tell() -> void:
    var sorted := times.duplicate()
    sorted.sort()
    var n := sorted.size()
    print("| frame, median of %d | %.2f ms |" % [n, sorted[n / 2] / 1e3])
    print("| frame, 99th percentile | %.2f ms |" % (sorted[n * 99 / 100] / 1e3))
    print("| frame, longest | %.2f ms |" % (sorted[n - 1] / 1e3))
    print("| nodes | %d |" % Performance.get_monitor(Performance.OBJECT_NODE_COUNT))
    print("| memory of the whole process, at most | %.0f MB |" % peak_memory())
    print("")
    print("| without it a frame is shorter by | |")
    print("|---|---|")


# Processor time of the main thread so far, microseconds; the kernel's own count, good to a tick of the machine.
func work_done() -> int:
    var stat := FileAccess.open("/proc/self/schedstat", FileAccess.READ)
    return stat.get_line().get_slice(" ", 0).to_int() / 1000 if stat != null else Time.get_ticks_usec()


func peak_memory() -> float:
    var status := FileAccess.open("/proc/self/status", FileAccess.READ)
    while status != null and not status.eof_reached():
        var line := status.get_line()
        if line.begins_with("VmHWM:"):
            return line.to_int() / 1024.0
    return 0.0


# The mean without the longest hundredth: a rare long frame must not decide what a group costs.
func mean_of(list: PackedInt64Array) -> float:
    var sorted := list.duplicate()
    sorted.sort()
    var n := maxi(1, sorted.size() * 99 / 100)
    var sum := 0
    for i in n:
        sum += sorted[i]
    return sum / float(n)


# Groups without a node that steps itself are left out.
func next_group() -> void:
    group += 1
    while group < GROUPS.size():
        collect(root, GROUPS[group])
        var steps := not frozen.is_empty()
        frozen.clear()
        if steps:
            return
        group += 1
    quit(0)


func freeze(name: String) -> void:
    collect(root, name)
    for node in frozen:
        node.set_process(false)


func thaw() -> void:
    for node in frozen:
        if is_instance_valid(node):
            node.set_process(true)
    frozen.clear()


func collect(node: Node, name: String) -> void:
    if node.is_class(name) and node.is_processing():
        frozen.push_back(node)
    for child in node.get_children():
        collect(child, name)
