#include "game/kit/lang.h"

#include <memory>

#include <godot_cpp/classes/engine.hpp>
#include <godot_cpp/classes/scene_tree.hpp>
#include <godot_cpp/classes/translation_server.hpp>
#include <godot_cpp/classes/window.hpp>
#include <godot_cpp/core/class_db.hpp>
#include <godot_cpp/variant/dictionary.hpp>
#include <godot_cpp/variant/utility_functions.hpp>

#include "game/kit/embedded_text.h"
#include "statics.h"

namespace tilm {
namespace {

constexpr int translation_changed = 2010;

std::unique_ptr<rules::Translator> tables;
Ref<Lang> *instance = nullptr;
// What the hook answered, in the engine's own names: a repeat costs one look-up and no text is made.
Dictionary *answers = nullptr;

String engine_text(const std::string &text) {
    return String::utf8(text.data(), static_cast<int64_t>(text.size()));
}

std::string plain_text(const String &text) {
    const CharString utf8 = text.utf8();
    return std::string(utf8.get_data(), static_cast<size_t>(utf8.length()));
}

} // namespace

bool Lang::s_arabic = false;
bool Lang::s_trmiss = false;

void Lang::setup_statics() {
    s_arabic = false;
    if (instance == nullptr) {
        instance = new Ref<Lang>();
    }
    if (answers == nullptr) {
        answers = new Dictionary();
    }
    Statics::on_release([] {
        Lang::shutdown();
        delete answers;
        answers = nullptr;
    });
}

void Lang::_bind_methods() {
    ClassDB::bind_static_method("Lang", D_METHOD("setup"), &Lang::setup);
    ClassDB::bind_static_method("Lang", D_METHOD("shutdown"), &Lang::shutdown);
    ClassDB::bind_static_method("Lang", D_METHOD("apply", "l"), &Lang::apply);
    ClassDB::bind_static_method("Lang", D_METHOD("arabic"), &Lang::arabic);
    ClassDB::bind_static_method("Lang", D_METHOD("t", "s"), &Lang::t);
    ClassDB::bind_static_method("Lang", D_METHOD("get_lang"), &Lang::current);
    ClassDB::bind_static_method("Lang", D_METHOD("get_instance"), &Lang::get_instance);
    ClassDB::bind_static_method("Lang", D_METHOD("get_trmiss"), &Lang::get_trmiss);
    ClassDB::bind_static_method("Lang", D_METHOD("set_trmiss", "on"), &Lang::set_trmiss);
    ClassDB::bind_static_method("Lang", D_METHOD("cache_size"), &Lang::cache_size);
}

rules::Translator *Lang::translator() {
    if (!tables) {
        load_tables();
    }
    return tables.get();
}

void Lang::load_tables() {
    tables = std::make_unique<rules::Translator>();
    std::vector<std::string> problems;
    tables->load(embedded_text("ar/exact.tsv"), embedded_text("ar/templates.tsv"), embedded_text("ar/combinations.tsv"),
                 problems);
    for (const std::string &problem : problems) {
        WARN_PRINT("TILMARCH translation row skipped, " + engine_text(problem));
    }
    tables->on_miss = [](const std::string &text) {
        if (s_trmiss) {
            UtilityFunctions::print("TRMISS ", engine_text(text).c_escape());
        }
    };
}

void Lang::setup() {
    if (instance == nullptr || instance->is_valid()) {
        return;
    }
    instance->instantiate();
    (*instance)->set_locale("en");
    TranslationServer::get_singleton()->add_translation(*instance);
    apply(current());
}

void Lang::shutdown() {
    if (instance == nullptr || instance->is_null()) {
        return;
    }
    TranslationServer::get_singleton()->remove_translation(*instance);
    instance->unref();
}

void Lang::apply(const String &l) {
    if (l != String("en") && l != String("ar")) {
        WARN_PRINT("TILMARCH unknown language \"" + l + "\": English it is");
    }
    s_arabic = l == String("ar");
    // The instance is the "en" translation and does its own switch, so the engine never mirrors or shapes by locale.
    TranslationServer::get_singleton()->set_locale("en");
    if (SceneTree *tree = Object::cast_to<SceneTree>(Engine::get_singleton()->get_main_loop())) {
        if (Window *root = tree->get_root()) {
            root->propagate_notification(translation_changed);
        }
    }
}

String Lang::t(const String &s) {
    if (!s_arabic || s.is_empty()) {
        return s;
    }
    return engine_text(rules::isolate_numbers(translator()->translate_cached(plain_text(s))));
}

Ref<Lang> Lang::get_instance() {
    return instance != nullptr ? *instance : Ref<Lang>();
}

int64_t Lang::cache_size() {
    return tables ? static_cast<int64_t>(tables->cache_size()) : 0;
}

StringName Lang::_get_message(const StringName &src, const StringName &) const {
    if (!s_arabic) {
        return src;
    }
    if (answers != nullptr) {
        const Variant known = answers->get(src, Variant());
        if (known.get_type() == Variant::STRING_NAME) {
            return known;
        }
    }
    const std::string english = plain_text(src);
    if (!rules::has_letter(english) || rules::is_number_text(english)) {
        return src;
    }
    const std::string shown = translator()->message(english);
    const StringName answer = shown == english ? src : StringName(engine_text(shown));
    if (answers != nullptr) {
        if (static_cast<size_t>(answers->size()) >= rules::Translator::cache_limit) {
            answers->clear();
        }
        (*answers)[src] = answer;
    }
    return answer;
}

} // namespace tilm
