// Writes the generated part of the bindings from the engine's own API dump.
// Usage: bindings_gen extension_api.json classes.txt OUT_INCLUDE OUT_SRC GROUPS

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>

#include "gen_common.h"

namespace gen {

// The sizes that the hand-written types are built for.
static void check_sizes(const json &root) {
    static const std::map<std::string, int> expected = {
        {"String", 8},   {"StringName", 8}, {"NodePath", 8}, {"RID", 8},         {"Callable", 16},
        {"Signal", 16},  {"Dictionary", 8}, {"Array", 8},    {"Variant", 24},    {"PackedByteArray", 16},
        {"Vector3", 12}, {"Basis", 36},     {"Color", 16},   {"Transform3D", 48}};
    for (const json &config : root.at("builtin_class_sizes")) {
        if (get(config, "build_configuration") != "float_64") {
            continue;
        }
        for (const json &s : config["sizes"]) {
            const auto it = expected.find(get(s, "name"));
            if (it != expected.end() && it->second != s["size"].get<int>()) {
                std::cerr << "bindings_gen: the engine's " << it->first << " has " << s["size"] << " bytes, not "
                          << it->second << "\n";
                std::exit(1);
            }
        }
    }
}

Api load_api(const std::string &json_path, const std::string &classes_path) {
    Api api;
    std::ifstream in(json_path);
    api.root = json::parse(in, nullptr, false);
    if (api.root.is_discarded() || !api.root.contains("classes")) {
        std::cerr << "bindings_gen: " << json_path << " is no API dump\n";
        std::exit(1);
    }
    check_sizes(api.root);
    for (const json &c : api.root["classes"]) {
        api.classes[get(c, "name")] = &c;
        api.refcounted[get(c, "name")] = flag(c, "is_refcounted");
    }
    for (const json &b : api.root["builtin_classes"]) {
        const std::string name = get(b, "name");
        if (name != "Nil" && name != "bool" && name != "int" && name != "float") {
            api.builtins[name] = &b;
        }
    }
    for (const json &s : api.root["singletons"]) {
        api.singleton_names[get(s, "type")] = get(s, "name");
    }

    const std::function<void(const std::string &)> want = [&](const std::string &name) {
        if (name.empty() || api.wanted.count(name)) {
            return;
        }
        want(get(*api.find_class(name), "inherits"));
        api.wanted.insert(name);
        api.ordered.push_back(name);
    };
    for (const char *always : {"Object", "RefCounted", "ClassDB"}) {
        want(always);
    }
    std::ifstream list(classes_path);
    std::string line;
    while (std::getline(list, line)) {
        line.erase(std::min(line.find('#'), line.size()));
        line.erase(line.find_last_not_of(" \t\r") + 1);
        if (line == "ClassDBSingleton") {
            continue;
        }
        if (!line.empty() && !api.find_class(line)) {
            std::cerr << "bindings_gen: warning: the engine has no class " << line << "\n";
            continue;
        }
        want(line);
    }
    return api;
}

} // namespace gen

int main(int argc, char **argv) {
    if (argc != 6) {
        std::cerr << "usage: bindings_gen extension_api.json classes.txt OUT_INCLUDE OUT_SRC GROUPS\n";
        return 2;
    }
    const std::string include = argv[3], src = argv[4];
    for (const char *sub : {"/godot_cpp/classes", "/godot_cpp/variant", "/godot_cpp/gen"}) {
        std::filesystem::create_directories(include + sub);
    }
    std::filesystem::create_directories(src);
    const gen::Api api = gen::load_api(argv[1], argv[2]);
    gen::emit_globals(api, include, src);
    gen::emit_builtins(api, include, src);
    gen::emit_classes(api, include, src, std::atoi(argv[5]));
    return 0;
}
