#pragma once
// The translation hook: the engine passes every text on its way to the screen through the one instance, which answers
// with Egyptian Arabic while that language is chosen. Game code writes plain upper-case English everywhere.

#include <godot_cpp/classes/translation.hpp>
#include <godot_cpp/variant/string.hpp>
#include <godot_cpp/variant/string_name.hpp>

#include "rules/translator.h"

namespace tilm {
using namespace godot;

class Lang : public Translation {
    GDCLASS(Lang, Translation)

public:
    static void setup_statics();

    static void setup();                // creates the instance and hands it to the engine
    static void shutdown();             // takes it back
    static void apply(const String &l); // "en" or "ar": stores it and makes every control read its text anew
    static bool arabic() { return s_arabic; }
    static String current() { return s_arabic ? "ar" : "en"; }
    static String t(const String &s); // for text drawn by hand: translated, with numbers isolated
    static Ref<Lang> get_instance();  // null before setup and after shutdown
    static bool get_trmiss() { return s_trmiss; }
    static void set_trmiss(bool on) { s_trmiss = on; } // log texts without a row
    static int64_t cache_size();                       // texts that are remembered

    StringName _get_message(const StringName &src, const StringName &context) const override;

protected:
    static void _bind_methods();

private:
    static void load_tables();
    static rules::Translator *translator();

    static bool s_arabic;
    static bool s_trmiss;
};

} // namespace tilm
