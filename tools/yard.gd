# A busy yard for the camera: a farm at work, a farmer on the move with a tower of goods, a herd on ropes and money in
# each of its forms. Run by tools/yard; leaves yard_<n>.png in the folder after --into=.
extends "game_script.gd"

const SUMS := [160, 6500, 900000]

var into := "."
var clock := 0.0
var shots := 0
var dressed := false


func _initialize() -> void:
    into = word("into", into)
    start()


func dress(farm: Node) -> void:
    var player = farm.get_player()
    var tower = player.find_children("*", "StackCarrier", true, false)[0]
    tower.set_capacity(40)
    for i in 18:
        tower.add(Item.spawn(["egg", "milk", "corn"][i / 6], player.position + Vector3(0, 2, 0)))
    for i in 5:
        tower.add(Item.spawn("calf", player.position))
    for zone in farm.get_zones():
        var pile = zone.get_pile()
        if pile == null:
            continue
        var kind: String = zone.get_makes()
        if kind == "" and not zone.get_accepts().is_empty():
            kind = zone.get_accepts().keys()[0]
        for i in 14:
            if kind != "" and not pile.is_full():
                pile.add(Item.spawn(kind, pile.slot_global(pile.count())), 0.05)


func _process(delta: float) -> bool:
    var farm := world()
    if farm == null or farm.get_building():
        return false
    clock += delta
    if not dressed:
        dressed = true
        dress(farm)
    var at := shots % SUMS.size()
    farm.set_money(SUMS[at])
    var player = farm.get_player()
    player.money_stack().show_money(SUMS[at], null, null)
    # Round the yard, so that towers sway and the herd strings out.
    var turn := clock * 0.8
    farm.force_input(Vector2(cos(turn), 0.8 * sin(turn)))
    if clock > 4.0 + shots * 3.0:
        var image := root.get_viewport().get_texture().get_image()
        image.save_png("%s/yard_%d.png" % [into, shots])
        shots += 1
        if shots == SUMS.size():
            quit(0)
    return false
