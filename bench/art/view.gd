# Draws and triangles of the full farm at the default zoom, at several places, text left out. Run by bench/art/run.
extends "../../tools/game_script.gd"

const SETTLE := 90
const PLACES := [0.0, -24.0, 24.0, 48.0]

var place := -1
var wait := 0
var rows := 0


func _initialize() -> void:
    start()


func info(kind: int) -> int:
    var sums := [RenderingServer.VIEWPORT_RENDER_INFO_TYPE_VISIBLE, RenderingServer.VIEWPORT_RENDER_INFO_TYPE_SHADOW]
    return RenderingServer.viewport_get_render_info(root.get_viewport_rid(), sums[kind / 2],
            [RenderingServer.VIEWPORT_RENDER_INFO_DRAW_CALLS_IN_FRAME,
            RenderingServer.VIEWPORT_RENDER_INFO_PRIMITIVES_IN_FRAME][kind % 2])


func _process(_delta: float) -> bool:
    var farm := world()
    if farm == null or farm.get_building():
        return false
    wait -= 1
    if wait > 0:
        return false
    if place >= 0:
        print("| x %d | %d | %d | %d | %d |" % [PLACES[place], info(0), info(1), info(2), info(3)])
    place += 1
    if place >= PLACES.size():
        quit()
        return false
    if place == 0:
        for label in farm.find_children("*", "Label3D", true, false):
            label.visible = false
    var player: Node3D = farm.get_node("Player")
    player.position = Vector3(PLACES[place], 0, 2.9)
    wait = SETTLE
    return false
