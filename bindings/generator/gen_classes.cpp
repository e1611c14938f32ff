// One header for each wanted class, their method bodies in a few grouped sources, and the table that tells which wanted
// class stands in for an engine class that is not.

#include <algorithm>

#include "gen_common.h"

namespace gen {

std::string vararg_template(const Api &api, const json &method, const Type &ret, const std::string &name,
                            const std::string &prefix, const std::string &suffix);
std::string builtin_result(const Type &ret, const std::string &before, const std::string &after);
std::string builtin_args(const std::vector<std::string> &addresses);

namespace {

struct Writer {
    const Api &api;
    const json &c;
    std::string raw, name, parent;
    std::string header, virtuals, cpp;
    std::set<std::string> includes, forwards;

    Writer(const Api &p_api, const json &p_c)
        : api(p_api), c(p_c), raw(get(c, "name")), name(class_name(raw)), parent(get(c, "inherits")) {}

    void mention(const Type &t) {
        if (!t.enum_class.empty() && t.enum_class != raw && t.enum_class != parent) {
            if (api.find_class(t.enum_class)) {
                includes.insert("godot_cpp/classes/" + snake_case(class_name(t.enum_class)) + ".hpp");
            }
        }
        if (!t.object.empty() && t.object != name) {
            forwards.insert(t.object);
        }
        if (t.kind == Type::REF || t.cpp.find("Ref<") != std::string::npos) {
            includes.insert("godot_cpp/classes/ref.hpp");
        }
        if (t.cpp.rfind("TypedDictionary", 0) == 0) {
            includes.insert("godot_cpp/variant/typed_dictionary.hpp");
        } else if (t.typed) {
            includes.insert("godot_cpp/variant/typed_array.hpp");
        }
        if (t.kind == Type::BITFIELD) {
            includes.insert("godot_cpp/core/bit_field.hpp");
        }
    }

    bool usable(const json &m) {
        std::vector<Type> types;
        for (const json &a : args_of(m)) {
            types.push_back(type_of(api, a));
        }
        if (m.contains("return_value")) {
            types.push_back(type_of(api, m["return_value"]));
        }
        for (const Type &t : types) {
            if (t.kind == Type::UNSUPPORTED) {
                return false;
            }
        }
        for (const Type &t : types) {
            mention(t);
        }
        return true;
    }

    Type return_of(const json &m) const {
        return m.contains("return_value") ? type_of(api, m["return_value"]) : type_named(api, "");
    }

    void constants() {
        for (const json &e : c.value("enums", json::array())) {
            header += "    enum " + get(e, "name") + enum_base(e) + " {\n";
            for (const json &v : e["values"]) {
                header += "        " + get(v, "name") + " = " + std::to_string(v["value"].get<int64_t>()) + ",\n";
            }
            header += "    };\n\n";
        }
        for (const json &k : c.value("constants", json::array())) {
            const int64_t v = k["value"].get<int64_t>();
            header += std::string("    static constexpr ") + (v == int32_t(v) ? "int " : "int64_t ") + get(k, "name") +
                      " = " + std::to_string(v) + ";\n";
        }
    }

    std::string ref_line(const json &m, const std::string &method) const {
        return "    static constinit internal::MethodRef m{\"" + raw + "\", \"" + method + "\", " +
               std::to_string(m["hash"].get<int64_t>()) + "};\n";
    }

    std::string result(const Type &ret, const std::string &before, const std::string &after) const {
        if (ret.kind == Type::REF) {
            return "    GodotObject *ret = nullptr;\n" + before + "&ret" + after + "    return " + ret.cpp +
                   "::_gde_internal_constructor(reinterpret_cast<Object *>(internal::wrap_object(ret)));\n";
        }
        if (ret.typed) {
            const bool dict = ret.cpp.rfind("TypedDictionary", 0) == 0;
            return std::string("    ") + (dict ? "Dictionary" : "Array") + " ret;\n" + before +
                   "internal::address_of(ret)" + after + "    return " + ret.cpp + "::_gde_adopt(std::move(ret));\n";
        }
        return builtin_result(ret, before, after);
    }

