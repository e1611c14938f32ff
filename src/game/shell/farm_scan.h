#pragma once
// Scans of the running scene for diagnostics: who changes texts, who moves, what is drawn, what each group costs.

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include <godot_cpp/classes/node.hpp>
#include <godot_cpp/variant/packed_string_array.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/vector3.hpp>

namespace tilm {
using namespace godot;

class FarmScan {
public:
    static constexpr double INTERVAL = 1.0; // seconds between two looks
    static constexpr int LOOKS = 5;

    // Turns frame work off for all nodes of these classes, now below `root` and later through freeze_node().
    void freeze(const PackedStringArray &classes, Node *root);
    void freeze_node(Node *node) const;

    // One look at the texts (or places) below `root`; true while another look is wanted, after the last one the changes
    // are logged by class.
    bool texts(Node *root);
    bool places(Node *root);

    void triangles(Node *root) const;
    void census(Node *root) const;

    // Logs the frame time of what was switched off last and switches the next group off; returns the seconds until the
    // next call, 0 after the last. A group is a class or node name; none given: the classes that are most frequent.
    double next_group(Node *root, const PackedStringArray &groups);

private:
    using Counts = std::map<std::string, int64_t>;

    void switch_group(Node *root, const String &group, bool on) const;

    PackedStringArray frozen;

    std::map<uint64_t, String> last_texts;
    Counts text_changes;
    int text_looks = 0;

    std::map<uint64_t, Vector3> last_places;
    Counts moves;
    int place_looks = 0;

    PackedStringArray perf_groups;
    int perf_step = -1;
    int64_t perf_frames = 0;
    uint64_t perf_began = 0;
};

} // namespace tilm
