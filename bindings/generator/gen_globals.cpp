// Global enums and constants, and the global functions as UtilityFunctions.

#include "gen_common.h"

namespace gen {

std::string vararg_template(const Api &api, const json &method, const Type &ret, const std::string &name,
                            const std::string &prefix, const std::string &suffix);
std::string builtin_result(const Type &ret, const std::string &before, const std::string &after);
std::string builtin_args(const std::vector<std::string> &addresses);

static void emit_constants(const Api &api, const std::string &include) {
    std::string out = "#pragma once\n// Generated from the engine's API description.\n\n#include <cstdint>\n\n"
                      "#include <godot_cpp/core/math_defs.hpp>\n\nnamespace godot {\n\n";
    for (const json &c : api.root.at("global_constants")) {
        out += "static constexpr int64_t " + get(c, "name") + " = " + std::to_string(c["value"].get<int64_t>()) + ";\n";
    }
    for (const json &e : api.root.at("global_enums")) {
        const std::string name = get(e, "name");
        // Written by hand where the value types need them.
        if (name.find('.') != std::string::npos || name == "EulerOrder" || name == "ClockDirection") {
            continue;
        }
        out += "enum " + name + enum_base(e) + " {\n";
        for (const json &v : e["values"]) {
            out += "    " + get(v, "name") + " = " + std::to_string(v["value"].get<int64_t>()) + ",\n";
        }
        out += "};\n\n";
    }
    write_file(include + "/godot_cpp/classes/global_constants.hpp", out + "} // namespace godot\n");
}

static void emit_utilities(const Api &api, const std::string &include, const std::string &src) {
    std::string header = "#pragma once\n// Generated from the engine's API description.\n\n#include <array>\n\n"
                         "#include <godot_cpp/core/object.hpp>\n#include <godot_cpp/variant/variant.hpp>\n\n"
                         "namespace godot {\n\nclass UtilityFunctions {\npublic:\n";
    std::string cpp =
        "// Generated from the engine's API description.\n\n#include <godot_cpp/core/generated_support.hpp>\n"
        "#include <godot_cpp/variant/utility_functions.hpp>\n\nnamespace godot {\n\n";
    for (const json &f : api.root.at("utility_functions")) {
        const std::string raw = get(f, "name");
        const std::string name = safe_name(raw) == raw ? raw : raw == "typeof" ? "type_of" : safe_name(raw);
        const Type ret = type_named(api, get(f, "return_type"));
        const std::string ref = "    static constinit internal::UtilityRef m{\"" + raw + "\", " +
                                std::to_string(f["hash"].get<int64_t>()) + "};\n";
        if (flag(f, "is_vararg")) {
            header += vararg_template(api, f, ret, name, "static ", "");
            header += "    static " + ret.cpp + " " + name + "_internal(const Variant **args, int count);\n";
            cpp += ret.cpp + " UtilityFunctions::" + name + "_internal(const Variant **args, int count) {\n" + ref +
                   builtin_result(ret, "    m.call(", ", reinterpret_cast<const void *const *>(args), count);\n") +
                   "}\n\n";
            continue;
        }
        header += "    static " + ret.cpp + " " + name + "(" + params(api, f, true) + ");\n";
        std::vector<std::string> addresses;
        const std::string encoded = encode_args(api, f, addresses);
        cpp += ret.cpp + " UtilityFunctions::" + name + "(" + params(api, f, false) + ") {\n" + ref + encoded +
               builtin_args(addresses) +
               builtin_result(ret, "    m.call(", ", args, " + std::to_string(addresses.size()) + ");\n") + "}\n\n";
    }
    write_file(include + "/godot_cpp/variant/utility_functions.hpp", header + "};\n\n} // namespace godot\n");
    write_file(src + "/utility_functions.cpp", cpp + "} // namespace godot\n");
}

void emit_globals(const Api &api, const std::string &include, const std::string &src) {
    emit_constants(api, include);
    emit_utilities(api, include, src);
}

} // namespace gen
