// How the dump's types, names and default values are spelled in C++.

#include <cctype>
#include <fstream>
#include <sstream>

#include "gen_common.h"

namespace gen {

std::string get(const json &object, const char *key) {
    auto it = object.find(key);
    return it == object.end() || !it->is_string() ? std::string() : it->get<std::string>();
}

bool flag(const json &object, const char *key) {
    auto it = object.find(key);
    return it != object.end() && it->is_boolean() && it->get<bool>();
}

const json &args_of(const json &method) {
    static const json none = json::array();
    auto it = method.find("arguments");
    return it == method.end() ? none : *it;
}

// "MultiMeshInstance3D" is multi_mesh_instance3d, "HTTPRequest" http_request.
std::string snake_case(const std::string &name) {
    const auto upper = [](char c) { return c >= 'A' && c <= 'Z'; };
    const auto lower = [](char c) { return c >= 'a' && c <= 'z'; };
    std::string out;
    for (size_t i = 0; i < name.size(); ++i) {
        const char c = name[i], before = i ? name[i - 1] : '\0', after = i + 1 < name.size() ? name[i + 1] : '\0';
        const bool dimension = c == 'D' && (before == '2' || before == '3') && !lower(after);
        if (i && upper(c) && !dimension && (lower(after) || !upper(before))) {
            out += '_';
        }
        out += char(std::tolower(static_cast<unsigned char>(c)));
    }
    return out;
}

std::string enum_base(const json &e) {
    bool fits = true;
    for (const json &v : e["values"]) {
        const int64_t value = v["value"].get<int64_t>();
        fits = fits && value == int32_t(value);
    }
    return flag(e, "is_bitfield") ? " : uint64_t" : (fits ? " : int" : " : int64_t");
}

std::string safe_name(const std::string &name) {
    static const std::set<std::string> taken = {
        "class",  "default",   "new",    "delete", "operator", "template", "typename",   "switch",   "case",
        "signed", "enum",      "char",   "short",  "bool",     "int",      "const_cast", "continue", "private",
        "public", "protected", "export", "import", "module",   "register", "namespace",  "typeof",   "this"};
    return taken.count(name) ? name + "_" : name;
}

std::string class_name(const std::string &name) {
    return name == "ClassDB" ? "ClassDBSingleton" : name;
}

static bool starts_with(const std::string &s, const char *prefix) {
    return s.rfind(prefix, 0) == 0;
}

Type type_named(const Api &api, const std::string &name, const std::string &meta) {
    Type t;
    if (name.empty()) {
        t.cpp = "void";
        return t;
    }
    if (name.find('*') != std::string::npos) {
        t.kind = Type::UNSUPPORTED;
        return t;
    }
    if (starts_with(name, "enum::") || starts_with(name, "bitfield::")) {
        const bool bits = name[0] == 'b';
        std::string full = name.substr(name.find("::") + 2);
        const size_t dot = full.find('.');
        t.kind = bits ? Type::BITFIELD : Type::ENUM;
        if (dot != std::string::npos) {
            const std::string owner = full.substr(0, dot);
            if (api.find_class(owner)) {
                if (!api.wanted.count(owner)) { // an enum cannot be declared without its class
                    t.kind = Type::INT;
                    t.cpp = "int64_t";
                    return t;
                }
                t.enum_class = owner;
            }
            full = class_name(owner) + "::" + full.substr(dot + 1);
        }
        t.cpp = bits ? "BitField<" + full + ">" : full;
        return t;
    }
    const auto element = [&](std::string e) {
        const size_t colon = e.rfind(':');
        if (colon != std::string::npos) {
            e = e.substr(colon + 1);
        }
        const Type et = type_named(api, e);
        if (et.kind == Type::OBJECT || et.kind == Type::REF) {
            t.object = et.object;
        }
        return et.kind == Type::OBJECT ? et.object : et.cpp;
    };
    if (starts_with(name, "typedarray::")) {
        t.kind = Type::VALUE;
        t.typed = true;
        t.cpp = "TypedArray<" + element(name.substr(12)) + ">";
        return t;
    }
    if (starts_with(name, "typeddictionary::")) {
        t.kind = Type::VALUE;
        t.typed = true;
        const std::string both = name.substr(17);
        const size_t semicolon = both.find(';');
        t.cpp =
            "TypedDictionary<" + element(both.substr(0, semicolon)) + ", " + element(both.substr(semicolon + 1)) + ">";
        return t;
    }
    if (name == "bool") {
        t.kind = Type::BOOL;
        t.cpp = "bool";
    } else if (name == "int") {
        t.kind = Type::INT;
        t.cpp = meta.empty() || meta == "required" ? "int64_t" : meta + "_t";
    } else if (name == "float") {
        t.kind = Type::FLOAT;
        t.cpp = meta == "float" ? "float" : "double";
    } else if (name == "Variant" || name == "Nil") {
        t.kind = Type::VARIANT;
        t.cpp = "Variant";
    } else if (api.builtins.count(name)) {
        t.kind = Type::VALUE;
        t.cpp = name;
    } else if (api.find_class(name)) {
        t.object = class_name(name);
        if (api.refcounted.at(name)) {
            t.kind = Type::REF;
            t.cpp = "Ref<" + t.object + ">";
        } else {
            t.kind = Type::OBJECT;
            t.cpp = t.object + " *";
        }
    } else {
        t.kind = Type::UNSUPPORTED;
    }
    return t;
}

Type type_of(const Api &api, const json &value) {
    return type_named(api, get(value, "type"), get(value, "meta"));
}

std::string Type::param() const {
    switch (kind) {
    case VALUE:
    case REF:
    case VARIANT:
        return "const " + cpp + " &";
    case OBJECT:
        return cpp;
    default:
        return cpp + " ";
    }
}

std::string default_value(const Api &, const Type &type, const std::string &text) {
    switch (type.kind) {
    case Type::ENUM:
        return "static_cast<" + type.cpp + ">(" + text + ")";
    case Type::BITFIELD:
        return type.cpp + "(int64_t(" + text + "))";
    case Type::OBJECT:
        return "nullptr";
    case Type::REF:
        return type.cpp + "()";
    case Type::VARIANT:
        return text == "null" ? "Variant()" : "Variant(" + text + ")";
    case Type::VALUE:
        if (type.typed && !type.object.empty()) { // its class may be declared only
            return type.cpp + "::_gde_adopt(Array())";
        }
        if (type.typed || text == "[]" || text == "{}") {
            return type.cpp + "()";
        }
        if (text.rfind("&\"", 0) == 0) {
            return text == "&\"\"" ? type.cpp + "()" : text.substr(1);
        }
        return text == "\"\"" ? type.cpp + "()" : text;
    default:
        return text;
    }
}

std::string params(const Api &api, const json &method, bool with_defaults, bool trailing_comma) {
    std::string out;
    for (const json &a : args_of(method)) {
        const Type t = type_of(api, a);
        out += (out.empty() ? "" : ", ") + t.param() + "p_" + get(a, "name");
        if (with_defaults && a.contains("default_value")) {
            out += " = " + default_value(api, t, get(a, "default_value"));
        }
    }
    return trailing_comma && !out.empty() ? out + ", " : out;
}

std::string encode_args(const Api &api, const json &method, std::vector<std::string> &addresses) {
    std::string out;
    for (const json &a : args_of(method)) {
        const Type t = type_of(api, a);
        const std::string name = "p_" + get(a, "name");
        const std::string coded = "a" + std::to_string(addresses.size());
        switch (t.kind) {
        case Type::BOOL:
            out += "    const uint8_t " + coded + " = " + name + ";\n";
            break;
        case Type::INT:
        case Type::ENUM:
        case Type::BITFIELD:
            out += "    const int64_t " + coded + " = int64_t(" + name + ");\n";
            break;
        case Type::FLOAT:
            out += "    const double " + coded + " = " + name + ";\n";
            break;
        case Type::OBJECT:
            out += "    GodotObject *const " + coded + " = internal::owner_of(" + name + ");\n";
            break;
        case Type::REF:
            out += "    GodotObject *const " + coded + " = " + name + "._gde_owner();\n";
            break;
        default:
            break;
        }
        if (t.kind == Type::VALUE || t.kind == Type::VARIANT) {
            addresses.push_back("internal::address_of(" + name + ")");
        } else {
            addresses.push_back("&" + coded);
        }
    }
    return out;
}

void write_file(const std::string &path, const std::string &text) {
    std::ifstream in(path, std::ios::binary);
    if (in) {
        std::stringstream old;
        old << in.rdbuf();
        if (old.str() == text) {
            return;
        }
    }
    std::ofstream(path, std::ios::binary) << text;
}

} // namespace gen
