#pragma once
// What the parts of the generator share: the parsed API dump, the list of wanted classes, and how types are spelled.

#include <map>
#include <set>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace gen {

using nlohmann::json;

struct Api {
    json root;
    std::set<std::string> wanted;                       // classes to write, with their bases
    std::vector<std::string> ordered;                   // the same, bases first
    std::map<std::string, const json *> classes;        // all of the engine's
    std::map<std::string, const json *> builtins;       // String, Vector3...
    std::map<std::string, std::string> singleton_names; // class -> name
    std::map<std::string, bool> refcounted;

    const json *find_class(const std::string &name) const {
        auto it = classes.find(name);
        return it == classes.end() ? nullptr : it->second;
    }
};

Api load_api(const std::string &json_path, const std::string &classes_path);

// How a type of the dump is spelled and passed in C++.
struct Type {
    enum Kind { VOID, BOOL, INT, FLOAT, ENUM, BITFIELD, VALUE, OBJECT, REF, VARIANT, UNSUPPORTED };
    Kind kind = VOID;
    std::string cpp;        // as a value: "Vector3", "Node *", "Ref<Mesh>", "TypedArray<Node>", "Error"
    std::string object;     // the class of an object or of an array's elements
    std::string enum_class; // the class that declares the enum, "" if global
    bool typed = false;     // a typed array or dictionary

    std::string param() const; // as a parameter: "const Vector3 &", "Node *", "int32_t "
};
Type type_of(const Api &api, const json &value); // an argument or return value with "type" and perhaps "meta"
Type type_named(const Api &api, const std::string &name, const std::string &meta = "");

std::string default_value(const Api &api, const Type &type, const std::string &text);
std::string snake_case(const std::string &name);
// The underlying type of an enum, fixed: values come from outside, and any number must be a valid value.
std::string enum_base(const json &e);
std::string safe_name(const std::string &name);
// The C++ name of a class: ClassDB would clash with the registration class.
std::string class_name(const std::string &name);
// "const Vector3 &p_position, bool p_local = false"; without defaults for definitions.
std::string params(const Api &api, const json &method, bool with_defaults, bool trailing_comma = false);
// Lines that put each argument into call-by-pointer form, and the names of their addresses.
std::string encode_args(const Api &api, const json &method, std::vector<std::string> &addresses);
const json &args_of(const json &method);
std::string get(const json &object, const char *key);
bool flag(const json &object, const char *key);

// Writes the file only if its text changed, so that nothing is rebuilt in vain.
void write_file(const std::string &path, const std::string &text);

void emit_globals(const Api &api, const std::string &include, const std::string &src);
void emit_builtins(const Api &api, const std::string &include, const std::string &src);
void emit_classes(const Api &api, const std::string &include, const std::string &src, int groups);

} // namespace gen
