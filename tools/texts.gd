# Asks the translation for every text that tools/texts found in the code.
extends SceneTree

const FILLINGS := {"%d": "7", "%s": "EGGS", "%.1f": "7", "%%": "%"}


func tables() -> Array:
    var rows := []
    for name in ["exact", "templates"]:
        for line in FileAccess.get_file_as_string(ProjectSettings.globalize_path("res://../lang/ar/%s.tsv" % name)).split("\n"):
            if line.contains("\t") and not line.begins_with("##"):
                rows.append(line.get_slice("\t", 0).c_unescape())
    return rows


func _initialize() -> void:
    Lang.setup()
    Lang.apply("ar")
    var file := ""
    var list_rows := false
    for word in OS.get_cmdline_user_args():
        if word.begins_with("--texts="):
            file = word.trim_prefix("--texts=")
        list_rows = list_rows or word == "--rows=yes"
    var texts := {}
    var missing := 0
    for line in FileAccess.get_file_as_string(file).split("\n", false):
        var text: String = line.get_slice("\t", 0).c_unescape()
        for mark in FILLINGS:
            text = text.replace(mark, FILLINGS[mark])
        texts[text.strip_edges()] = true
        # A piece that code joins to others is known with something before, after or around it.
        var known := false
        for form in ["%s", "%s 7", "%s7", "7 %s", "EGGS %s", "EGGS%s", "%s EGGS", "%sEGGS", "EGGS %s 7", "%s7%%", "%s 7%%", "LV 7%s7%%", "EGGS%s7", "BAKERY %s"]:
            var asked: String = form.replace("%s", text.strip_edges() if form != "%s" else text).replace("%%", "%")
            var got: String = TranslationServer.translate(asked)
            known = known or (got != asked and not got.contains(text.strip_edges()))
        if not known and text.strip_edges().length() > 2:
            missing += 1
            print("NO ROW  ", text.c_escape(), "   ", line.get_slice("\t", 1))
    var unused := 0
    for row in tables():
        if texts.has(row) or row.contains("{"):
            continue
        unused += 1
        if list_rows:
            print("NO TEXT ", row.c_escape())
    print("TEXTS %d in the code, %d without a row; %d whole rows that no text asks for" % [texts.size(), missing, unused])
    quit(0 if missing == 0 else 1)