    void method(const json &m) {
        const std::string raw_name = get(m, "name");
        const std::string fn = safe_name(raw_name);
        const Type ret = return_of(m);
        const bool is_static = flag(m, "is_static");
        const std::string suffix = flag(m, "is_const") && !is_static ? " const" : "";
        const std::string owner = is_static ? "nullptr" : "_owner";
        if (flag(m, "is_vararg")) {
            header += vararg_template(api, m, ret, fn, is_static ? "static " : "", suffix);
            header += "    " + ret.cpp + " " + fn + "_internal(const Variant **args, int count)" + suffix + ";\n";
            cpp += ret.cpp + " " + name + "::" + fn + "_internal(const Variant **args, int count)" + suffix + " {\n" +
                   ref_line(m, raw_name);
            if (name == "Object" && fn == "call") {
                cpp += "    Variant ret;\n    if (internal::call_directly(this, args, count, ret)) {\n        return "
                       "ret;\n    }\n";
            }
            const std::string call = "internal::call_vararg(m, " + owner + ", args, count)";
            if (ret.kind == Type::VOID) {
                cpp += "    " + call + ";\n}\n\n";
            } else if (ret.kind == Type::VARIANT) {
                cpp += "    return " + call + ";\n}\n\n";
            } else if (ret.kind == Type::OBJECT) {
                cpp += "    return reinterpret_cast<" + ret.cpp + ">(static_cast<Object *>(" + call + "));\n}\n\n";
            } else {
                cpp += "    return static_cast<" + ret.cpp + ">(" +
                       (ret.kind == Type::ENUM || ret.kind == Type::INT ? "int64_t(" + call + ")" : call) + ");\n}\n\n";
            }
            return;
        }
        header += std::string("    ") + (is_static ? "static " : "") + ret.cpp + " " + fn + "(" + params(api, m, true) +
                  ")" + suffix + ";\n";
        std::vector<std::string> addresses;
        const std::string encoded = encode_args(api, m, addresses);
        cpp += ret.cpp + " " + name + "::" + fn + "(" + params(api, m, false) + ")" + suffix + " {\n" +
               ref_line(m, raw_name) + encoded + builtin_args(addresses) +
               result(ret, "    internal::ptrcall(m, " + owner + ", args, ", ");\n") + "}\n\n";
    }

    void virtual_method(const json &m) {
        const std::string fn = get(m, "name");
        const Type ret = return_of(m);
        const std::string suffix = flag(m, "is_const") ? " const" : "";
        header += "    virtual " + ret.cpp + " " + fn + "(" + params(api, m, false) + ")" + suffix + ";\n";
        std::string unnamed;
        for (const json &a : args_of(m)) {
            unnamed += (unnamed.empty() ? "" : ", ") + type_of(api, a).param();
        }
        cpp += ret.cpp + " " + name + "::" + fn + "(" + unnamed + ")" + suffix + " {\n" +
               (ret.kind == Type::VOID
                    ? ""
                    : "    return " + std::string(ret.kind == Type::OBJECT ? "nullptr" : ret.cpp + "()") + ";\n") +
               "}\n\n";
        virtuals += "        if constexpr (internal::overrides<decltype(&B::" + fn + "), decltype(&T::" + fn +
                    ")>()) {\n" + "            internal::add_virtual(h, \"" + fn + "\", " +
                    std::to_string(m["hash"].get<int64_t>()) + "u, &internal::Virtual<&T::" + fn +
                    ">::thunk);\n        }\n";
    }

    std::string base() const { return parent.empty() ? "Wrapped" : class_name(parent); }

