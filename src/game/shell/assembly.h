#pragma once
// Brings the farm's objects into being: one operation raises one plan entry by one level and builds what that buys.

#include <string>
#include <unordered_map>

#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class CropField;
class Machine;
class World;

class Assembly {
public:
    explicit Assembly(World &world);

    // Whether entries of this kind can be built at all.
    bool can_build(const String &kind) const;
    // Entry `e` goes to `level`. Quiet at load: no toast, sound or camera move.
    void apply(const Dictionary &e, int level, bool quiet);

private:
    // What a level has done, for the player.
    struct Outcome {
        String toast;
        const char *sound = nullptr;
        bool has_focus = false;
        Vector3 focus;
        void look_at(const Vector3 &at) {
            has_focus = true;
            focus = at;
        }
    };
    using Build = void (Assembly::*)(const Dictionary &e, int level, bool quiet, Outcome &out);

    void producer(const Dictionary &e, int level, bool quiet, Outcome &out);
    void stall(const Dictionary &e, int level, bool quiet, Outcome &out);
    void machine(const Dictionary &e, int level, bool quiet, Outcome &out);
    void factory(const Dictionary &e, int level, bool quiet, Outcome &out);
    void crew(const Dictionary &e, int level, bool quiet, Outcome &out);
    void hire(const String &name, const Array &kinds, const String &to, const Vector3 &at);
    void field(const Dictionary &e, int level, bool quiet, Outcome &out);
    void workers(const Dictionary &e, int level, bool quiet, Outcome &out);
    void harvester(const Dictionary &e, int level, bool quiet, Outcome &out);
    void hauler(const Dictionary &e, int level, bool quiet, Outcome &out);
    void truck(const Dictionary &e, int level, bool quiet, Outcome &out);
    void depot(const Dictionary &e, int level, bool quiet, Outcome &out);
    void belt(const Dictionary &e, int level, bool quiet, Outcome &out);
    void stack(const Dictionary &e, int level, bool quiet, Outcome &out);
    void shoes(const Dictionary &e, int level, bool quiet, Outcome &out);
    void feed(const Dictionary &e, int level, bool quiet, Outcome &out);
    void magnet(const Dictionary &e, int level, bool quiet, Outcome &out);
    void land(const Dictionary &e, int level, bool quiet, Outcome &out);
    void final(const Dictionary &e, int level, bool quiet, Outcome &out);

    Machine *raise_machine(const Dictionary &e);
    void own_helpers(const Dictionary &e);
    CropField *field_of(const Dictionary &e) const;

    World &world;
    std::unordered_map<std::string, Build> builders;
};

} // namespace tilm
