#include "glebworks/slow_list.h"

#include <algorithm>

#include <godot_cpp/core/error_macros.hpp>
#include <godot_cpp/core/object.hpp>

#include "names.h"

namespace tilm {

void SlowList::add(Node *node, Step fn, double every) {
    if (!node) {
        ERR_PRINT("A slow list was given no node.");
        return;
    }
    node->set_process(false);
    remove(node);
    // A script's frame step is reached by name, one of ours by its virtual method.
    const bool scripted =
        !fn && node->get_script().get_type() == Variant::OBJECT && node->has_method(TM_NAME("_process"));
    entries.push_back({node->get_instance_id(), node, clock, fn, std::max(0.0, every), scripted});
}

void SlowList::remove(Node *node) {
    for (size_t i = 0; i < entries.size(); i++) {
        if (entries[i].node == node) {
            entries.erase(entries.begin() + (std::ptrdiff_t)i);
            if (i < cursor) {
                cursor--;
            }
            return;
        }
    }
}

bool SlowList::visit(size_t i) {
    const Entry e = entries[i];
    if (!ObjectDB::get_instance(e.id)) {
        return false;
    }
    const double elapsed = clock - e.stamp;
    entries[i].stamp = clock;
    if (e.node->is_processing()) {
        e.node->set_process(false); // becoming ready turns it on
    }
    if (elapsed > 0.0 && e.node->is_inside_tree() && e.node->can_process()) {
        // The step may add to the list or take from it: nothing of it is touched afterwards.
        if (e.fn) {
            e.fn(e.node, elapsed);
        } else if (e.scripted) {
            e.node->call(TM_NAME("_process"), elapsed);
        } else {
            e.node->_process(elapsed);
        }
    }
    return true;
}

void SlowList::tick(double dt) {
    clock += std::max(0.0, dt);
    const size_t visits = (entries.size() + 3) / 4;
    for (size_t n = 0; n < visits && !entries.empty(); n++) {
        if (cursor >= entries.size()) {
            cursor = 0;
        }
        const size_t at = cursor++;
        if (!visit(at)) {
            entries.erase(entries.begin() + (std::ptrdiff_t)at);
            cursor = at;
        }
    }
}

void SlowList::tick_timed(double dt) {
    clock += std::max(0.0, dt);
    for (cursor = 0; cursor < entries.size();) {
        const size_t at = cursor++;
        const Entry &e = entries[at];
        if (clock - e.stamp < e.every) {
            continue;
        }
        if (!visit(at)) {
            entries.erase(entries.begin() + (std::ptrdiff_t)at);
            cursor = at;
        }
    }
    cursor = 0;
}

} // namespace tilm
