#pragma once
// The desktop's log files: a start block about the machine, a line of figures every 5 seconds, and a copy of the
// engine's own log, each with its predecessor kept.

#include <cstdint>

#include <godot_cpp/classes/file_access.hpp>
#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/string.hpp>

namespace tilm {
using namespace godot;

class GameLog : public Node {
    GDCLASS(GameLog, Node)

public:
    GameLog();
    ~GameLog() override;
    static GameLog *get() { return s_instance; } // null before the residents exist

    void _ready() override;
    void _process(double delta) override;

    void line(const String &msg); // one stamped line, flushed
    String get_dir() const { return dir; }

    // Opens the files in `folder` (made as needed), after the old ones became the previous ones. False: no log.
    bool open_in(const String &folder);

protected:
    static void _bind_methods();
    void _notification(int what);

private:
    String choose_dir() const;
    void start_block();
    void copy_engine_log();

    static GameLog *s_instance;

    Ref<FileAccess> file;
    String dir;
    String engine_log;   // the engine's own file
    int64_t copied = -1; // its length at the last copy
    double timer = 0.0;
};

} // namespace tilm