    void write(const std::string &include) {
        header += "    GDE_ENGINE_CLASS(" + name + ", " + base() + ")\n\npublic:\n";
        constants();
        const auto single = api.singleton_names.find(raw);
        if (single != api.singleton_names.end()) {
            header += "    static " + name + " *get_singleton();\n    ~" + name + "() override;\n";
            cpp += "static constinit internal::SingletonRef " + snake_case(raw) + "_singleton{{\"" + single->second +
                   "\"}};\n\n";
            cpp += name + " *" + name + "::get_singleton() {\n    return static_cast<" + name +
                   " *>(static_cast<Object *>(" + snake_case(raw) + "_singleton.get()));\n}\n\n";
            cpp += name + "::~" + name + "() {\n    " + snake_case(raw) + "_singleton.drop(this);\n}\n\n";
        }
        for (const json &m : c.value("methods", json::array())) {
            if (usable(m)) {
                if (flag(m, "is_virtual")) {
                    virtual_method(m);
                } else {
                    method(m);
                }
            }
        }
        if (name == "Object") {
            header += "\n    // Null if the object is not of this class. Also for plain C++ interfaces.\n"
                      "    template <typename T>\n    static T *cast_to(Object *object);\n"
                      "    template <typename T>\n    static const T *cast_to(const Object *object);\n";
            includes.insert("godot_cpp/classes/wrapped.hpp");
        }
        if (name == "Node") {
            header += "\n    // Null if the node is missing or of another class.\n    template <typename T>\n"
                      "    T *get_node(const NodePath &p_path) const {\n"
                      "        return T::template cast_to<T>(get_node_or_null(p_path));\n    }\n";
        }
        if (name == "FileAccess") {
            header += "\n    // Plain memory in and out.\n    bool store_buffer(const uint8_t *from, uint64_t size);\n"
                      "    uint64_t get_buffer(uint8_t *to, uint64_t size) const;\n";
            cpp +=
                "bool FileAccess::store_buffer(const uint8_t *from, uint64_t size) {\n"
                "    internal::gde.file_access_store_buffer(_owner, from, size);\n    return get_error() == OK;\n}\n\n"
                "uint64_t FileAccess::get_buffer(uint8_t *to, uint64_t size) const {\n"
                "    return internal::gde.file_access_get_buffer(_owner, to, size);\n}\n\n";
        }
        header += "\n    template <typename T, typename B>\n    static void register_virtuals(internal::ClassHooks &h) "
                  "{\n        " +
                  base() + "::register_virtuals<T, B>(h);\n" + virtuals + "    }\n";
        const std::string own = snake_case(name) + ".hpp";
        std::string top = "#pragma once\n// Generated from the engine's API description.\n\n#include <array>\n\n";
        includes.insert(parent.empty() ? "godot_cpp/classes/wrapped.hpp"
                                       : "godot_cpp/classes/" + snake_case(class_name(parent)) + ".hpp");
        includes.insert("godot_cpp/classes/global_constants.hpp");
        for (const std::string &i : includes) {
            if (i != "godot_cpp/classes/" + own) {
                top += "#include <" + i + ">\n";
            }
        }
        top += "\nnamespace godot {\n\n";
        for (const std::string &f : forwards) {
            top += "class " + f + ";\n";
        }
        top += "\nclass " + name + " : public " + base() + " {\n" + header + "};\n\n} // namespace godot\n";
        if (name == "Object") {
            top += "\n#include <godot_cpp/core/class_db.hpp>\n";
        }
        write_file(include + "/godot_cpp/classes/" + own, top);
        cpp = "constinit internal::ClassRecord " + name + "::_gde_record{{\"" + raw + "\"}, " +
              (parent.empty() ? "nullptr" : "&" + class_name(parent) + "::_gde_record") +
              ", &internal::EngineBinding<" + name + ">::callbacks, false};\n\n" + cpp;
    }
};

// Every engine class by name, with the wanted class that wraps its objects.
std::string stand_in_table(const Api &api) {
    std::string out =
        "// Generated from the engine's API description.\n\n#include <godot_cpp/core/generated_support.hpp>\n";
    for (const std::string &c : api.ordered) {
        out += "#include <godot_cpp/classes/" + snake_case(class_name(c)) + ".hpp>\n";
    }
    out += "\nnamespace godot::internal {\n\nconst StandIn stand_ins[] = {\n";
    size_t count = 0;
    for (const auto &[name, c] : api.classes) {
        std::string w = name;
        while (!api.wanted.count(w)) {
            w = get(*api.find_class(w), "inherits");
        }
        out += "    {\"" + name + "\", &" + class_name(w) + "::_gde_record},\n";
        ++count;
    }
    return out + "};\nconst int stand_in_count = " + std::to_string(count) + ";\n\n} // namespace godot::internal\n";
}

} // namespace

void emit_classes(const Api &api, const std::string &include, const std::string &src, int groups) {
    struct Group {
        std::string includes, body;
    };
    std::vector<Group> out(static_cast<size_t>(groups));
    for (const std::string &name : api.ordered) {
        Writer w(api, *api.find_class(name));
        w.write(include);
        Group &least = *std::min_element(out.begin(), out.end(),
                                         [](const Group &a, const Group &b) { return a.body.size() < b.body.size(); });
        least.includes += "#include <godot_cpp/classes/" + snake_case(class_name(name)) + ".hpp>\n";
        least.body += w.cpp;
    }
    for (size_t i = 0; i < out.size(); ++i) {
        write_file(
            src + "/classes_" + std::to_string(i) + ".cpp",
            "// Generated from the engine's API description.\n\n#include <godot_cpp/core/generated_support.hpp>\n" +
                out[i].includes + "\nnamespace godot {\n\n" + out[i].body + "} // namespace godot\n");
    }
    write_file(src + "/class_table.cpp", stand_in_table(api));
}

} // namespace gen
