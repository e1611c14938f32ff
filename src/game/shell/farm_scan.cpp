#include "game/shell/farm_scan.h"

#include <algorithm>
#include <vector>

#include <godot_cpp/classes/array_mesh.hpp>
#include <godot_cpp/classes/canvas_item.hpp>
#include <godot_cpp/classes/canvas_layer.hpp>
#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/label.hpp>
#include <godot_cpp/classes/label3d.hpp>
#include <godot_cpp/classes/mesh_instance3d.hpp>
#include <godot_cpp/classes/multi_mesh.hpp>
#include <godot_cpp/classes/multi_mesh_instance3d.hpp>
#include <godot_cpp/classes/node3d.hpp>
#include <godot_cpp/classes/time.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

namespace tilm {
namespace {

constexpr size_t kRows = 40;         // rows of a report
constexpr double kPerfSeconds = 4.0; // that a group stays off
constexpr int kPerfDefault = 8;      // groups when none were named

void walk(Node *node, const std::function<void(Node *)> &look) {
    look(node);
    for (int i = 0; i < node->get_child_count(true); ++i) {
        walk(node->get_child(i, true), look);
    }
}

std::string class_of(const Node *node) {
    return node->get_class().utf8().get_data();
}

void report(const char *what, const std::map<std::string, int64_t> &counts) {
    std::vector<std::pair<std::string, int64_t>> rows(counts.begin(), counts.end());
    std::stable_sort(rows.begin(), rows.end(), [](const auto &a, const auto &b) { return a.second > b.second; });
    rows.resize(std::min(rows.size(), kRows));
    UtilityFunctions::print("TILMARCH ", what, ": ", static_cast<int64_t>(counts.size()), " rows");
    for (const auto &[name, n] : rows) {
        UtilityFunctions::print("  ", n, "  ", String::utf8(name.c_str()));
    }
}

int64_t triangles_of(const Ref<Mesh> &mesh) {
    const Ref<ArrayMesh> arrays = mesh;
    if (arrays.is_null()) {
        return mesh.is_valid() ? mesh->get_faces().size() / 3 : 0;
    }
    int64_t n = 0;
    for (int i = 0; i < arrays->get_surface_count(); ++i) {
        const int64_t indices = arrays->surface_get_array_index_len(i);
        n += (indices > 0 ? indices : arrays->surface_get_array_len(i)) / 3;
    }
    return n;
}

bool is_one_of(const Node *node, const PackedStringArray &classes) {
    for (int64_t i = 0; i < classes.size(); ++i) {
        if (node->is_class(classes[i])) {
            return true;
        }
    }
    return false;
}

} // namespace

void FarmScan::freeze(const PackedStringArray &classes, Node *root) {
    frozen = classes;
    walk(root, [this](Node *node) { freeze_node(node); });
}

void FarmScan::freeze_node(Node *node) const {
    if (node != nullptr && is_one_of(node, frozen)) {
        node->set_process(false);
        node->set_physics_process(false);
    }
}

bool FarmScan::texts(Node *root) {
    walk(root, [this](Node *node) {
        String text;
        if (const Label *label = Object::cast_to<Label>(node)) {
            text = label->get_text();
        } else if (const Label3D *label3d = Object::cast_to<Label3D>(node)) {
            text = label3d->get_text();
        } else {
            return;
        }
        const auto [row, is_new] = last_texts.try_emplace(node->get_instance_id(), text);
        if (!is_new && row->second != text) {
            row->second = text;
            const Node *parent = node->get_parent();
            ++text_changes[class_of(node) + " in " + (parent != nullptr ? class_of(parent) : "nothing") +
                           ", such as '" + text.utf8().get_data() + "'"];
        }
    });
    if (++text_looks < LOOKS) {
        return true;
    }
    report("text changes", text_changes);
    last_texts.clear();
    text_changes.clear();
    text_looks = 0;
    return false;
}

bool FarmScan::places(Node *root) {
    walk(root, [this](Node *node) {
        const Node3D *spatial = Object::cast_to<Node3D>(node);
        if (spatial == nullptr || !spatial->is_inside_tree()) {
            return;
        }
        const Vector3 at = spatial->get_position();
        const auto [row, is_new] = last_places.try_emplace(node->get_instance_id(), at);
        if (!is_new && row->second != at) {
            row->second = at;
            ++moves[class_of(node)];
        }
    });
    if (++place_looks < LOOKS) {
        return true;
    }
    report("node moves", moves);
    last_places.clear();
    moves.clear();
    place_looks = 0;
    return false;
}

void FarmScan::triangles(Node *root) const {
    std::map<std::string, int64_t> counts;
    int64_t total = 0;
    walk(root, [&](Node *node) {
        int64_t n = 0;
        std::string name;
        if (const MeshInstance3D *instance = Object::cast_to<MeshInstance3D>(node)) {
            if (!instance->is_visible_in_tree()) {
                return;
            }
            n = triangles_of(instance->get_mesh());
        } else if (const MultiMeshInstance3D *many = Object::cast_to<MultiMeshInstance3D>(node)) {
            const Ref<MultiMesh> multi = many->get_multimesh();
            if (!many->is_visible_in_tree() || multi.is_null()) {
                return;
            }
            const int shown = multi->get_visible_instance_count();
            n = triangles_of(multi->get_mesh()) * (shown < 0 ? multi->get_instance_count() : shown);
        } else {
            return;
        }
        const Node *parent = node->get_parent();
        name = class_of(node) + " " + String(node->get_name()).utf8().get_data() + " in " +
               (parent != nullptr ? class_of(parent) : "nothing");
        counts[name] += n;
        total += n;
    });
    UtilityFunctions::print("TILMARCH triangles in all: ", total);
    report("triangles by mesh", counts);
}

void FarmScan::census(Node *root) const {
    std::map<std::string, int64_t> all;
    std::map<std::string, int64_t> working;
    walk(root, [&](Node *node) {
        ++all[class_of(node)];
        if (node->is_processing() || node->is_physics_processing()) {
            ++working[class_of(node)];
        }
    });
    report("nodes", all);
    report("nodes with frame work", working);
}

void FarmScan::switch_group(Node *root, const String &group, bool on) const {
    walk(root, [&](Node *node) {
        if (!node->is_class(group) && String(node->get_name()) != group) {
            return;
        }
        node->set_process_mode(on ? Node::PROCESS_MODE_INHERIT : Node::PROCESS_MODE_DISABLED);
        if (Node3D *spatial = Object::cast_to<Node3D>(node)) {
            spatial->set_visible(on);
        } else if (CanvasItem *item = Object::cast_to<CanvasItem>(node)) {
            item->set_visible(on);
        } else if (CanvasLayer *layer = Object::cast_to<CanvasLayer>(node)) {
            layer->set_visible(on);
        }
    });
}

double FarmScan::next_group(Node *root, const PackedStringArray &groups) {
    Engine *engine = Engine::get_singleton();
    const uint64_t now = Time::get_singleton()->get_ticks_usec();
    if (perf_step < 0) {
        perf_groups = groups;
        if (perf_groups.is_empty()) {
            std::map<std::string, int64_t> counts;
            walk(root, [&](Node *node) { ++counts[class_of(node)]; });
            std::vector<std::pair<int64_t, std::string>> rows;
            for (const auto &[name, n] : counts) {
                rows.emplace_back(-n, name);
            }
            std::sort(rows.begin(), rows.end());
            for (size_t i = 0; i < rows.size() && i < kPerfDefault; ++i) {
                perf_groups.push_back(String::utf8(rows[i].second.c_str()));
            }
        }
    } else {
        const int64_t frames = std::max<int64_t>(1, static_cast<int64_t>(engine->get_process_frames()) - perf_frames);
        const double ms = static_cast<double>(now - perf_began) / 1000.0 / static_cast<double>(frames);
        const String name = perf_step == 0 ? String("everything on") : "without " + perf_groups[perf_step - 1];
        UtilityFunctions::print("TILMARCH perfx ", vformat("%.3f ms a frame ", ms), name);
        if (perf_step > 0) {
            switch_group(root, perf_groups[perf_step - 1], true);
        }
    }
    ++perf_step;
    if (perf_step > perf_groups.size()) {
        perf_step = -1;
        return 0.0;
    }
    if (perf_step > 0) {
        switch_group(root, perf_groups[perf_step - 1], false);
    }
    perf_frames = static_cast<int64_t>(engine->get_process_frames());
    perf_began = now;
    return kPerfSeconds;
}

} // namespace tilm
