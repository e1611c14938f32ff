# The bot plays a farm from nothing, headless and in game time; a row a game minute goes to the file after --rows=.
# Run by tools/balance. Words: --hours=N --seed=N --rows=FILE
extends "game_script.gd"

var rows: FileAccess
var hours := 1.0
var clock := 0.0
var next_minute := 0.0
var purchases := 0
var last_purchase := 0.0
var longest_gap := 0.0
var longest_at := 0.0


func _initialize() -> void:
    hours = float(word("hours", "1"))
    seed(int(word("seed", "1")))
    rows = FileAccess.open(word("rows", "user://balance.tsv"), FileAccess.WRITE)
    rows.store_line("minute\tmoney\ttotal_levels\tlevel\tregions\tsales\tgap")
    start()


func _process(delta: float) -> bool:
    var farm := world()
    if farm == null or farm.get_building():
        return false
    clock += delta
    var total: int = farm.total_levels()
    if total != purchases:
        purchases = total
        if clock - last_purchase > longest_gap:
            longest_gap = clock - last_purchase
            longest_at = last_purchase
        last_purchase = clock
    if clock >= next_minute:
        rows.store_line("%d\t%d\t%d\t%d\t%d\t%d\t%d" % [roundi(clock / 60.0), farm.get_money(), total, farm.level(),
                farm.get_regions().size(), farm.get_sales(), roundi(clock - last_purchase)])
        next_minute += 60.0
    if clock >= hours * 3600.0:
        longest_gap = maxf(longest_gap, clock - last_purchase)
        print("BALANCE seed done: level %d, %d regions, longest gap %.1f min after minute %d" % [farm.level(),
                farm.get_regions().size(), longest_gap / 60.0, roundi(longest_at / 60.0)])
        quit(0)
    return false
