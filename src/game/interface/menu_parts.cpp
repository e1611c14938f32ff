#include "game/interface/menu_parts.h"

#include <algorithm>

#include <godot_cpp/classes/project_settings.hpp>
#include <godot_cpp/core/object.hpp>

#include "game/kit/ui.h"
#include "game/ports/session.h"
#include "game/ports/store.h"
#include "names.h"

namespace tilm::title {

// The owner of the farms, asked by name: it stands a floor above.
Object *farms_owner() {
    return dynamic_cast<Object *>(Store::current());
}

Variant stored(const StringName &key) {
    const Store *store = Store::current();
    return store != nullptr ? store->setting(key) : Variant();
}

bool has_progress() {
    Object *owner = farms_owner();
    return owner != nullptr && bool(owner->call(TM_NAME("has_progress")));
}

double progress_of(int64_t i) {
    Object *owner = farms_owner();
    return owner != nullptr ? double(owner->call(TM_NAME("farm_progress"), i)) : 0.0;
}

bool plays_with_friends() {
    return Session::current() != nullptr && Session::current()->in_session();
}

Array farm_rows() {
    const Object *owner = farms_owner();
    const Variant rows = owner != nullptr ? owner->get(TM_NAME("farms")) : Variant();
    return rows.get_type() == Variant::ARRAY ? Array(rows) : Array();
}

int64_t active_farm() {
    const Object *owner = farms_owner();
    return owner != nullptr ? int64_t(owner->get(TM_NAME("active"))) : 0;
}

String own_version() {
    return ProjectSettings::get_singleton()->get_setting("application/config/version", "1.0");
}

int compare_versions(const String &a, const String &b) {
    const PackedStringArray x = a.split(".");
    const PackedStringArray y = b.split(".");
    for (int64_t i = 0; i < std::max(x.size(), y.size()); ++i) {
        const int64_t m = i < x.size() ? x[i].to_int() : 0;
        const int64_t n = i < y.size() ? y[i].to_int() : 0;
        if (m != n) {
            return m < n ? -1 : 1;
        }
    }
    return 0;
}

Button *wide(const String &text, const char *color, int size) {
    Button *b = UI::button(text, UI::hex(color), size, Vector2(460, 96));
    b->set_h_size_flags(Control::SIZE_SHRINK_CENTER);
    UI::fit_width(b, 440);
    return b;
}

Label *plain_label(const String &text, int size, const Color &color) {
    Label *l = UI::label(String(), size, color);
    l->set_auto_translate_mode(Node::AUTO_TRANSLATE_MODE_DISABLED);
    l->set_text(text);
    return l;
}

} // namespace tilm::title
