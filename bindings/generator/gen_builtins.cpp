// Methods of the opaque builtin types (String, Array, Callable...): declarations that the hand-written classes include,
// and their definitions. Value types are written by hand in full.

#include "gen_common.h"

namespace gen {

namespace {

const char *const OPAQUE[] = {"String",
                              "StringName",
                              "NodePath",
                              "Callable",
                              "Signal",
                              "Dictionary",
                              "Array",
                              "PackedByteArray",
                              "PackedInt32Array",
                              "PackedInt64Array",
                              "PackedFloat32Array",
                              "PackedFloat64Array",
                              "PackedStringArray",
                              "PackedVector2Array",
                              "PackedVector3Array",
                              "PackedVector4Array",
                              "PackedColorArray"};

std::string enum_constant(const std::string &name) {
    std::string s = snake_case(name);
    for (char &c : s) {
        c = char(std::toupper(static_cast<unsigned char>(c)));
    }
    return "GDEXTENSION_VARIANT_TYPE_" + s;
}

std::string result_lines(const Type &ret, const std::string &before, const std::string &after) {
    switch (ret.kind) {
    case Type::VOID:
        return before + "nullptr" + after;
    case Type::BOOL:
        return "    uint8_t ret = 0;\n" + before + "&ret" + after + "    return ret != 0;\n";
    case Type::INT:
    case Type::ENUM:
    case Type::BITFIELD:
        return "    int64_t ret = 0;\n" + before + "&ret" + after + "    return " + ret.cpp + "(ret);\n";
    case Type::FLOAT:
        return "    double ret = 0;\n" + before + "&ret" + after + "    return " + ret.cpp + "(ret);\n";
    case Type::OBJECT:
        return "    GodotObject *ret = nullptr;\n" + before + "&ret" + after + "    return reinterpret_cast<" +
               ret.cpp + ">(internal::wrap_object(ret));\n";
    default:
        return "    " + ret.cpp + " ret;\n" + before + "internal::address_of(ret)" + after + "    return ret;\n";
    }
}

std::string args_array(const std::vector<std::string> &addresses) {
    if (addresses.empty()) {
        return "    const void *const *args = nullptr;\n";
    }
    std::string out = "    const void *const args[] = {";
    for (size_t i = 0; i < addresses.size(); ++i) {
        out += (i ? ", " : "") + addresses[i];
    }
    return out + "};\n";
}

} // namespace

// Shared with the utility functions.
std::string vararg_template(const Api &api, const json &method, const Type &ret, const std::string &name,
                            const std::string &prefix, const std::string &suffix) {
    const json &fixed = args_of(method);
    const std::string count = std::to_string(fixed.size());
    const std::string n = count + " + sizeof...(Args)";
    std::string out = "    template <typename... Args>\n";
    const std::string result = ret.kind == Type::VARIANT ? "typename internal::Later<Variant, Args...>::Type" : ret.cpp;
    out += "    " + prefix + result + " " + name + "(" + params(api, method, false, true) + "const Args &...p_args)" +
           suffix + " {\n";
    std::string first;
    for (size_t i = 0; i < fixed.size(); ++i) {
        const std::string arg = "p_" + get(fixed[i], "name"), held = "f" + std::to_string(i);
        const bool borrowed = get(fixed[i], "type") == "StringName"; // names are passed without counting them
        const std::string type = borrowed ? "internal::BorrowedName" : "Variant";
        out += "        const typename internal::Later<" + type + ", Args...>::Type " + held + "(" + arg + ");\n";
        first += (borrowed ? "" : "&") + held + (borrowed ? ".ptr(), " : ", ");
    }
    out += "        std::array<Variant, sizeof...(Args) + 1> values{Variant(p_args)...};\n";
    out += "        std::array<const Variant *, " + n + " + 1> ptrs{" +
           first.substr(0, first.size() - (first.empty() ? 0 : 2)) + "};\n";
    out += "        for (size_t i = 0; i < sizeof...(Args); ++i) {\n            ptrs[" + count +
           " + i] = &values[i];\n        }\n";
    out += std::string("        ") + (ret.kind == Type::VOID ? "" : "return ") + name + "_internal(ptrs.data(), int(" +
           n + "));\n    }\n";
    return out;
}

std::string builtin_result(const Type &ret, const std::string &before, const std::string &after) {
    return result_lines(ret, before, after);
}
std::string builtin_args(const std::vector<std::string> &addresses) {
    return args_array(addresses);
}

static void emit_method(const Api &api, const std::string &owner, const json &m, std::string &header,
                        std::string &cpp) {
    const std::string raw = get(m, "name");
    const std::string name = safe_name(raw);
    const Type ret = type_named(api, get(m, "return_type"));
    const bool is_static = flag(m, "is_static");
    const std::string suffix = flag(m, "is_const") && !is_static ? " const" : "";
    const std::string ref = "    static constinit internal::BuiltinRef m{" + enum_constant(owner) + ", \"" + raw +
                            "\", " + std::to_string(m["hash"].get<int64_t>()) + "};\n";
    const std::string base = is_static ? "nullptr" : "_native_ptr()";
    if (flag(m, "is_vararg")) {
        header += vararg_template(api, m, ret, name, "", suffix);
        header += "    " + ret.cpp + " " + name + "_internal(const Variant **args, int count)" + suffix + ";\n";
        cpp +=
            ret.cpp + " " + owner + "::" + name + "_internal(const Variant **args, int count)" + suffix + " {\n" + ref;
        cpp +=
            result_lines(ret, "    m.call(" + base + ", reinterpret_cast<const void *const *>(args), ", ", count);\n");
        cpp += "}\n\n";
        return;
    }
    // A default of a type that may not be complete yet becomes a shorter overload.
    const json &args = args_of(m);
    const bool overload =
        !args.empty() && args.back().contains("default_value") && get(args.back(), "type") == "Variant";
    header += std::string("    ") + (is_static ? "static " : "") + ret.cpp + " " + name + "(" +
              params(api, m, !overload) + ")" + suffix + ";\n";
    std::vector<std::string> addresses;
    const std::string encoded = encode_args(api, m, addresses);
    cpp += ret.cpp + " " + owner + "::" + name + "(" + params(api, m, false) + ")" + suffix + " {\n" + ref + encoded +
           args_array(addresses);
    cpp += result_lines(ret, "    m.call(" + base + ", args, ", ", " + std::to_string(addresses.size()) + ");\n");
    cpp += "}\n\n";
    if (overload) {
        json shorter = m;
        shorter["arguments"].erase(shorter["arguments"].size() - 1);
        header += "    " + ret.cpp + " " + name + "(" + params(api, shorter, false) + ")" + suffix + ";\n";
        cpp += ret.cpp + " " + owner + "::" + name + "(" + params(api, shorter, false) + ")" + suffix +
               " {\n    return " + name + "(";
        for (const json &a : args_of(shorter)) {
            cpp += "p_" + get(a, "name") + ", ";
        }
        cpp += "Variant());\n}\n\n";
    }
}

void emit_builtins(const Api &api, const std::string &include, const std::string &src) {
    std::string cpp =
        "// Generated from the engine's API description.\n\n#include <godot_cpp/core/generated_support.hpp>\n\n"
        "namespace godot {\n\n";
    for (const char *name : OPAQUE) {
        std::string header = "// Generated from the engine's API description.\n";
        const json &b = *api.builtins.at(name);
        for (const json &m : b.value("methods", json::array())) {
            const std::string method = get(m, "name");
            // StringName repeats String's methods; only what names need is written, the rest goes through String.
            if (std::string(name) == "StringName" && method != "hash" && method != "is_empty" && method != "length" &&
                method != "begins_with" && method != "ends_with" && method != "contains" && method != "substr" &&
                method != "trim_prefix" && method != "trim_suffix" && method != "get_slice" && method != "to_lower" &&
                method != "capitalize" && method != "find" && method != "split" && method != "replace" &&
                method != "to_int" && method != "match") {
                continue;
            }
            emit_method(api, name, m, header, cpp);
        }
        write_file(include + "/godot_cpp/gen/" + snake_case(name) + "_methods.inc", header);
    }
    write_file(src + "/builtin_methods.cpp", cpp + "} // namespace godot\n");

    std::string hashes = "#pragma once\n// Generated from the engine's API description.\n\n";
    for (const char *name : {"AABB", "Basis", "Color", "Projection", "Quaternion"}) {
        for (const json &m : (*api.builtins.at(name)).at("methods")) {
            std::string key = std::string(name) + "_" + get(m, "name");
            for (char &c : key) {
                c = char(std::toupper(static_cast<unsigned char>(c)));
            }
            hashes += "#define GDE_HASH_" + key + " " + std::to_string(m["hash"].get<int64_t>()) + "\n";
        }
    }
    write_file(include + "/godot_cpp/gen/value_hashes.hpp", hashes);
}

} // namespace gen
